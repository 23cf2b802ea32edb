#include "skin/PictureFormat.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Quorlin {

namespace {

using namespace std::string_view_literals;

struct Signature
{
    PictureFormat format;
    std::size_t offset;
    std::string_view bytes;
};

constexpr std::array Signatures{
    Signature{PictureFormat::Png, 0, "\x89PNG\r\n\x1A\n"sv},
    Signature{PictureFormat::Jpeg, 0, "\xFF\xD8\xFF"sv},
    Signature{PictureFormat::Gif, 0, "GIF87a"sv},
    Signature{PictureFormat::Gif, 0, "GIF89a"sv},
    Signature{PictureFormat::Bmp, 0, "BM"sv},
    Signature{PictureFormat::Ico, 0, "\0\0\1\0"sv},
    Signature{PictureFormat::Wmf, 0, "\xD7\xCD\xC6\x9A"sv},
    Signature{PictureFormat::Emf, 40, " EMF"sv},
};

/// A drawing is text: what matters is how it begins behind blanks and a byte order mark.
bool beginsAsSvg(std::string_view text)
{
    constexpr auto Mark = "\xEF\xBB\xBF"sv;
    if (text.starts_with(Mark))
        text.remove_prefix(Mark.size());
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"sv), text.size()));
    return text.starts_with("<?xml"sv) || text.starts_with("<svg"sv) || text.starts_with("<!--"sv);
}

} // namespace

PictureFormat pictureFormatOf(const QByteArray &content)
{
    const std::string_view bytes(content.constData(), std::size_t(content.size()));
    const auto *const found = std::ranges::find_if(Signatures, [bytes](const auto &signature) {
        return bytes.size() > signature.offset &&
               bytes.substr(signature.offset).starts_with(signature.bytes);
    });
    if (found != Signatures.end())
        return found->format;
    return beginsAsSvg(bytes) ? PictureFormat::Svg : PictureFormat::Unknown;
}

const char *readerName(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Bmp:
        return "bmp";
    case PictureFormat::Ico:
        return "ico";
    case PictureFormat::Gif:
        return "gif";
    case PictureFormat::Jpeg:
        return "jpeg";
    case PictureFormat::Png:
        return "png";
    case PictureFormat::Svg:
        return "svg";
    case PictureFormat::Wmf:
        return "wmf";
    case PictureFormat::Emf:
        return "emf";
    case PictureFormat::Unknown:
        break;
    }
    return "";
}

} // namespace Quorlin
