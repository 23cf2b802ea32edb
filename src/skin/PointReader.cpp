#include "skin/PointReader.h"

#include <QBuffer>
#include <QImageReader>

namespace Quorlin::PointReader {

namespace {

constexpr int MostMegabytes = 256;

bool isMadeOfPoints(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Bmp:
    case PictureFormat::Ico:
    case PictureFormat::Gif:
    case PictureFormat::Jpeg:
    case PictureFormat::Png:
        return true;
    default:
        return false;
    }
}

/// A reader of one format alone: the content decided already, and no other plugin is asked.
class Reader
{
public:
    Reader(const QByteArray &content, PictureFormat format)
    {
        m_buffer.setData(content);
        static_cast<void>(m_buffer.open(QIODevice::ReadOnly));
        m_reader.setAutoDetectImageFormat(false);
        m_reader.setFormat(readerName(format));
        m_reader.setDevice(&m_buffer);
        QImageReader::setAllocationLimit(MostMegabytes);
    }

    QImageReader *operator->() { return &m_reader; }

private:
    QBuffer m_buffer;
    QImageReader m_reader;
};

QImage forDrawing(const QImage &image)
{
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}

} // namespace

bool isSane(const QSize &size)
{
    return !size.isEmpty() && size.width() <= LongestSide && size.height() <= LongestSide &&
           qint64(size.width()) * size.height() <= MostPoints;
}

QSize sizeOf(const QByteArray &content, PictureFormat format)
{
    if (!isMadeOfPoints(format))
        return {};
    Reader reader(content, format);
    const auto size = reader->size();
    return isSane(size) ? size : QSize();
}

QImage read(const QByteArray &content, PictureFormat format)
{
    if (content.isEmpty() || !isMadeOfPoints(format))
        return {};
    Reader reader(content, format);
    if (!isSane(reader->size()))
        return {};
    QImage image;
    if (!reader->read(&image) || !isSane(image.size()))
        return {};
    image.setDevicePixelRatio(1);
    return forDrawing(image);
}

} // namespace Quorlin::PointReader
