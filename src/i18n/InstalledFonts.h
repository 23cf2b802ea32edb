#pragma once

#include <QFontDatabase>
#include <QString>

class QFont;

namespace Quorlin::InstalledFonts {

/// True when the first family of a font, or what the system shows in its place, has the
/// characters of a writing system.
[[nodiscard]] bool cover(const QFont &font, QFontDatabase::WritingSystem characters);

/// The installed family to show a writing system with on a screen: a usual one, else any with
/// letters of different widths, else any. Empty when no installed font has its characters.
[[nodiscard]] QString nearest(QFontDatabase::WritingSystem characters);

} // namespace Quorlin::InstalledFonts
