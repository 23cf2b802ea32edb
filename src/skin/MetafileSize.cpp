#include "skin/MetafileSize.h"

#include <QtEndian>

namespace Quorlin {

namespace {

constexpr double MostInches = 100;
constexpr double EmfUnitsPerInch = 2540; // hundredths of a millimetre
constexpr qsizetype WmfHeaderBytes = 22;
constexpr qsizetype EmfHeaderBytes = 88;

template <typename Number>
double numberAt(const QByteArray &content, qsizetype offset)
{
    return qFromLittleEndian<Number>(content.constData() + offset);
}

/// Four numbers in a row: left, top, right, bottom.
template <typename Number>
QSizeF boxAt(const QByteArray &content, qsizetype offset)
{
    const auto side = [&content, offset](int which) {
        return numberAt<Number>(content, offset + which * qsizetype(sizeof(Number)));
    };
    return {side(2) - side(0), side(3) - side(1)};
}

QSizeF wmfInches(const QByteArray &content)
{
    constexpr qsizetype Box = 6;
    constexpr qsizetype UnitsPerInch = 14;
    if (content.size() < WmfHeaderBytes)
        return {};
    const auto units = numberAt<quint16>(content, UnitsPerInch);
    return units > 0 ? boxAt<qint16>(content, Box) / units : QSizeF();
}

QSizeF emfInches(const QByteArray &content)
{
    constexpr qsizetype Frame = 24;
    return content.size() < EmfHeaderBytes ? QSizeF()
                                           : boxAt<qint32>(content, Frame) / EmfUnitsPerInch;
}

} // namespace

QSizeF metafileInches(const QByteArray &content, PictureFormat format)
{
    QSizeF inches;
    if (format == PictureFormat::Wmf)
        inches = wmfInches(content);
    else if (format == PictureFormat::Emf)
        inches = emfInches(content);
    const auto isSane =
        !inches.isEmpty() && inches.width() <= MostInches && inches.height() <= MostInches;
    return isSane ? inches : QSizeF();
}

} // namespace Quorlin
