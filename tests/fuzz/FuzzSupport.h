#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// What the fuzz targets have in common.
namespace Quorlin::Fuzz {

/// Ends the program when a rule of the target's model is broken, so that it counts as a crash.
inline void check(bool holds)
{
    if (!holds)
        std::abort();
}

/// The input as text; it does not copy.
[[nodiscard]] inline std::string_view textOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), size};
}

[[nodiscard]] inline QByteArray bytesOf(std::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

/// Cuts a text at the first place of a mark, which is left out.
struct Halves
{
    std::string_view first;
    std::string_view second;
    bool cut = false; ///< the mark was there

    Halves(std::string_view text, std::string_view mark)
    {
        const auto at = text.find(mark);
        cut = at != std::string_view::npos;
        first = text.substr(0, at);
        second = cut ? text.substr(at + mark.size()) : std::string_view();
    }
};

/// Hands a text on in pieces of one size, the last one shorter.
template <typename Take>
void inPieces(std::string_view text, std::size_t piece, const Take &take)
{
    for (std::size_t from = 0; from < text.size(); from += piece)
        take(text.substr(from, piece));
}

inline void writeFile(const QString &path, std::string_view bytes)
{
    QFile file(path);
    const auto size = static_cast<qint64>(bytes.size());
    check(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
          file.write(bytes.data(), size) == size);
}

} // namespace Quorlin::Fuzz
