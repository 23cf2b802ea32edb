#include "component/backends/office/NameCheck.h"

#include <QByteArrayView>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <span>
#include <string_view>

namespace Quorlin {

namespace {

using namespace std::string_view_literals;

constexpr qint64 HeadSize = 4096;

/// Beginnings of zip packages, compound files, markup and rich text. Office documents of any
/// age are found under each other's names, and are read by what they are.
constexpr std::string_view Documents[] = {
    "PK"sv, "\xD0\xCF\x11\xE0"sv, "<"sv, "{\\rtf"sv, "\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv};

/// Beginnings of what was written before those: early spreadsheets and word processors.
constexpr std::string_view OldDocuments[] = {"\x09\x00"sv, "\x09\x02"sv, "\x09\x04"sv,
                                             "\x09\x08"sv, "\xDB\xA5"sv, "\x9B\xA5"sv,
                                             "\x31\xBE"sv, "\xFE\x37"sv, "\xFFWPC"sv};

constexpr std::string_view Pictures[] = {"\x89PNG"sv,
                                         "\xFF\xD8"sv,
                                         "GIF8"sv,
                                         "BM"sv,
                                         "II*\x00"sv,
                                         "MM\x00*"sv,
                                         "\xD7\xCD\xC6\x9A"sv,
                                         "\x01\x00\x09\x00"sv,
                                         "\x02\x00\x09"sv,
                                         "\x01\x00\x00\x00"sv,
                                         "\x1F\x8B"sv,
                                         "<"sv,
                                         "\xEF\xBB\xBF"sv,
                                         "\xFF\xFE"sv,
                                         "\xFE\xFF"sv};

bool beginsWithOneOf(const QByteArray &head, std::span<const std::string_view> beginnings)
{
    return std::ranges::any_of(beginnings, [&head](std::string_view beginning) {
        return head.startsWith(QByteArrayView(beginning.data(), qsizetype(beginning.size())));
    });
}

bool isOneOf(const QString &extension, const char *names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' ')).contains(extension);
}

} // namespace

bool contradictsItsName(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto head = file.read(HeadSize);
    const auto extension = QFileInfo(path).suffix().toLower();
    if (isOneOf(extension, "png jpg jpeg gif bmp tif tiff svg wmf emf"))
        return !beginsWithOneOf(head, Pictures) && !head.trimmed().startsWith('<');
    if (isOneOf(extension, "txt csv tsv") || beginsWithOneOf(head, Documents))
        return false;
    if (isOneOf(extension, "docx docm dotx dotm odt ott sxw xlsx xlsm xlsb xltx xltm ods ots sxc "
                           "pptx pptm ppsx ppsm potx potm odp otp sxi odg otg"))
        return !head.trimmed().startsWith('<');
    return head.contains('\0') && !beginsWithOneOf(head, OldDocuments);
}

} // namespace Quorlin
