#pragma once

#include "component/backends/postscript/FontUnicode.h"

#include <map>
#include <string>

namespace Quorlin::Prologue {

/// Our procedures, to stand at the end of the prolog that pdftops writes. The text is kept in
/// PrologueText.ps and ProloguePaint.ps.
[[nodiscard]] std::string procedures();

/// The table with the text behind the codes of each font, by the name that pdftops gives it.
[[nodiscard]] std::string fontTable(const std::map<std::string, FontUnicode> &fonts);

} // namespace Quorlin::Prologue
