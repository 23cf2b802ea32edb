#pragma once

#include <QList>
#include <QString>

namespace Quorlin {

/// What is to be read, filled in and applied for one element, written down apart from the program.
struct ExpectedElement
{
    const char *section;
    const char *name;
    const char *kind;   ///< "position", "geometry", "window" or "picture"
    bool skippedAsText; ///< not read when the skin is in text mode
    int x;              ///< the built-in layout
    int y;
    int width;
    int height;
    bool visible;
    bool inMainWindow;
    const char *control; ///< "window" for the window itself

    /// In the order of reading.
    [[nodiscard]] static const QList<ExpectedElement> &all();

    /// The controls in the order of application.
    [[nodiscard]] static const QList<const char *> &mainOrder();
    [[nodiscard]] static const QList<const char *> &aboutOrder();
};

} // namespace Quorlin
