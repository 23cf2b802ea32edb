#pragma once

#include <QString>

namespace Quorlin {

/// One compression quality: the name of its job options, and what users see.
struct TextQuality
{
    QString key;
    QString text;

    bool operator==(const TextQuality &) const = default;
};

} // namespace Quorlin
