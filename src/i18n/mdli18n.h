#pragma once

#include "i18n/SystemLocale.h"

#include <QFont>

class QObject;

namespace Quorlin {

/// A font as forms keep it: with its character set, by the number that Windows gives it.
struct FormFont
{
    QFont font;
    int charset = 1;
};

/// Makes the fonts of windows able to show the characters of the system's locale. For the thread
/// of the user interface only.
namespace mdli18n {

/// Name of the property in which a window and its controls keep their character set, a number.
inline constexpr char CharsetProperty[] = "fontCharset";

/// Adapts the fonts of a window and of every control on it, in the order in which they were made.
/// On a system in English nothing is touched. A control without a font, or one that refuses it,
/// is passed over.
/// @param form its controls are its descendants that are widgets; fonts are the property "font".
void AdaptFormFonts(QObject &form, const SystemLocale &system = SystemLocale::current());

/// The default ANSI code page of a locale, by its identifier; 0 when it has none.
[[nodiscard]] int GetAnsiCodePage(quint32 locale,
                                  const SystemLocale &system = SystemLocale::current());

/// Gives a font the character set of a code page, for the East Asian ones also a face and at
/// least 9 points.
void SetFontCharset(FormFont &font, int codePage);

/// What AdaptFormFonts makes of a font; for fonts that a window gets later.
[[nodiscard]] QFont adapted(const QFont &font,
                            const SystemLocale &system = SystemLocale::current());

} // namespace mdli18n

} // namespace Quorlin
