#pragma once

#include <span>

/// A text that must be built in, written down once more so that a slip in the program's own
/// table shows.
struct ExpectedText
{
    enum class Check { None, Required, Pair };

    const char *group;
    const char *key;
    const char *builtIn;
    Check check;
};

/// In the order in which a language file is read.
[[nodiscard]] std::span<const ExpectedText> expectedTexts();
