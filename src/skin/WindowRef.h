#pragma once

#include "skin/SkinWindow.h"

#include <functional>

namespace Quorlin {

/// A reference to a skinned window.
class WindowRef : public std::reference_wrapper<SkinWindow>
{
public:
    using std::reference_wrapper<SkinWindow>::reference_wrapper;
};

} // namespace Quorlin
