#pragma once

#include "component/backends/postscript/MarkLibrary.h"

#include <optional>
#include <string>

namespace Quorlin {

/// How a soft mask is put into effect: three XObjects drawn one after the other.
struct MaskMarks
{
    std::string begin; ///< starts the mask
    std::string form;  ///< paints it
    std::string end;   ///< puts it into effect
};

/// What one parameter dictionary of the graphics state asks for, as far as it is transparency.
struct GraphicsStateMarks
{
    std::optional<std::string> values;    ///< XObject that sets alpha and blend mode
    std::optional<MaskMarks> mask;        ///< a soft mask
    QPDFObjectHandle maskForm;            ///< the form that paints it
    std::optional<std::string> clearMask; ///< XObject that ends any soft mask

    [[nodiscard]] bool any() const { return values || mask || clearMask; }
};

/// Turns parameter dictionaries of the graphics state into marks.
class GraphicsStateReader
{
public:
    explicit GraphicsStateReader(MarkLibrary &library);

    /// Reads a dictionary. Its soft mask is taken out, since the printing tool would draw it.
    [[nodiscard]] GraphicsStateMarks take(QPDFObjectHandle state);

    /// True when the dictionary makes anything look through.
    [[nodiscard]] static bool isTransparent(QPDFObjectHandle state);

    /// True when the dictionary sets a blend mode other than the normal one.
    [[nodiscard]] static bool blends(QPDFObjectHandle state);

private:
    [[nodiscard]] std::optional<MaskMarks> readMask(QPDFObjectHandle mask);

    MarkLibrary &m_library;
};

} // namespace Quorlin
