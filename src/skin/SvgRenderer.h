#pragma once

#include <QImage>

namespace Quorlin {

/// How the caller spends the time until a picture is made.
enum class Waiting {
    WithEvents, ///< events other than input are handled
    Still,      ///< nothing else happens; for a short time only
};

/// Makes points of drawings in SVG.
class SvgRenderer
{
public:
    virtual ~SvgRenderer() = default;

    /// @param svg a drawing that SvgCheck found harmless.
    /// @param pixels size of the result; empty for the drawing's own size.
    /// @return null when the drawing is damaged, too large or takes too long.
    [[nodiscard]] virtual QImage render(const QByteArray &svg, const QSize &pixels,
                                        Waiting waiting) const = 0;
};

} // namespace Quorlin
