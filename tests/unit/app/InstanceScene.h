#pragma once

#include "app/InstanceChannel.h"
#include "app/RuntimeFolder.h"
#include "support/TestFolder.h"
#include "winsupport/Descriptor.h"

#include <QProcess>

#include <atomic>
#include <memory>
#include <thread>

namespace Quorlin {

/// A process of the helper program, ended with the object.
class Runner
{
public:
    Runner(const QString &folder, const QStringList &arguments);
    ~Runner();
    Runner(const Runner &) = delete;
    Runner &operator=(const Runner &) = delete;

    /// What it has printed so far.
    [[nodiscard]] QStringList lines();
    /// Whether it has printed this line.
    [[nodiscard]] bool has(const char *line) { return lines().contains(QString::fromUtf8(line)); }
    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    [[nodiscard]] qint64 id() const { return m_process.processId(); }
    /// Waits until it prints a line, in UTF-8, and handles events meanwhile.
    [[nodiscard]] bool says(const char *line);
    /// Waits until it ends, and handles events meanwhile. @return true when it ended by itself
    /// with code 0.
    [[nodiscard]] bool endsWell();

    /// Without any chance to clean up; returns when it is gone.
    void kill();
    /// Lets a window close.
    void close() { m_process.closeWriteChannel(); }

private:
    QProcess m_process;
    QByteArray m_output;
};

/// A folder in which instances meet, and what is needed to look at the channel from outside.
class InstanceScene
{
public:
    InstanceScene();

    [[nodiscard]] QString folder() const { return m_folder.path("meeting"); }
    [[nodiscard]] std::unique_ptr<Runner> run(const char *mode, const QString &text = {}) const;

    /// The channel's name in the encoding of file names, short enough for a socket.
    [[nodiscard]] QByteArray socketPath() const;
    /// The file of the mark.
    [[nodiscard]] QString lockPath() const;
    [[nodiscard]] Descriptor connected() const;

private:
    TestFolder m_folder;
    RuntimeFolder m_opened;
};

/// Sends one text from a thread of its own, since the receiver needs this one's event loop.
class SenderThread
{
public:
    SenderThread(const QString &folder, const QString &text);
    ~SenderThread();
    SenderThread(const SenderThread &) = delete;
    SenderThread &operator=(const SenderThread &) = delete;

    /// -1 until it has ended, then 1 when the text was taken and 0 otherwise.
    [[nodiscard]] int result() const { return m_result; }

private:
    std::atomic_int m_result = -1;
    std::thread m_thread;
};

} // namespace Quorlin
