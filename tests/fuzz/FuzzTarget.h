#pragma once

#include <cstddef>
#include <cstdint>

/// What a fuzz target defines; it must bear any bytes. The result is always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
