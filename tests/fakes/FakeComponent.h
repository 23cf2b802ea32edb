#pragma once

#include "fakes/FakeRequests.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// A component that converts nothing but speaks the pipe's language and misbehaves on request.
///
/// What it writes are small files that hold their input's bytes, so that order and origin can
/// be checked. It removes what it made by the same rules as the real one.
///
/// Words in a document's base name:
///   fail           fails in the first step that sees it; protected, damaged: with that reason
///   because-X-     fails in the step `print` with the reason X; later-X-: in `distil`
///   undistillable  fails in the step `distil`
///   unmergeable    fails the step `merge`
///   missing        its output is named, but not written, and no failure is reported
///   dawdle         takes ten seconds, or until end-of-file
///   die            the process ends at once when it comes to it, in the step `print`
///   perish         the same in the step `distil`
///
/// Words in QUORLIN_FAKE, separated by ",":
///   version        greets with a version that nobody knows
///   mute           never greets      absent    ends before it greets
///   garbage        lines that are no messages between the reports
///   overlong       a line over the limit before the first report
///   split          writes byte by byte
///   progress       reports -5 and 250 percent
///   twice          completes every job twice
///   strangers      reports of jobs and documents that nobody asked for
///   refuse         answers a job with an error
///   silent         reports the completion only
///   failall        every document fails
///   deaf           does not end at end-of-file
///   once:FILE      dies on its first job as long as FILE does not exist, and makes it
/// QUORLIN_FAKE_LOG names a file to which "pid" with the process's number, the requests and,
/// at a clean end, "end" are appended.
class FakeComponent
{
public:
    FakeComponent();

    /// @return the exit code of the process.
    int run();

private:
    struct Outcome
    {
        QString reason; ///< empty: it came through
        QString output;
    };

    void handle(const QJsonObject &request);
    void greet();
    void runJob(const QJsonObject &request);
    void misbehaveBefore(int job);
    Outcome convert(const QString &step, const QJsonObject &document);
    Outcome merge(const QJsonArray &documents);
    void report(int job, int index, const QString &step, const Outcome &outcome);
    void complete(int job, bool success, const QStringList &outputs);
    void clear(const QString &step);
    void write(const QString &step, const QString &path, const QByteArray &bytes);
    void removeMade(const QString &path);
    [[nodiscard]] QString reasonFor(const QString &step, const QJsonObject &document) const;
    [[nodiscard]] bool is(const char *word) const;
    void send(const QJsonObject &message);
    void sendBytes(const QByteArray &bytes);
    void note(const QByteArray &line);

    FakeRequests m_requests;
    QStringList m_words;
    QString m_log;
    QHash<QString, QString> m_made; ///< path and the step that wrote it
};

} // namespace Quorlin
