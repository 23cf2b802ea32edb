#pragma once

#include "component/backends/postscript/PageGeometry.h"

#include <optional>

class QPDFObjectHandle;

namespace Quorlin {

/// The matrix of a form; the identity when it has none or a faulty one.
[[nodiscard]] Matrix formMatrix(QPDFObjectHandle form);

/// The box of a form in the coordinates of its content, or nothing when it has no area.
[[nodiscard]] std::optional<Box> formInnerBox(QPDFObjectHandle form);

/// The box of a form in the coordinates of the content that draws it.
[[nodiscard]] std::optional<Box> formBox(QPDFObjectHandle form);

} // namespace Quorlin
