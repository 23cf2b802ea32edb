#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// Where the results of one job go and how they are called: for the component, which prints to
/// such names, and for drivers that tell beforehand what will come where.
///
/// The name of a final PDF is that of the printed file with everything from its last point
/// replaced by ".pdf". So the printed file of /d/report.docx is /d/report.ps~, unless the
/// result would take the place of another one of the job or of one of its documents.
class ResultNames
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
    explicit ResultNames(const QStringList &fallbackFolders);

    /// The user's folders for that: the documents folder, then the home folder.
    [[nodiscard]] static QStringList usersFolders();

    /// The places of all documents of a job, in their order. A place without a folder means
    /// that no folder can be written.
    [[nodiscard]] QList<Place> places(const QStringList &documents) const;

    /// The file's name without its last extension; a name without a point stays whole.
    [[nodiscard]] static QString baseOf(const QString &file);

private:
    [[nodiscard]] QString writableFolder(const QString &folder) const;
    [[nodiscard]] Place freePlace(const QString &document, const QSet<QString> &taken) const;

    QStringList m_fallbackFolders;
    mutable QHash<QString, QString> m_writable;
};

} // namespace Quorlin
