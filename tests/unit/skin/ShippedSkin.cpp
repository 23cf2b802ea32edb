#include "ShippedSkin.h"

#include <cmath>

namespace Quorlin {

namespace {

constexpr int IconSide = 16;

QString dataFolder()
{
    return QStringLiteral(QUORLIN_SOURCE_DIR "/data");
}

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// The information panel is shown over the list while a conversion runs, and a caption lies on
/// its button.
bool mayOverlap(QLatin1StringView one, QLatin1StringView other)
{
    const auto areBoth = [one, other](const char *first, const char *second) {
        return (one == QLatin1StringView(first) && other == QLatin1StringView(second)) ||
               (one == QLatin1StringView(second) && other == QLatin1StringView(first));
    };
    return areBoth("ZoneInfo", "List") || areBoth("LibConvert", "BtnConvert");
}

} // namespace

ShippedSkin::ShippedSkin(const QString &name)
    : m_engine(dataFolder(), m_messages, m_texts, PictureLoader())
{
    m_engine.SetSkin(name);
}

QString ShippedSkin::pathOf(const QString &name)
{
    return dataFolder() + QLatin1String("/skins/") + name;
}

SkinPicture ShippedSkin::picture(const char *element)
{
    const QLatin1StringView name(element);
    if (const auto *const form = m_engine.objects().form(name))
        return form->picture(0);
    return m_engine.objects().picture(name)->picture(0);
}

QSize ShippedSkin::pictureSize(const char *element)
{
    if (const auto *const form = m_engine.objects().form(QLatin1StringView(element)))
        return {form->width(0), form->height(0)};
    const auto *const zone = m_engine.objects().control(QLatin1StringView("ZoneInfo"));
    return {zone->width(0), zone->height(0)};
}

std::optional<QRect> ShippedSkin::placeOf(const SkinElement &element, qint32 mode)
{
    const auto *const control = m_engine.objects().control(element.name);
    if (!control)
        return {};
    if (element.kind == SkinKind::Position)
        return QRect(control->X(mode), control->Y(mode), IconSide, IconSide);
    return QRect(control->X(mode), control->Y(mode), control->width(mode), control->height(mode));
}

QRect ShippedSkin::surroundingsOf(const SkinElement &element, qint32 mode)
{
    if (element.name == QLatin1StringView("LabelInfo")) {
        const auto *const zone = m_engine.objects().control(QLatin1StringView("ZoneInfo"));
        return {0, 0, zone->width(mode), zone->height(mode)};
    }
    const auto *const form = m_engine.objects().form(
        QLatin1StringView(element.form == SkinForm::Main ? "Main" : "About"));
    return {0, 0, form->width(mode), form->height(mode)};
}

QStringList ShippedSkin::overlaps(qint32 mode)
{
    struct Placed
    {
        QLatin1StringView name;
        SkinForm form;
        QRect place;
    };
    QList<Placed> placed;
    for (const auto &element : SkinElement::all()) {
        const auto place = placeOf(element, mode);
        if (place && element.name != QLatin1StringView("LabelInfo"))
            placed.append({element.name, element.form, *place});
    }
    if (const auto zone = m_engine.GetMinimiseZone()) {
        placed.append({QLatin1StringView("Min"), SkinForm::Main,
                       QRect(QPoint(zone->left(mode), zone->top(mode)),
                             QPoint(zone->right(mode) - 1, zone->bottom(mode) - 1))});
    }
    QStringList found;
    for (qsizetype one = 0; one < placed.size(); ++one) {
        for (auto other = one + 1; other < placed.size(); ++other) {
            const auto &a = placed.at(one);
            const auto &b = placed.at(other);
            if (a.form == b.form && a.place.intersects(b.place) && !mayOverlap(a.name, b.name))
                found.append(a.name + QLatin1String(" over ") + b.name);
        }
    }
    return found;
}

double ShippedSkin::lowestContrast(const QColor &ink, const char *picture, const char *element)
{
    const auto points = this->picture(picture).imageFor(pictureSize(picture));
    const auto index = SkinElement::indexOf(QLatin1StringView(element));
    const auto place = placeOf(SkinElement::all()[index.value()], 0).value();
    double lowest = 21;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            lowest = std::min(lowest, contrast(ink, points.pixelColor(x, y)));
    }
    return lowest;
}

double contrast(const QColor &one, const QColor &other)
{
    const auto a = luminance(one);
    const auto b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace Quorlin
