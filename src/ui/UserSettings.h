#pragma once

#include <QPoint>
#include <QString>

#include <optional>

namespace Quorlin {

class Registry;

/// What the program remembers for its user, in the registry. A value that is missing or makes no
/// sense has a default; some of them the administrator can set for the whole machine.
class UserSettings
{
public:
    /// The key of the program's values, in the user's root and in the machine's.
    [[nodiscard]] static QString key();

    /// @param registry bound to the user's key; must outlive the object.
    /// @param programFolder its folder "skins" holds the skins.
    UserSettings(Registry &registry, const QString &programFolder);

    [[nodiscard]] bool showsResult() const { return isTrue("ShowOption"); }
    [[nodiscard]] bool merges() const { return isTrue("MergeOption"); }
    /// Falls back to the machine's language, then to "english".
    [[nodiscard]] QString language() const;
    /// Which of so many qualities is selected, from 0; -1 for none, 0 where the value makes no
    /// sense. Falls back to the machine's choice.
    [[nodiscard]] int quality(int count) const;
    /// Falls back to the machine's skin, then to "Varnex", also when the user's has no folder.
    [[nodiscard]] QString skin() const;
    /// Where the window was; nothing when it is not known.
    [[nodiscard]] std::optional<QPoint> position() const;

    void setShowsResult(bool on) { set("ShowOption", on); }
    void setMerges(bool on) { set("MergeOption", on); }
    void setLanguage(const QString &name);
    void setQuality(int index);
    void setSkin(const QString &name);
    void setPosition(const QPoint &position);

    /// The command text that another program has left for this one; it is taken away.
    [[nodiscard]] QString takePendingFile();
    /// What was left for a start with documents has been done.
    void clearStart();

private:
    [[nodiscard]] QString own(const char *name) const;
    [[nodiscard]] QString ownOrMachines(const char *name) const;
    [[nodiscard]] QString machines(const char *name) const;
    [[nodiscard]] bool isTrue(const char *name) const;
    [[nodiscard]] bool hasFolder(const QString &skin) const;
    void set(const char *name, bool on);

    Registry &m_registry;
    QString m_programFolder;
};

} // namespace Quorlin
