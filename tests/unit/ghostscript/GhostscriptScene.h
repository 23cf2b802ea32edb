#pragma once

#include "component/protocol/Reason.h"
#include "support/TestFolder.h"
#include "unit/supervisor/WorkerWatch.h"

#include <QByteArray>
#include <QString>

namespace Quorlin {

/// A distiller's folder with job options and PostScript in it, and one outside of it.
class GhostscriptScene
{
public:
    GhostscriptScene();
    ~GhostscriptScene();
    GhostscriptScene(const GhostscriptScene &) = delete;
    GhostscriptScene &operator=(const GhostscriptScene &) = delete;

    /// Writes a PostScript program and has it distilled.
    [[nodiscard]] WorkerAnswer distil(WorkerWatch &watch, const QByteArray &program,
                                      QJsonObject request = {}, const Limits &limits = {});
    /// As distil(), without waiting.
    void begin(WorkerWatch &watch, const QByteArray &program, const Limits &limits = {});

    /// The bytes of the PDF that distil() made last.
    [[nodiscard]] QByteArray pdf() const { return contentOf(m_output); }
    /// How many pages it has.
    [[nodiscard]] int pages() const;

    /// Lets every Ghostscript that starts from now on write its process number; processId()
    /// waits for it.
    void watchProcesses();
    [[nodiscard]] qint64 processId() const;
    /// Lets no Ghostscript be found from now on.
    void hideProgram();

    TestFolder folder;
    TestFolder outside;
    QString options;

private:
    [[nodiscard]] QJsonObject requestFor(const QByteArray &program);

    QByteArray m_pathBefore;
    QString m_output;
    int m_count = 0;
};

/// A program that prints so many pages.
[[nodiscard]] QByteArray pagesOf(int count);

} // namespace Quorlin
