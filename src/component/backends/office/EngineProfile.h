#pragma once

#include <QString>

namespace Quorlin {

/// The private folders of one office engine, below a working folder:
///   profile/    the engine's settings
///   home/ tmp/  where it believes its user's files and temporary files to be
///   fonts.conf  the fonts of the real user, at their real places
///
/// A fresh profile is written such that the engine has nothing to set up at its first start:
/// it neither restarts itself nor tests its drawing, which takes a second.
class EngineProfile
{
public:
    /// @param workFolder absolute, existing, private to this process.
    explicit EngineProfile(const QString &workFolder);

    /// Writes what is missing. @param buildId see EngineInstallation.
    /// @return false when the working folder cannot be written.
    [[nodiscard]] bool prepare(const QString &buildId) const;

    [[nodiscard]] QString profileFolder() const;
    [[nodiscard]] QString homeFolder() const;
    [[nodiscard]] QString temporaryFolder() const;
    [[nodiscard]] QString fontsFile() const;

private:
    QString m_workFolder;
};

} // namespace Quorlin
