#pragma once

#include <QLatin1StringView>

#include <optional>
#include <span>

namespace Quorlin {

/// The windows that a skin lays out.
enum class SkinForm { Main, About };

/// What a skin gives for an element.
enum class SkinKind { Position, Geometry, Window, Picture };

/// One element of a skin: where its description has it, what the built-in layout gives, and what
/// it is put onto. All numbers are pixels.
struct SkinElement
{
    struct Place
    {
        qint16 x;
        qint16 y;
        qint16 width;
        qint16 height;
        bool visible;
    };

    QLatin1StringView section;
    QLatin1StringView name;
    SkinKind kind;
    bool skippedInTextMode;
    Place builtIn; ///< of the Classic layout; for a window only the size counts
    SkinForm form;
    QLatin1StringView control; ///< object name in the window; empty for the window itself
    int applied;               ///< place in the order of application, from 0

    /// Every element, in the order in which skins are read.
    [[nodiscard]] static std::span<const SkinElement> all();

    /// Every element, in the order in which skins are put onto the windows.
    [[nodiscard]] static std::span<const SkinElement *const> inOrderOfApplication();

    /// Number of an element in the order of reading; nothing when there is none of that name.
    [[nodiscard]] static std::optional<std::size_t> indexOf(QLatin1StringView name);
};

} // namespace Quorlin
