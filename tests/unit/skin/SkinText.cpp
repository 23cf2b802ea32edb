#include "SkinText.h"

#include "ExpectedElements.h"

#include <QBuffer>
#include <QImage>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr int AdvancedOffset = 1000;

/// The property words of a kind, each with what is added to the element's number.
QList<std::pair<const char *, int>> propertiesOf(const QByteArray &kind)
{
    if (kind == "position")
        return {{"PosX", 100}, {"PosY", 200}};
    if (kind == "geometry")
        return {{"PosX", 100}, {"PosY", 200}, {"Width", 300}, {"Height", 400}};
    if (kind == "window")
        return {{"Width", 300}, {"Height", 400}};
    return {};
}

QString keyOf(const char *mode, const char *element, const char *property)
{
    return QString::fromLatin1(QByteArray(mode) + element + property);
}

} // namespace

SkinText::SkinText()
{
    int number = 0;
    for (const auto &row : ExpectedElement::all()) {
        ++number;
        const auto section = QString::fromLatin1(row.section);
        for (const auto &[property, base] : propertiesOf(row.kind)) {
            set(keyOf("Classic", row.name, property), QString::number(base + number), section);
            set(keyOf("Advanced", row.name, property),
                QString::number(AdvancedOffset + base + number), section);
        }
        const QByteArray kind(row.kind);
        if (kind == "window" || kind == "picture")
            set(keyOf("Classic", row.name, "Picture"), QStringLiteral("p.png"), section);
    }
}

SkinText &SkinText::set(const QString &key, const QString &value, const QString &section)
{
    for (auto &values : m_values) {
        if (values.contains(key)) {
            values[key] = value;
            return *this;
        }
    }
    m_values[section][key] = value;
    return *this;
}

SkinText &SkinText::remove(const QString &key)
{
    for (auto &values : m_values)
        values.remove(key);
    return *this;
}

SkinText &SkinText::removeElement(const QString &name)
{
    for (const auto *mode : {"Classic", "Advanced"}) {
        for (const auto *property : {"PosX", "PosY", "Width", "Height", "Visible", "Picture"})
            remove(keyOf(mode, name.toLatin1().constData(), property));
    }
    return *this;
}

QByteArray SkinText::bytes() const
{
    QByteArray bytes;
    for (auto section = m_values.begin(); section != m_values.end(); ++section) {
        bytes += '[' + section.key().toLatin1() + "]\r\n";
        for (auto value = section->begin(); value != section->end(); ++value)
            bytes += value.key().toLatin1() + " = " + value.value().toLatin1() + "\r\n";
    }
    return bytes;
}

int SkinText::numberOf(const QString &element)
{
    const auto &rows = ExpectedElement::all();
    const auto found = std::ranges::find_if(
        rows, [&element](const auto &row) { return QLatin1StringView(row.name) == element; });
    return int(found - rows.begin()) + 1;
}

QByteArray pngOf(int width, int height, Qt::GlobalColor colour)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    QBuffer buffer;
    const auto written = buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "png");
    return written ? buffer.data() : QByteArray();
}

} // namespace Quorlin
