#include "PicturePage.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Quorlin {

namespace {

/// A small generator of its own: the standard ones may differ between libraries.
class Grain
{
public:
    [[nodiscard]] int next()
    {
        m_state = m_state * 1664525U + 1013904223U;
        return static_cast<int>(m_state >> 24U) % 25 - 12;
    }

private:
    std::uint32_t m_state = 20240601U;
};

char tone(double value)
{
    return static_cast<char>(static_cast<unsigned char>(std::clamp(value, 0.0, 255.0)));
}

double softShape(double x, double y, int channel)
{
    const double hill = std::sin(x * 9 + channel) * std::cos(y * 7 - channel);
    const double edge = std::hypot(x - 0.6, y - 0.4) < 0.2 ? 45 : 0;
    return 120 + 60 * hill + edge;
}

QByteArray photograph(int dots, int channels)
{
    Grain grain;
    QByteArray bytes;
    bytes.reserve(dots * dots * channels);
    for (int i = 0; i < dots * dots; ++i)
        for (int channel = 0; channel < channels; ++channel)
            bytes += tone(softShape(double(i % dots) / dots, double(i / dots) / dots, channel) +
                          grain.next());
    return bytes;
}

QByteArray gradients(int dots)
{
    QByteArray bytes;
    for (int i = 0; i < dots * dots; ++i) {
        const double x = double(i % dots) / dots;
        const double y = double(i / dots) / dots;
        bytes += tone(255 * x);
        bytes += tone(255 * y);
        bytes += tone(128 + 60 * std::sin(6 * x));
    }
    return bytes;
}

QByteArray drawing(int dots)
{
    static constexpr char colours[] = "\xff\xff\xff\x10\x30\x80\xe0\x40\x10";
    QByteArray bytes;
    for (int i = 0; i < dots * dots; ++i)
        bytes += QByteArray(colours + 3 * ((i % dots / 24 + i / dots / 17) % 3), 3);
    return bytes;
}

QByteArray bits(int dots)
{
    Grain grain;
    QByteArray bytes;
    for (int i = 0; i < (dots + 7) / 8 * dots; ++i)
        bytes += static_cast<char>(grain.next() < 0 ? 0xf0 : 0x3c);
    return bytes;
}

QByteArray hex(const QByteArray &bytes)
{
    QByteArray lines;
    for (qsizetype i = 0; i < bytes.size(); i += 120)
        lines += bytes.mid(i, 120).toHex() + '\n';
    return lines + ">\n";
}

QByteArray operatorFor(PicturePage::Kind kind)
{
    switch (kind) {
    case PicturePage::Kind::Grey:
        return "8 %m currentfile /ASCIIHexDecode filter image\n";
    case PicturePage::Kind::Mono:
        return "1 %m currentfile /ASCIIHexDecode filter image\n";
    case PicturePage::Kind::Mask:
        return "true %m currentfile /ASCIIHexDecode filter imagemask\n";
    default:
        return "8 %m currentfile /ASCIIHexDecode filter false 3 colorimage\n";
    }
}

QByteArray matrix(int width, int height)
{
    return '[' + QByteArray::number(width) + " 0 0 -" + QByteArray::number(height) + " 0 " +
           QByteArray::number(height) + ']';
}

QByteArray placed(int width, int height, double dpi)
{
    return "gsave 36 36 translate " + QByteArray::number(width * 72 / dpi, 'f', 6) + ' ' +
           QByteArray::number(height * 72 / dpi, 'f', 6) + " scale\n";
}

} // namespace

QByteArray PicturePage::samples(Kind kind, int dots)
{
    switch (kind) {
    case Kind::Colour:
        return photograph(dots, 3);
    case Kind::Soft:
        return gradients(dots);
    case Kind::Grey:
        return photograph(dots, 1);
    case Kind::Drawing:
        return drawing(dots);
    default:
        return bits(dots);
    }
}

QByteArray PicturePage::page(Kind kind, int dots, double dpi)
{
    const QByteArray size = QByteArray::number(dots);
    QByteArray call = operatorFor(kind);
    call.replace("%m", matrix(dots, dots));
    return placed(dots, dots, dpi) + size + ' ' + size + ' ' + call + hex(samples(kind, dots)) +
           "grestore showpage\n";
}

QByteArray PicturePage::jpegPage(const QByteArray &jpeg, int width, int height, double dpi)
{
    return placed(width, height, dpi) + "/DeviceRGB setcolorspace << /ImageType 1 /Width " +
           QByteArray::number(width) + " /Height " + QByteArray::number(height) +
           " /BitsPerComponent 8 /Decode [0 1 0 1 0 1] /ImageMatrix " + matrix(width, height) +
           " /DataSource currentfile /ASCIIHexDecode filter << >> /DCTDecode filter >> image\n" +
           hex(jpeg) + "grestore showpage\n";
}

} // namespace Quorlin
