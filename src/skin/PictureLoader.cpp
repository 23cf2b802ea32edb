#include "skin/PictureLoader.h"

#include "skin/MetafileRenderer.h"
#include "skin/PointReader.h"
#include "skin/SkinFolder.h"
#include "skin/SvgCheck.h"
#include "skin/SvgRenderer.h"

#include <QFile>

namespace Quorlin {

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (path.isEmpty() || file.size() > PointReader::MostBytes || !file.open(QIODevice::ReadOnly))
        return {};
    const auto bytes = file.read(PointReader::MostBytes + 1);
    return bytes.size() <= PointReader::MostBytes ? bytes : QByteArray();
}

/// "Main.png" becomes "Main@2x.png".
QString denseName(const QString &value)
{
    const auto point = value.lastIndexOf(QLatin1Char('.'));
    return value.left(point) + QLatin1String("@2x") + (point < 0 ? QString() : value.mid(point));
}

} // namespace

PictureLoader::PictureLoader(std::shared_ptr<const SvgRenderer> drawings,
                             std::shared_ptr<const MetafileRenderer> metafiles)
    : m_drawings(std::move(drawings)), m_metafiles(std::move(metafiles))
{
}

std::optional<SkinPicture> PictureLoader::load(const QString &skinPath, const QString &value) const
{
    const auto content = contentOf(SkinFolder::fileIn(skinPath, value));
    const auto format = pictureFormatOf(content);
    SkinPicture picture;
    if (format == PictureFormat::Svg) {
        picture = loadDrawing(content);
    } else if (format == PictureFormat::Wmf || format == PictureFormat::Emf) {
        picture = loadMetafile(content);
    } else {
        const auto plain = PointReader::read(content, format);
        picture = SkinPicture::ofPoints(plain, plain.isNull() ? QByteArray()
                                                              : denseBeside(skinPath, value));
    }
    if (picture.isEmpty())
        return {};
    return picture;
}

SkinPicture PictureLoader::loadDrawing(const QByteArray &content) const
{
    if (!m_drawings || !SvgCheck::isHarmless(content))
        return {};
    return SkinPicture::ofDrawing(m_drawings->render(content, {}, Waiting::WithEvents), content,
                                  m_drawings);
}

SkinPicture PictureLoader::loadMetafile(const QByteArray &content) const
{
    if (!m_metafiles)
        return {};
    const auto png = m_metafiles->render(content, pictureFormatOf(content));
    return SkinPicture::ofPoints(PointReader::read(png, PictureFormat::Png));
}

QByteArray PictureLoader::denseBeside(const QString &skinPath, const QString &value)
{
    const auto content = contentOf(SkinFolder::fileIn(skinPath, denseName(value)));
    return PointReader::sizeOf(content, pictureFormatOf(content)).isValid() ? content
                                                                            : QByteArray();
}

} // namespace Quorlin
