#pragma once

#include "skin/SkinPicture.h"

#include <QString>

#include <memory>
#include <optional>

namespace Quorlin {

class MetafileRenderer;
class SvgRenderer;

/// Loads the pictures of skins. Files are told apart by their content.
class PictureLoader
{
public:
    /// @param drawings renders SVG; without it such files cannot be loaded.
    /// @param metafiles renders WMF and EMF; without it such files cannot be loaded.
    explicit PictureLoader(std::shared_ptr<const SvgRenderer> drawings = {},
                           std::shared_ptr<const MetafileRenderer> metafiles = {});

    /// Loads a picture and, if there is one beside it, its "@2x" for dense screens. A drawing or
    /// a metafile takes a while; events other than input are handled meanwhile.
    /// @param value path below the skin's folder.
    /// @return nothing when there is no such file within the folder, when it is no picture,
    /// damaged, larger than 32 MiB, wider or higher than 16384 points or of more than 64
    /// megapoints.
    [[nodiscard]] std::optional<SkinPicture> load(const QString &skinPath,
                                                  const QString &value) const;

private:
    [[nodiscard]] SkinPicture loadDrawing(const QByteArray &content) const;
    [[nodiscard]] SkinPicture loadMetafile(const QByteArray &content) const;
    [[nodiscard]] static QByteArray denseBeside(const QString &skinPath, const QString &value);

    std::shared_ptr<const SvgRenderer> m_drawings;
    std::shared_ptr<const MetafileRenderer> m_metafiles;
};

} // namespace Quorlin
