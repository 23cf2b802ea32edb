#pragma once

#include "component/protocol/LineBuffer.h"
#include "component/supervisor/Worker.h"

#include <QStringList>

namespace Quorlin {

/// A worker that speaks the workers' language: one JSON object a line, a greeting first.
class JsonWorker : public Worker
{
    Q_OBJECT

public:
    /// @param program absolute path. @param arguments before "--work" and the worker's place.
    /// @param name how people know it.
    JsonWorker(const QString &program, const QStringList &arguments, const QString &name,
               QObject *parent = nullptr);

protected:
    void prepare(QProcess &process) override;
    void begin() override;
    void read(const QByteArray &bytes) override;
    [[nodiscard]] QString programName() const override { return m_name; }

private:
    void handle(const QJsonObject &message);
    [[nodiscard]] static WorkerAnswer failureOf(const QJsonObject &message);

    QString m_program;
    QStringList m_arguments;
    QString m_name;
    LineBuffer m_lines;
    int m_nextId = 0;
};

} // namespace Quorlin
