#pragma once

#include "component/protocol/Reason.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// Puts results under their final names.
///
/// A final name never holds half a file: the result is written beside it and takes the name in
/// one step, when it is safely on the disk. An input document is never overwritten, and no two
/// results of a run get the same name; a file of an earlier run is replaced.
class Delivery
{
public:
    struct Outcome
    {
        Reason reason = Reason::None;
        QString text;
    };

    /// @param folder where results go; empty: beside what they were made of.
    /// @param inputs the documents of the run, absolute.
    Delivery(const QString &folder, const QStringList &inputs);

    /// The final name of what the distiller made of this file, reserved for it: everything
    /// from the name's last "." replaced by ".pdf", with " (2)" and so on when it is taken.
    [[nodiscard]] QString reserveName(const QString &distillerInput);

    /// Whether writing to this path would overwrite a document of the run.
    [[nodiscard]] bool isInput(const QString &path) const;

    /// Why no result could get this path, as far as that shows without writing.
    [[nodiscard]] static Outcome obstacleAt(const QString &target);

    /// The same for all results in a folder.
    [[nodiscard]] static Outcome obstacleIn(const QString &folder);

    /// Moves a temporary result to its final name, making the folder when it is missing. The
    /// temporary file is gone afterwards, well or badly.
    [[nodiscard]] Outcome deliver(const QString &temporary, const QString &target) const;

private:
    [[nodiscard]] Outcome copy(const QString &source, const QString &target) const;

    QString m_folder;
    QSet<QString> m_inputs; ///< with all links resolved
    QSet<QString> m_reserved;
};

} // namespace Quorlin
