#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin {

/// Asks the user for files. Filters have the form "description|*.a;*.b|description|*.c".
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;

    /// @return full paths of existing files; none when the user cancels.
    [[nodiscard]] virtual QStringList askForDocuments(const QString &title,
                                                      const QString &filter) = 0;

    /// Where to save a PDF. The user has agreed that an existing file is replaced.
    /// @param proposedName name or full path.
    /// @return full path, with ".pdf" where the user gave no extension; empty when the user
    /// cancels.
    [[nodiscard]] virtual QString askForTarget(const QString &title, const QString &filter,
                                               const QString &proposedName) = 0;
};

} // namespace Quorlin
