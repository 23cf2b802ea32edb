#pragma once

#include "skin/ClickableZone.h"
#include "skin/PictureLoader.h"
#include "skin/SkinContext.h"
#include "skin/SkinFolder.h"
#include "skin/SkinLook.h"
#include "skin/SkinObjects.h"

#include <QStringList>

#include <array>
#include <optional>

namespace Quorlin {

class MessageService;
class TextSource;

/// The current skin and what it is put onto. The built-in layout is called "None" and is what a
/// new engine has.
class SkinEngine : private SkinContext
{
public:
    /// @param applicationFolder its folder "skins" holds the skins.
    /// @param messages not owned, like `texts`; both must outlive this object.
    SkinEngine(const QString &applicationFolder, MessageService &messages, const TextSource &texts,
               PictureLoader pictures);
    SkinEngine(const SkinEngine &) = delete;
    SkinEngine &operator=(const SkinEngine &) = delete;
    ~SkinEngine() override = default;

    /// Tells which window to lay out; the window must live until this is called again.
    void setWindow(SkinForm form, std::optional<WindowRef> window);

    [[nodiscard]] QStringList GetSkinList() const;

    /// Loads a skin as a whole and puts its Classic layout onto the windows. When that fails,
    /// says so in a message and puts the built-in layout onto them. A call from within a call is
    /// carried out after it, the last one only.
    /// Throws NumberedError when a window refuses a property that it must have.
    void SetSkin(const QString &name);

    [[nodiscard]] QString GetSkinName() const override { return m_name; }
    [[nodiscard]] bool isTextMode() const { return m_textMode; }
    /// Folder of the current skin; empty for the built-in layout.
    [[nodiscard]] QString GetSkinPath() const { return m_path; }
    [[nodiscard]] const SkinLook &GetLook() const { return m_look; }
    /// Where the main window is minimised; nothing when the skin has no such place.
    [[nodiscard]] std::optional<ClickableZone> GetMinimiseZone() const { return m_minimise; }

    void SetDefaultSkin();

    /// Puts the current skin onto the windows that there are. While a skin is being loaded
    /// nothing happens, since loading ends with this.
    void ApplySkin(qint32 mode);
    /// The same for one window, which may have come later than the skin.
    void ApplySkinTo(SkinForm form, qint32 mode);

    [[nodiscard]] SkinObjects &objects() { return m_objects; }

private:
    enum class Result { Loaded, NotFound, Invalid };

    [[nodiscard]] std::optional<SkinPicture> loadPicture(const QString &value) const override;
    void load(const QString &name);
    [[nodiscard]] Result read(const QString &name);
    [[nodiscard]] bool readElements(const IniFile &ini);
    void readMinimiseZone(const IniFile &ini);
    void showFailure(Result result, const QString &name);
    void apply(SkinForm form, qint32 mode);

    SkinFolder m_folder;
    MessageService &m_messages;
    const TextSource &m_texts;
    PictureLoader m_pictures;

    QString m_name;
    QString m_path;
    bool m_textMode = false;
    SkinObjects m_objects;
    SkinLook m_look;
    std::optional<ClickableZone> m_minimise;

    std::array<std::optional<WindowRef>, 2> m_windows;
    bool m_loading = false;
    std::optional<QString> m_next;
};

} // namespace Quorlin
