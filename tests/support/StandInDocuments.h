#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace Quorlin {

class StandInWorker;

/// The three workers' requests, done without any engine.
///
/// A document is text; each line of it may tell a worker what to do:
///   WORKER fail REASON      the request fails
///   WORKER die              the worker's process ends
///   WORKER hang             no answer comes
///   WORKER nothing          says that it is done and writes nothing
///   WORKER half             writes a file that does not end
///   WORKER wait-for FILE    goes on once that file is there
///   WORKER percent N        reports progress
///   pages N                 tells and prints so many pages, one otherwise
///   ps CODE                 goes into the PostScript
/// WORKER is "export", "print" or "merge"; "export-first" counts only for the first try.
class StandInDocuments
{
public:
    explicit StandInDocuments(StandInWorker &worker) : m_worker(worker) {}

    /// @return false when the request is none of the three.
    bool serve(const QJsonObject &request);

private:
    bool obey(const QByteArray &document, const char *word, const QByteArray &made);
    void merge(const QJsonObject &request);
    void write(const QByteArray &bytes) const;

    StandInWorker &m_worker;
    QString m_output;
};

} // namespace Quorlin
