#pragma once

#include <QByteArray>

namespace Quorlin {

/// Documents that the tests convert, made from nothing. The same calls give the same bytes.
namespace TestDocuments {

/// A web page with one paragraph.
[[nodiscard]] QByteArray page(const QByteArray &text);
/// A web page with this many headings and paragraphs; a thousand take about a second.
[[nodiscard]] QByteArray longPage(int parts);
/// A text document with one paragraph.
[[nodiscard]] QByteArray letter(const QByteArray &text);
/// A text document with one paragraph in this font.
[[nodiscard]] QByteArray inFont(const QByteArray &font, const QByteArray &text);
/// A text document of two pages with a picture like a photograph on each, 300 samples an inch.
[[nodiscard]] QByteArray photographs();
/// A picture with grain and soft shapes, as PNG.
[[nodiscard]] QByteArray photograph(int width, int height);

/// PostScript with one line of text on each page.
[[nodiscard]] QByteArray postScript(const QByteArray &text, int pages = 1);
/// PostScript that counts to this number, some ten millions a second, before its page.
[[nodiscard]] QByteArray slowPostScript(int steps);
/// PostScript that never ends.
[[nodiscard]] QByteArray endlessPostScript();

/// A PDF with a page of text, and as many lines below it as asked for.
[[nodiscard]] QByteArray pdf(const QByteArray &text, int lines = 0, int pages = 1);

} // namespace TestDocuments

} // namespace Quorlin
