#include "support/StandInDocuments.h"

#include "support/StandInWorker.h"

#include <QFile>
#include <QJsonArray>

namespace Quorlin {

namespace {

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int pagesOf(const QByteArray &document)
{
    for (const auto &line : document.split('\n'))
        if (line.startsWith("pages "))
            return line.sliced(6).toInt();
    return 1;
}

QByteArray pdfOf(const QByteArray &document)
{
    return "%PDF-1.4\n" + document + "\n%%EOF\n";
}

QByteArray postScriptOf(const QByteArray &document)
{
    QByteArray program("%!PS-Adobe-3.0\n");
    for (const auto &line : document.split('\n'))
        if (line.startsWith("ps "))
            program += line.sliced(3) + '\n';
    for (int page = pagesOf(document); page > 0; --page)
        program += "72 72 moveto 200 200 lineto stroke showpage\n";
    return program;
}

} // namespace

bool StandInDocuments::serve(const QJsonObject &request)
{
    const auto op = request.value(QLatin1String("op")).toString();
    if (op == QLatin1String("merge")) {
        merge(request);
        return true;
    }
    const bool exports = op == QLatin1String("export");
    if (!exports && op != QLatin1String("print"))
        return false;
    m_output = request.value(QLatin1String("output")).toString();
    const auto document = read(request.value(QLatin1String("input")).toString());
    const auto made = exports ? pdfOf(document) : postScriptOf(document);
    if (exports && !request.value(QLatin1String("plain")).toBool() &&
        obey(document, "export-first ", made))
        return true;
    if (obey(document, exports ? "export " : "print ", made))
        return true;
    write(made);
    m_worker.done({{QStringLiteral("pages"), pagesOf(document)}});
    return true;
}

/// @return true when the request has been answered.
bool StandInDocuments::obey(const QByteArray &document, const char *word, const QByteArray &made)
{
    for (const auto &line : document.split('\n')) {
        if (!line.startsWith(word))
            continue;
        const auto order = line.sliced(qstrlen(word)).split(' ');
        if (order[0] == "die")
            StandInWorker::die();
        if (order[0] == "hang")
            StandInWorker::hang();
        if (order[0] == "wait-for")
            StandInWorker::waitFor(QString::fromUtf8(order[1]));
        if (order[0] == "percent")
            m_worker.progress(order[1].toInt());
        if (order[0] == "half")
            write(made.left(8));
        if (order[0] == "half" || order[0] == "nothing")
            m_worker.done({{QStringLiteral("pages"), 1}});
        if (order[0] == "fail")
            m_worker.failed(reasonFromKey(QString::fromUtf8(order[1])),
                            order.size() > 2 ? QString::fromUtf8(order[2]) : QString());
        if (order[0] == "half" || order[0] == "nothing" || order[0] == "fail")
            return true;
    }
    return false;
}

/// Joins the bytes of all files; one that is no PDF fails it.
void StandInDocuments::merge(const QJsonObject &request)
{
    QByteArray joined;
    for (const auto &entry : request.value(QLatin1String("inputs")).toArray()) {
        const auto bytes = read(entry.toObject().value(QLatin1String("file")).toString());
        if (!bytes.startsWith("%PDF-"))
            return m_worker.failed(Reason::Damaged);
        joined += bytes;
    }
    m_output = request.value(QLatin1String("output")).toString();
    if (obey(joined, "merge ", joined))
        return;
    write(joined);
    m_worker.done({{QStringLiteral("pages"), 1}});
}

void StandInDocuments::write(const QByteArray &bytes) const
{
    QFile file(m_output);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

} // namespace Quorlin
