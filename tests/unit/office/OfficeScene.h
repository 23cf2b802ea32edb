#pragma once

#include "support/TestFolder.h"

#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>

namespace Quorlin {

/// A running office worker with folders of its own.
class OfficeScene
{
public:
    OfficeScene();
    /// Closes the worker's input and waits for its end.
    ~OfficeScene();
    OfficeScene(const OfficeScene &) = delete;
    OfficeScene &operator=(const OfficeScene &) = delete;

    /// Starts the worker and returns its greeting.
    QJsonObject start(const QProcessEnvironment &environment = {});

    /// Starts it as the child of another process, which worker() then is.
    QJsonObject startBelowAnother();

    /// Exports a file of documents() to output() and returns the last answer.
    QJsonObject exportFile(const QString &path, bool plain = false);
    /// Sends a request without waiting for anything.
    void send(const QJsonObject &request);
    void sendExport(const QString &path, bool plain = false);
    /// The next message; empty when the worker has ended or is silent for too long.
    QJsonObject read();
    /// The next message that is no progress.
    QJsonObject readAnswer();
    [[nodiscard]] const QList<int> &progress() const { return m_progress; }

    [[nodiscard]] bool waitForEnd();
    [[nodiscard]] QProcess &worker() { return m_worker; }
    [[nodiscard]] qint64 engineId() const { return m_engine; }
    [[nodiscard]] const TestFolder &documents() const { return m_documents; }
    [[nodiscard]] const TestFolder &work() const { return m_work; }
    [[nodiscard]] QString output() const { return m_documents.path("out.pdf"); }

private:
    QJsonObject launch(const QString &program, const QStringList &arguments);

    TestFolder m_work;
    TestFolder m_documents{m_work.path()}; ///< where the worker reaches them
    QProcess m_worker;
    qint64 m_engine = 0;
    int m_id = 0;
    QList<int> m_progress;
};

} // namespace Quorlin
