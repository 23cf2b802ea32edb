#include "skin/MetafileCache.h"

#include "skin/PointReader.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace Quorlin {

namespace {

bool isWhole(const QByteArray &png)
{
    return !PointReader::read(png, PictureFormat::Png).isNull();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(PointReader::MostBytes);
}

} // namespace

MetafileCache::MetafileCache(const QString &folder, const MetafileRenderer &renderer)
    : m_folder(folder), m_renderer(renderer)
{
}

QString MetafileCache::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QLatin1String("/quorlin/pictures");
}

QByteArray MetafileCache::render(const QByteArray &content, PictureFormat format) const
{
    const auto path = fileOf(content);
    const auto kept = contentOf(path);
    if (isWhole(kept))
        return kept;
    const auto made = m_renderer.render(content, format);
    if (!isWhole(made))
        return {};
    keep(path, made);
    return made;
}

QString MetafileCache::fileOf(const QByteArray &content) const
{
    const auto name = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
    return m_folder + QLatin1Char('/') + QString::fromLatin1(name) + QLatin1String(".png");
}

void MetafileCache::keep(const QString &path, const QByteArray &png) const
{
    if (!QDir().mkpath(m_folder))
        return;
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(png) == png.size() && file.commit())
        removeOldest();
}

void MetafileCache::removeOldest() const
{
    const QDir folder(m_folder);
    const auto newestFirst =
        folder.entryInfoList({QStringLiteral("*.png")}, QDir::Files | QDir::Hidden, QDir::Time);
    for (qsizetype at = MostFiles; at < newestFirst.size(); ++at)
        QFile::remove(newestFirst.at(at).filePath());
}

} // namespace Quorlin
