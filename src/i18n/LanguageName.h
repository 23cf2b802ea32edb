#pragma once

#include <QStringView>

/// The languages that the programs know something about, by their names: those of their files.
/// Of any other language they only know its file.
namespace Quorlin::LanguageName {

inline constexpr QStringView English = u"english";
inline constexpr QStringView French = u"français";
inline constexpr QStringView German = u"deutsch";

} // namespace Quorlin::LanguageName
