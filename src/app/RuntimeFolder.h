#pragma once

#include "winsupport/Descriptor.h"

#include <QByteArray>
#include <QString>

namespace Quorlin {

/// The folder in which the program's instances of one user session meet. It is ours alone:
/// nobody else may list, read or write it.
class RuntimeFolder
{
public:
    /// The session's folder: "quorlin" in the one that the system keeps for the running user, or
    /// one of our own below /tmp where there is none.
    [[nodiscard]] static RuntimeFolder ofSession();
    /// @param runtime the system's folder for the user; empty when there is none.
    /// @param fallback taken when no safe folder can be had in `runtime`.
    [[nodiscard]] static RuntimeFolder firstSafe(const QString &runtime, const QString &fallback);
    /// Makes the folder when there is none. Not open when it is a link, somebody else's, or open
    /// to others.
    [[nodiscard]] static RuntimeFolder at(const QString &path);

    [[nodiscard]] bool isOpen() const { return m_folder.isOpen(); }
    /// The path of a name in it, in the encoding of file names. It is short enough for a socket
    /// and means the folder that was checked, whatever stands under its name meanwhile.
    [[nodiscard]] QByteArray pathOf(const QByteArray &name) const;

    /// A word that differs between the screens on which windows of this user can appear.
    [[nodiscard]] static QByteArray screenName();

private:
    explicit RuntimeFolder(Descriptor folder) : m_folder(std::move(folder)) {}

    Descriptor m_folder;
};

} // namespace Quorlin
