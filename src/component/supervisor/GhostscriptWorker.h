#pragma once

#include "component/protocol/LineBuffer.h"
#include "component/supervisor/Worker.h"

namespace Quorlin {

/// One warm Ghostscript that distils file after file with one job-options file.
///
/// Requests carry "input" and "output", paths inside its place; the answer carries "pages".
/// Serves only PostScript that our own print worker wrote.
class GhostscriptWorker : public Worker
{
    Q_OBJECT

public:
    /// @param optionsFile copied into the worker's place, which holds all files that the process
    /// may touch.
    explicit GhostscriptWorker(const QString &optionsFile, QObject *parent = nullptr);

protected:
    void prepare(QProcess &process) override;
    [[nodiscard]] std::shared_ptr<const Confinement> confinement() const override;
    void started() override;
    void begin() override;
    void read(const QByteArray &bytes) override;
    [[nodiscard]] QString programName() const override;

private:
    void handle(const QByteArray &line);
    void finishDocument();
    [[nodiscard]] QByteArray nextToken();
    [[nodiscard]] QString ownOptions() const;

    QString m_optionsFile;
    LineBuffer m_lines;
    QByteArray m_token;
    QByteArray m_error;
    int m_pages = 0;
};

} // namespace Quorlin
