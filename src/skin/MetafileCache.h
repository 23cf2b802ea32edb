#pragma once

#include "skin/MetafileRenderer.h"

#include <QString>

namespace Quorlin {

/// Keeps what another renderer made, so that each metafile is rendered once. A file of the cache
/// that is damaged is made anew; without a cache everything still works, only slower.
class MetafileCache : public MetafileRenderer
{
public:
    static constexpr int MostFiles = 64;

    /// @param folder made when it is needed; see defaultFolder().
    /// @param renderer must outlive this object.
    MetafileCache(const QString &folder, const MetafileRenderer &renderer);

    /// The user's folder for this cache.
    [[nodiscard]] static QString defaultFolder();

    [[nodiscard]] QByteArray render(const QByteArray &content, PictureFormat format) const override;

private:
    [[nodiscard]] QString fileOf(const QByteArray &content) const;
    void keep(const QString &path, const QByteArray &png) const;
    void removeOldest() const;

    QString m_folder;
    const MetafileRenderer &m_renderer;
};

} // namespace Quorlin
