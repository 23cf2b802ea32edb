#pragma once

#include "ui/DocumentIntake.h"

#include <QObject>
#include <QSemaphore>
#include <QStringList>
#include <QTest>

#include <memory>

namespace Quorlin {

/// Keeps what an intake reports.
class KeptDocuments : public QObject
{
public:
    static constexpr int LongestWait = 60'000; // milliseconds

    explicit KeptDocuments(DocumentIntake &intake) : m_intake(intake)
    {
        QObject::connect(&intake, &DocumentIntake::documentsAccepted, this,
                         [this](const QStringList &all) {
                             m_batches.append(all.size());
                             m_documents += all;
                         });
        QObject::connect(&intake, &DocumentIntake::refusedPostScript, this,
                         [this](const QString &path) {
                             m_refused.append(path);
                             m_documents.append(QStringLiteral("refused"));
                         });
        QObject::connect(&intake, &DocumentIntake::idle, this, [this] { ++m_idle; });
    }

    /// @return all documents, once nothing more comes.
    [[nodiscard]] QStringList documents()
    {
        if (!QTest::qWaitFor([this] { return !m_intake.isBusy(); }, LongestWait))
            QTest::qFail("the intake does not end", __FILE__, __LINE__);
        return m_documents;
    }

    [[nodiscard]] const QStringList &refused() const { return m_refused; }
    [[nodiscard]] const QList<qsizetype> &batches() const { return m_batches; }
    [[nodiscard]] int idle() const { return m_idle; }

private:
    DocumentIntake &m_intake;
    QStringList m_documents;
    QStringList m_refused;
    QList<qsizetype> m_batches;
    int m_idle = 0;
};

/// A file system that does not answer until it is let go.
struct Silence
{
    QSemaphore asked;
    QSemaphore answer;
};

inline IntakeWorker::Query silentQuery(const std::shared_ptr<Silence> &silence)
{
    return [silence](const QString &path) {
        if (path.endsWith(QLatin1String("silent.txt"))) {
            silence->asked.release();
            silence->answer.acquire();
        }
        return PDFLib::refusalOf(path);
    };
}

} // namespace Quorlin
