#include "convert/FailureNote.h"

#include "convert/ReasonTexts.h"

#include <QStringList>

#include <algorithm>

namespace Quorlin::FailureNote {

namespace {

/// Longer details and names would push the next document out of sight.
constexpr qsizetype MostDetail = 200;
constexpr qsizetype MostName = 60;

/// The beginning and the end, which tells the kind, of a long name; always one line.
QString nameOf(const QString &file)
{
    const auto name = file.mid(file.lastIndexOf(QLatin1Char('/')) + 1).simplified();
    if (name.size() <= MostName)
        return name;
    return name.left(MostName - 20) + QChar(0x2026) + name.right(19);
}

QString whatToDo(const FailedDocument &document, const ReasonTexts &texts)
{
    QStringList lines{texts.advice(document.reason)};
    if (!document.detail.isEmpty())
        lines.append(texts.introduce(document.detail.simplified().left(MostDetail)));
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

bool isAlike(const FailedDocument &one, const FailedDocument &other)
{
    return one.reason == other.reason && one.detail == other.detail;
}

} // namespace

QString ofOne(const FailedDocument &document, const ReasonTexts &texts)
{
    const auto rest = whatToDo(document, texts);
    const auto sentence = texts.sentence(document.reason);
    return rest.isEmpty() ? sentence : sentence + QLatin1Char(' ') + rest;
}

QString ofAll(const QList<FailedDocument> &documents, const ReasonTexts &texts)
{
    if (documents.isEmpty())
        return {};
    QStringList lines;
    for (const auto &document : documents.first(std::min(documents.size(), MostNamed)))
        lines.append(nameOf(document.file) + QStringLiteral(": ") +
                     texts.sentence(document.reason));
    if (documents.size() > MostNamed)
        lines.append(texts.more(documents.size() - MostNamed));
    const auto &first = documents.first();
    if (std::ranges::all_of(documents, [&](const auto &other) { return isAlike(first, other); }))
        lines.append(whatToDo(first, texts));
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

} // namespace Quorlin::FailureNote
