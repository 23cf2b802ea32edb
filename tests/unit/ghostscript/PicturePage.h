#pragma once

#include <QByteArray>

namespace Quorlin {

/// Pages of PostScript with one drawn picture each. The same calls give the same bytes everywhere.
class PicturePage
{
public:
    enum class Kind {
        Colour, ///< 8 bits RGB, as a photograph: soft shapes and grain
        Soft,   ///< 8 bits RGB, gradients without any grain
        Grey,   ///< 8 bits, as a photograph
        Mono,   ///< 1 bit
        Mask,   ///< 1 bit, painted with the current colour
        Drawing ///< 8 bits RGB, areas of three colours
    };

    /// A page with a square picture of `kind` with `dots` samples a side at `dpi` samples an inch.
    [[nodiscard]] static QByteArray page(Kind kind, int dots, double dpi);

    /// A page with a JPEG picture of `width` by `height` RGB samples.
    [[nodiscard]] static QByteArray jpegPage(const QByteArray &jpeg, int width, int height,
                                             double dpi);

    /// The samples of such a picture, row by row.
    [[nodiscard]] static QByteArray samples(Kind kind, int dots);
};

} // namespace Quorlin
