#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// Where the printed files of one job go and how they are called.
///
/// The name of a final PDF is that of the printed file with everything from its last point
/// replaced by ".pdf". So the printed file of /d/report.docx is /d/report.ps~, unless the
/// result would take the place of another one of the job or of one of its documents.
class OutputNames
{
public:
    /// The place of one printed file: folder and name without the extension.
    struct Place
    {
        QString folder;
        QString base;
        bool inPlace = false; ///< a PostScript document that is its own printed file

        [[nodiscard]] QString result() const
        {
            return folder + QLatin1Char('/') + base + QStringLiteral(".pdf");
        }
    };

    /// @param fallbackFolders take the place, in order, of a folder that cannot be written.
    explicit OutputNames(const QStringList &fallbackFolders);

    /// The places of all documents of a job, in their order. A place without a folder means
    /// that no folder can be written.
    [[nodiscard]] QList<Place> places(const QStringList &documents) const;

    /// The file's name without its last extension; a name without a point stays whole.
    [[nodiscard]] static QString baseOf(const QString &file);

    /// The candidates for a file name with a hidden extension, the best first: "x.ps~",
    /// "x.ps2~", … @param number from 0.
    [[nodiscard]] static QString hiddenName(const QString &folder, const QString &base,
                                            const QString &extension, int number);

    /// The first of these names under which nothing is, for an output that does not exist.
    [[nodiscard]] static QString missingName(const QString &folder, const QString &base,
                                             const QString &extension);

private:
    [[nodiscard]] QString writableFolder(const QString &folder) const;
    [[nodiscard]] Place freePlace(const QString &document, const QSet<QString> &taken) const;

    QStringList m_fallbackFolders;
    mutable QHash<QString, QString> m_writable;
};

} // namespace Quorlin
