#pragma once

#include <QString>

namespace Quorlin {

/// What assistive tools read out for controls that show a picture and no text. Language files
/// have no such texts.
struct AccessibleNames
{
    QString close;
    QString help;
    QString minimise;
    QString documents;
    QString progress;
    QString libraryLogo;
    QString makerLogo;

    /// @param language name of a language; English for one that is not known here.
    [[nodiscard]] static const AccessibleNames &in(const QString &language);
};

} // namespace Quorlin
