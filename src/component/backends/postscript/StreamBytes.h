#pragma once

#include <optional>
#include <string>

class QPDFObjectHandle;

namespace Quorlin {

/// Most bytes that one decoded stream may have; more is taken for an attack.
inline constexpr std::size_t MaxStreamBytes = 256U * 1024 * 1024;

/// The decoded bytes of a stream, or nothing when they cannot be had or are too many.
[[nodiscard]] std::optional<std::string> streamBytes(QPDFObjectHandle stream,
                                                     std::size_t maxBytes = MaxStreamBytes);

/// The decoded contents of a page, its streams joined by line feeds; nothing when they cannot
/// be had or are too many.
[[nodiscard]] std::optional<std::string> pageBytes(QPDFObjectHandle page);

} // namespace Quorlin
