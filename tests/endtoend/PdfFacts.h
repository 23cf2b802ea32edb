#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// A picture in a PDF, as poppler lists it.
struct PdfPicture
{
    int width = 0;      ///< samples
    double density = 0; ///< samples an inch on the page, the larger of the two directions
};

/// What independent tools find in a PDF.
class PdfFacts
{
public:
    explicit PdfFacts(const QString &file);

    /// True when both poppler and qpdf read it without complaint.
    [[nodiscard]] bool opens() const;
    [[nodiscard]] int pages() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString text() const;
    [[nodiscard]] bool hasAllFontsEmbedded() const;
    [[nodiscard]] QList<PdfPicture> pictures() const;

    /// The titles of the bookmarks of the first level.
    [[nodiscard]] QStringList bookmarks() const;
    /// The pages that the bookmarks of the first level lead to, from 1; 0: to none.
    [[nodiscard]] QList<int> bookmarkPages() const;
    /// The number of bookmarks of all levels.
    [[nodiscard]] int bookmarkCount() const;
    /// The addresses that links lead to.
    [[nodiscard]] QStringList addresses() const;
    /// The number of links to places in the document itself.
    [[nodiscard]] int innerLinks() const;
    /// True when something on its pages lets through what lies below.
    [[nodiscard]] bool isTransparent() const;

private:
    [[nodiscard]] QString property(const QString &name) const;
    /// The dictionaries of all objects.
    [[nodiscard]] QList<QJsonObject> dictionaries() const;

    QString m_file;
    QString m_info;
    QJsonObject m_objects;
    bool m_opens = false;
};

} // namespace Quorlin
