#pragma once

#include "component/backends/merge/ObjectCopier.h"

#include <QByteArray>
#include <QString>

#include <qpdf/QPDF.hh>

namespace Quorlin {

/// Title, author and the like of the merged document: those of the first input.
///
/// They are written twice, as document information and as XMP metadata, from the same values.
class DocumentInfo
{
public:
    /// Reads the document information; title and author come from the XMP metadata where the
    /// document information lacks them.
    DocumentInfo(SourceDocument &source, ObjectCopier &copier);

    /// Puts both forms into the merged document.
    void write(QPDF &target);

private:
    void readMetadata(QPDFObjectHandle metadata);
    void setIfMissing(const char *key, const QString &value);
    [[nodiscard]] QString text(const char *key);
    [[nodiscard]] QByteArray metadata();

    QPDFObjectHandle m_information;
};

} // namespace Quorlin
