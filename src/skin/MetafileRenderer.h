#pragma once

#include "skin/PictureFormat.h"

namespace Quorlin {

/// Makes a PNG of a metafile.
class MetafileRenderer
{
public:
    virtual ~MetafileRenderer() = default;

    /// Returns when it is done; events other than input are handled meanwhile.
    /// @param format Wmf or Emf.
    /// @return the content of a PNG file; empty when the metafile cannot be rendered.
    [[nodiscard]] virtual QByteArray render(const QByteArray &content,
                                            PictureFormat format) const = 0;
};

} // namespace Quorlin
