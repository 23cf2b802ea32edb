#pragma once

#include "component/protocol/Reason.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace Quorlin {

/// Runs pdftops on a PDF and hands on what it writes, piece by piece. The tool reaches no file but
/// the PDF.
class PdfToPs
{
public:
    /// @return false to stop the tool.
    using Sink = std::function<bool(const QByteArray &piece)>;

    /// @param program path of the tool.
    explicit PdfToPs(QString program = find());

    /// The path of pdftops; empty when PATH has none.
    [[nodiscard]] static QString find();

    /// Blocks until the tool has ended.
    /// @return Reason::None when it ended well and the sink took everything; ProgramMissing,
    /// Damaged, OutOfMemory or EngineFailed otherwise. When the sink stopped it, Cancelled.
    [[nodiscard]] Reason run(const QString &pdf, const Sink &sink);

    /// A sentence about the last failure; empty when the reason says it all.
    [[nodiscard]] const QString &detail() const { return m_detail; }

private:
    QString m_program;
    QString m_detail;
};

} // namespace Quorlin
