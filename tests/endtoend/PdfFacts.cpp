#include "endtoend/PdfFacts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>

namespace Quorlin {

namespace {

struct Answer
{
    bool success = false;
    QByteArray output;
};

Answer ask(const char *program, const QStringList &arguments)
{
    constexpr int LimitMs = 60'000;
    QProcess process;
    process.start(QString::fromLatin1(program), arguments);
    const bool ended = process.waitForFinished(LimitMs);
    return {ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
            process.readAllStandardOutput()};
}

QList<QStringList> tableOf(const QByteArray &output)
{
    QList<QStringList> rows;
    for (const auto &line : QString::fromUtf8(output).split(QLatin1Char('\n')).mid(2))
        if (!line.isEmpty())
            rows.append(line.simplified().split(QLatin1Char(' ')));
    return rows;
}

int countOf(const QJsonArray &outlines)
{
    auto count = static_cast<int>(outlines.size());
    for (const auto &entry : outlines)
        count += countOf(entry.toObject().value(QLatin1String("kids")).toArray());
    return count;
}

/// Strings are written with a mark in front that tells their encoding.
QString textOf(const QJsonValue &value)
{
    const auto text = value.toString();
    return text.startsWith(QLatin1String("u:")) ? text.mid(2) : text;
}

} // namespace

PdfFacts::PdfFacts(const QString &file) : m_file(file)
{
    const auto info = ask("pdfinfo", {file});
    const auto objects = ask("qpdf", {QStringLiteral("--json"), file});
    m_info = QString::fromUtf8(info.output);
    m_objects = QJsonDocument::fromJson(objects.output).object();
    m_opens = info.success && objects.success;
}

bool PdfFacts::opens() const
{
    return m_opens;
}

QString PdfFacts::property(const QString &name) const
{
    const QRegularExpression line(QStringLiteral("^%1:\\s*(.*)$").arg(name),
                                  QRegularExpression::MultilineOption);
    return line.match(m_info).captured(1);
}

int PdfFacts::pages() const
{
    return property(QStringLiteral("Pages")).toInt();
}

QString PdfFacts::title() const
{
    return property(QStringLiteral("Title"));
}

QString PdfFacts::text() const
{
    return QString::fromUtf8(ask("pdftotext", {m_file, QStringLiteral("-")}).output);
}

bool PdfFacts::hasAllFontsEmbedded() const
{
    constexpr qsizetype EmbeddedFromTheEnd = 5;
    const auto rows = tableOf(ask("pdffonts", {m_file}).output);
    return !rows.isEmpty() && std::ranges::all_of(rows, [](const QStringList &row) {
        return row.value(row.size() - EmbeddedFromTheEnd) == QLatin1String("yes");
    });
}

QList<PdfPicture> PdfFacts::pictures() const
{
    QList<PdfPicture> pictures;
    for (const auto &row : tableOf(ask("pdfimages", {QStringLiteral("-list"), m_file}).output))
        pictures.append(
            {row.value(3).toInt(), std::max(row.value(12).toDouble(), row.value(13).toDouble())});
    return pictures;
}

QStringList PdfFacts::bookmarks() const
{
    QStringList titles;
    for (const auto &entry : m_objects.value(QLatin1String("outlines")).toArray())
        titles.append(entry.toObject().value(QLatin1String("title")).toString());
    return titles;
}

QList<int> PdfFacts::bookmarkPages() const
{
    QList<int> pages;
    for (const auto &entry : m_objects.value(QLatin1String("outlines")).toArray())
        pages.append(entry.toObject().value(QLatin1String("destpageposfrom1")).toInt());
    return pages;
}

int PdfFacts::bookmarkCount() const
{
    return countOf(m_objects.value(QLatin1String("outlines")).toArray());
}

QList<QJsonObject> PdfFacts::dictionaries() const
{
    QList<QJsonObject> found;
    const auto objects = m_objects.value(QLatin1String("qpdf")).toArray().at(1).toObject();
    for (const auto &object : objects) {
        const auto holder = object.toObject();
        const auto stream = holder.value(QLatin1String("stream")).toObject();
        found.append(holder.value(QLatin1String("value")).toObject());
        found.append(stream.value(QLatin1String("dict")).toObject());
    }
    return found;
}

QStringList PdfFacts::addresses() const
{
    QStringList found;
    for (const auto &dictionary : dictionaries()) {
        const auto action = dictionary.value(QLatin1String("/A")).toObject();
        if (action.contains(QLatin1String("/URI")))
            found.append(textOf(action.value(QLatin1String("/URI"))));
    }
    return found;
}

int PdfFacts::innerLinks() const
{
    const auto all = dictionaries();
    return static_cast<int>(std::ranges::count_if(all, [](const QJsonObject &dictionary) {
        return dictionary.value(QLatin1String("/Subtype")) == QLatin1String("/Link") &&
               dictionary.contains(QLatin1String("/Dest"));
    }));
}

bool PdfFacts::isTransparent() const
{
    return std::ranges::any_of(dictionaries(), [](const QJsonObject &dictionary) {
        return dictionary.value(QLatin1String("/ca")).toDouble(1) < 1 ||
               dictionary.contains(QLatin1String("/SMask"));
    });
}

} // namespace Quorlin
