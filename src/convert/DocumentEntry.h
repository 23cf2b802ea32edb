#pragma once

#include "component/protocol/Reason.h"

#include <QString>

namespace Quorlin {

/// One entry of a document list: a plain value, as it was when it was asked for.
class DocumentEntry
{
public:
    DocumentEntry() = default;
    DocumentEntry(const QString &filename, const QString &text2, const QString &text3,
                  const QString &text4);

    /// The input file as it was added.
    [[nodiscard]] QString Filename() const { return m_filename; }

    /// The file that the object made of it; valid after completion, empty before. It does not
    /// exist when the document failed.
    [[nodiscard]] QString OutputFilename() const { return m_outputFilename; }

    /// The three further texts of Add. Only the third argument has a meaning, and only for
    /// PDFDistiller: the job-options file.
    [[nodiscard]] QString text2() const { return m_text2; }
    [[nodiscard]] QString text3() const { return m_text3; }
    [[nodiscard]] QString text4() const { return m_text4; }

    /// Why there is no output; None as long as the component has not said that it failed.
    [[nodiscard]] Reason failure() const { return m_failure; }

    /// In English, what the component said beyond the reason; mostly empty.
    [[nodiscard]] QString failureDetail() const { return m_failureDetail; }

    void setFailure(Reason reason, const QString &detail)
    {
        m_failure = reason;
        m_failureDetail = detail;
    }

    void setOutputFilename(const QString &filename) { m_outputFilename = filename; }

private:
    QString m_filename;
    QString m_text2;
    QString m_text3;
    QString m_text4;
    QString m_outputFilename;
    Reason m_failure = Reason::None;
    QString m_failureDetail;
};

} // namespace Quorlin
