#pragma once

#include "component/backends/ghostscript/GhostscriptCommand.h"
#include "component/protocol/LineBuffer.h"
#include "component/supervisor/Worker.h"

namespace Quorlin {

/// One Ghostscript process for one file, for PostScript that must not share a process.
///
/// Requests carry "input", "output" and "options", paths inside the task's folder, and
/// "printed" for PostScript that our print worker wrote; the answer carries "pages".
class GhostscriptRun : public Worker
{
    Q_OBJECT

public:
    explicit GhostscriptRun(QObject *parent = nullptr);

    /// Program, folder for temporary files and channels of any Ghostscript process of ours.
    static void prepareProcess(QProcess &process, const QString &folder,
                               const QStringList &arguments);
    /// Keeps such a process inside the folder.
    [[nodiscard]] static std::shared_ptr<const Confinement> confinementIn(const QString &folder);
    /// The path of the program; empty when it is not installed.
    [[nodiscard]] static QString program();
    /// What PostScript's name of an error means for the document.
    [[nodiscard]] static WorkerAnswer failureOf(const QByteArray &errorName);
    /// The same for an error in the job options.
    [[nodiscard]] static WorkerAnswer badOptions(const QByteArray &errorName);
    [[nodiscard]] static QString name();

protected:
    void prepare(QProcess &process) override;
    [[nodiscard]] bool startsWithTask() const override { return true; }
    [[nodiscard]] std::shared_ptr<const Confinement> confinement() const override
    {
        return confinementIn(folder());
    }
    void begin() override {}
    void read(const QByteArray &bytes) override;
    WorkerAnswer exited(int exitCode, QProcess::ExitStatus status) override;
    [[nodiscard]] QString programName() const override { return name(); }

private:
    void handle(const QByteArray &line);
    [[nodiscard]] QString path(QLatin1String key) const;

    LineBuffer m_lines;
    QByteArray m_error;
    bool m_optionsRead = false;
    int m_pages = -1; ///< unknown until told
};

} // namespace Quorlin
