#include "tool/Summary.h"

#include "tool/Columns.h"
#include "tool/Console.h"
#include "tool/Report.h"
#include "tool/ShownPath.h"

#include <QFileInfo>
#include <QList>
#include <QLocale>

#include <algorithm>
#include <array>

namespace Quorlin::Summary {

namespace {

constexpr int LeastWidth = 40;
constexpr int Gap = 2;
constexpr char Failed[] = "failed: ";

enum Column { Document, Size, Result, ColumnCount };
using Row = std::array<QString, ColumnCount>;
using Widths = std::array<int, ColumnCount>;

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeIecFormat);
}

QString secondsText(double seconds)
{
    return QStringLiteral("%1 s").arg(seconds, 0, 'f', 1);
}

QString documentsText(qsizetype count)
{
    return count == 1 ? QStringLiteral("1 document") : QStringLiteral("%1 documents").arg(count);
}

qint64 bytesOf(const Report &report)
{
    if (report.merges)
        return QFileInfo(report.mergedFile).size();
    qint64 sum = 0;
    for (const auto &document : report.documents)
        sum += document.failed() ? 0 : QFileInfo(document.output).size();
    return sum;
}

Row rowOf(const DocumentRecord &document, const Report &report)
{
    Row row;
    row[Document] = Console::harmless(shownPath(document.input));
    row[Result] = Console::harmless(document.failed() ? QLatin1String(Failed) + document.failure()
                                                      : shownPath(document.output));
    if (!report.dryRun && !document.failed() && !report.merges)
        row[Size] = sizeText(QFileInfo(document.output).size());
    return row;
}

QList<Row> rowsOf(const Report &report)
{
    QList<Row> rows{{QStringLiteral("DOCUMENT"), QStringLiteral("SIZE"), QStringLiteral("RESULT")}};
    for (const auto &document : report.documents)
        rows.append(rowOf(document, report));
    return rows;
}

/// @return 0 for a column with nothing under its heading.
int widthOf(const QList<Row> &rows, int column)
{
    int width = 0;
    for (const auto &row : rows.sliced(1))
        width = std::max(width, Columns::widthOf(row.at(column)));
    return width == 0 ? 0 : std::max(width, Columns::widthOf(rows.first().at(column)));
}

Widths widthsOf(const QList<Row> &rows, int width)
{
    Widths widths{};
    for (int column = 0; column < ColumnCount; ++column)
        widths[column] = widthOf(rows, column);
    if (width == 0)
        return widths;
    const int others = Gap + (widths[Size] > 0 ? widths[Size] + Gap : 0);
    const int room = std::max(width, LeastWidth) - others;
    if (widths[Document] + widths[Result] > room) {
        widths[Document] = std::min(widths[Document], std::max(room / 3, room - widths[Result]));
        widths[Result] = room - widths[Document];
    }
    return widths;
}

QString lineOf(const Row &row, const Widths &widths)
{
    QStringList cells(
        Columns::padded(Columns::shortened(row[Document], widths[Document]), widths[Document]));
    if (widths[Size] > 0)
        cells.append(row[Size].rightJustified(widths[Size]));
    const auto fit =
        row[Result].startsWith(QLatin1String(Failed)) ? Columns::cut : Columns::shortened;
    cells.append(fit(row[Result], widths[Result]));
    return cells.join(QString(Gap, QLatin1Char(' ')));
}

} // namespace

QString totalsOf(const Report &report)
{
    const auto count = report.documents.size();
    const auto failed = report.failures();
    const auto done =
        report.dryRun ? QStringLiteral("would be converted") : QStringLiteral("converted");
    auto text = documentsText(count);
    if (failed == 0)
        text += QLatin1Char(' ') + done;
    else
        text += QStringLiteral(": %1 %2, %3 %4")
                    .arg(count - failed)
                    .arg(done)
                    .arg(failed)
                    .arg(report.dryRun ? QStringLiteral("not") : QStringLiteral("failed"));
    if (report.dryRun)
        return text + QStringLiteral("; nothing was written");
    return text +
           QStringLiteral("; %1 in %2").arg(sizeText(bytesOf(report)), secondsText(report.seconds));
}

QStringList linesOf(const Report &report, int width)
{
    QStringList lines;
    const auto rows = rowsOf(report);
    const auto widths = widthsOf(rows, width);
    if (rows.size() > 1) {
        for (const auto &row : rows)
            lines.append(lineOf(row, widths));
    }
    lines.append(totalsOf(report));
    return lines;
}

} // namespace Quorlin::Summary
