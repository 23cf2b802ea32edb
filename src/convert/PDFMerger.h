#pragma once

#include "convert/ComponentObject.h"

namespace Quorlin {

/// Joins PDF files into one, in the order of the list. After completion every entry's
/// OutputFilename is the one merged file.
class PDFMerger : public ComponentObject
{
    Q_OBJECT
    Q_PROPERTY(bool BookmarkPerDocument READ BookmarkPerDocument WRITE setBookmarkPerDocument)

public:
    /// @param client is not owned and must outlive the object.
    explicit PDFMerger(ComponentClient &client, QObject *parent = nullptr);

    /// The merge switch: each document's bookmarks stand under one entry for the document.
    /// Off by default; used from the next Start on.
    [[nodiscard]] bool BookmarkPerDocument() const { return m_bookmarkPerDocument; }
    void setBookmarkPerDocument(bool on) { m_bookmarkPerDocument = on; }

protected:
    [[nodiscard]] QJsonObject requestMembers() const override;

private:
    bool m_bookmarkPerDocument = false;
};

} // namespace Quorlin
