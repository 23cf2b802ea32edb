#include "tool/Columns.h"

#include "tool/Terminal.h"

#include <QList>
#include <QTextBoundaryFinder>

namespace Quorlin::Columns {

namespace {

/// What a reader takes for the characters of a text.
QStringList clustersOf(const QString &text)
{
    QStringList clusters;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype begin = 0;
    for (auto end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        clusters.append(text.sliced(begin, end - begin));
        begin = end;
    }
    return clusters;
}

/// Takes clusters from one end of the list as long as they fit into the room.
QString takeFitting(QStringList &clusters, int room, bool fromEnd)
{
    QString taken;
    while (!clusters.isEmpty()) {
        const auto cluster = fromEnd ? clusters.last() : clusters.first();
        room -= widthOf(cluster);
        if (room < 0)
            break;
        taken = fromEnd ? cluster + taken : taken + cluster;
        fromEnd ? clusters.removeLast() : clusters.removeFirst();
    }
    return taken;
}

} // namespace

int widthOf(const QString &text)
{
    int width = 0;
    for (const auto character : text.toUcs4())
        width += Terminal::columnsOf(character);
    return width;
}

QString padded(const QString &text, int width)
{
    return text + QString(std::max(0, width - widthOf(text)), QLatin1Char(' '));
}

QString shortened(const QString &text, int width)
{
    if (widthOf(text) <= width)
        return text;
    auto clusters = clustersOf(text);
    const auto end = takeFitting(clusters, (width - 1) / 2, true);
    const auto begin = takeFitting(clusters, width - 1 - widthOf(end), false);
    return begin + QStringLiteral("…") + end;
}

QString cut(const QString &text, int width)
{
    if (widthOf(text) <= width)
        return text;
    auto clusters = clustersOf(text);
    return takeFitting(clusters, width - 1, false) + QStringLiteral("…");
}

} // namespace Quorlin::Columns
