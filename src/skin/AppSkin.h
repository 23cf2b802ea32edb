#pragma once

#include "skin/ClickableZone.h"
#include "skin/SkinElement.h"
#include "skin/SkinLook.h"
#include "skin/WindowRef.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace Quorlin {

class MessageService;
class TextSource;

/// The one skin of the program. Everything else may only be called between Initialise() and
/// Finish(), on the thread of the user interface.
namespace AppSkin {

/// @param applicationFolder path of the program's folder; its folder "skins" holds the skins.
/// @param messages not owned, like `texts`; both must live until Finish().
void Initialise(const QString &applicationFolder, MessageService &messages,
                const TextSource &texts);

/// Forgets everything, the pictures too.
void Finish();

/// Tells which window to lay out; nothing when it goes. Nothing is applied to it yet.
void SetWindow(SkinForm form, std::optional<WindowRef> window);

/// Names of all entries of the folder "skins" but "None", whatever they are, in the order of
/// the file system.
[[nodiscard]] QStringList GetSkinList();

/// Loads a skin and puts its Classic layout onto the windows; "None", an empty name or a failure,
/// which is told in a message, put the built-in layout onto them.
/// Throws NumberedError when a window refuses a property that it must have.
void SetSkin(const QString &name);

[[nodiscard]] QString GetSkinName();

/// Folder of the current skin; empty for the built-in layout.
[[nodiscard]] QString GetSkinPath();

/// Makes the built-in layout the current skin; nothing is applied.
void SetDefaultSkin();

/// Puts the current skin onto the windows that there are.
/// @param mode 0 for the Classic layout, any other value for the Advanced one.
void ApplySkin(qint32 mode);

/// The same for one window, which may have come later than the skin.
void ApplySkinTo(SkinForm form, qint32 mode);

/// Colours and fonts of the current skin.
[[nodiscard]] SkinLook GetLook();

/// Where the main window is minimised; nothing when the skin has no such place.
[[nodiscard]] std::optional<ClickableZone> GetMinimiseZone();

} // namespace AppSkin

} // namespace Quorlin
