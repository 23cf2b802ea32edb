#pragma once

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QImage>
#include <QMetaType>
#include <QSize>

#include <memory>

class QPainter;
class QRectF;

namespace Quorlin {

class SkinPictureData;
class SvgRenderer;

/// A picture of a skin, for screens of any density. Copies share what they hold. For the thread
/// of the user interface only.
class SkinPicture
{
public:
    /// The empty picture.
    SkinPicture();

    /// @param plain one point for each pixel of the skin.
    /// @param dense content of a file of about twice the size, decoded when it is first needed;
    /// empty, or one that cannot be decoded, means that there is none.
    [[nodiscard]] static SkinPicture ofPoints(const QImage &plain, const QByteArray &dense = {});

    /// @param plain the drawing as it is on a screen of plain density.
    [[nodiscard]] static SkinPicture ofDrawing(const QImage &plain, const QByteArray &svg,
                                               std::shared_ptr<const SvgRenderer> renderer);

    SkinPicture(const SkinPicture &other);
    SkinPicture(SkinPicture &&other) noexcept;
    SkinPicture &operator=(const SkinPicture &other);
    SkinPicture &operator=(SkinPicture &&other) noexcept;
    ~SkinPicture();

    [[nodiscard]] bool isEmpty() const;

    /// In pixels of the skin.
    [[nodiscard]] QSize logicalSize() const;

    /// What fits an area of this many points best: a drawing in exactly this size, otherwise the
    /// smallest picture that is large enough, or the largest one.
    [[nodiscard]] QImage imageFor(const QSize &points) const;

    /// Fills an area, as sharp as the painter's device allows. An empty picture draws nothing.
    void draw(QPainter &painter, const QRectF &target) const;

    /// True for copies of one picture, and for two empty ones.
    [[nodiscard]] bool operator==(const SkinPicture &other) const;

private:
    explicit SkinPicture(SkinPictureData *data);

    QExplicitlySharedDataPointer<SkinPictureData> m_data;
};

} // namespace Quorlin

Q_DECLARE_METATYPE(Quorlin::SkinPicture)
