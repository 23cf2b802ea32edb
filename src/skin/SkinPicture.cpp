#include "skin/SkinPicture.h"

#include "skin/PointReader.h"
#include "skin/SvgRenderer.h"

#include <QPainter>
#include <QSharedData>

#include <algorithm>
#include <list>

namespace Quorlin {

class SkinPictureData : public QSharedData
{
public:
    [[nodiscard]] QImage imageFor(const QSize &points)
    {
        if (points.width() <= plain.width() && points.height() <= plain.height())
            return plain;
        return renderer ? drawingFor(points) : denseOne();
    }

    QImage plain;
    QByteArray dense;
    QByteArray svg;
    std::shared_ptr<const SvgRenderer> renderer;

private:
    [[nodiscard]] QImage denseOne()
    {
        if (m_dense.isNull() && !dense.isEmpty())
            m_dense = PointReader::read(dense, pictureFormatOf(dense));
        dense.clear();
        return m_dense.isNull() ? plain : m_dense;
    }

    /// One that could not be made is remembered too, as the plain one.
    [[nodiscard]] QImage drawingFor(const QSize &points)
    {
        constexpr std::size_t MostKept = 3;
        const auto kept = std::ranges::find(m_drawings, points,
                                            [](const auto &drawing) { return drawing.first; });
        if (kept != m_drawings.end())
            return kept->second;
        auto image =
            PointReader::isSane(points) ? renderer->render(svg, points, Waiting::Still) : QImage();
        m_drawings.emplace_front(points, image.isNull() ? plain : image);
        if (m_drawings.size() > MostKept)
            m_drawings.pop_back();
        return m_drawings.front().second;
    }

    QImage m_dense;
    std::list<std::pair<QSize, QImage>> m_drawings;
};

SkinPicture::SkinPicture() = default;
SkinPicture::SkinPicture(SkinPictureData *data) : m_data(data) {}
SkinPicture::SkinPicture(const SkinPicture &other) = default;
SkinPicture::SkinPicture(SkinPicture &&other) noexcept = default;
SkinPicture &SkinPicture::operator=(const SkinPicture &other) = default;
SkinPicture &SkinPicture::operator=(SkinPicture &&other) noexcept = default;
SkinPicture::~SkinPicture() = default;

SkinPicture SkinPicture::ofPoints(const QImage &plain, const QByteArray &dense)
{
    if (plain.isNull())
        return {};
    auto data = std::make_unique<SkinPictureData>();
    data->plain = plain;
    data->dense = dense;
    return SkinPicture(data.release());
}

SkinPicture SkinPicture::ofDrawing(const QImage &plain, const QByteArray &svg,
                                   std::shared_ptr<const SvgRenderer> renderer)
{
    if (plain.isNull())
        return {};
    auto data = std::make_unique<SkinPictureData>();
    data->plain = plain;
    data->svg = svg;
    data->renderer = std::move(renderer);
    return SkinPicture(data.release());
}

bool SkinPicture::isEmpty() const
{
    return !m_data;
}

QSize SkinPicture::logicalSize() const
{
    return m_data ? m_data->plain.size() : QSize(0, 0);
}

QImage SkinPicture::imageFor(const QSize &points) const
{
    return m_data ? m_data->imageFor(points) : QImage();
}

void SkinPicture::draw(QPainter &painter, const QRectF &target) const
{
    if (isEmpty() || target.isEmpty() || !painter.device())
        return;
    const auto density = painter.device()->devicePixelRatioF();
    const auto points = (target.size() * density).toSize();
    const auto image = imageFor(points);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, image.size() != points);
    painter.drawImage(target, image, image.rect());
    painter.restore();
}

bool SkinPicture::operator==(const SkinPicture &other) const
{
    return m_data == other.m_data;
}

} // namespace Quorlin
