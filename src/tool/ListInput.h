#pragma once

#include <QObject>
#include <QString>

class QSocketNotifier;

namespace Quorlin {

/// Reads a file of any kind, or standard input, from the event loop: nothing blocks, whoever
/// writes at the other end, and however long.
///
/// One source per system stands beside this header.
class ListInput : public QObject
{
    Q_OBJECT

public:
    /// Opens the file; the first signal comes later. @param file "-" is standard input.
    explicit ListInput(const QString &file, QObject *parent = nullptr);
    ~ListInput() override;

    /// Whether a person types what is read.
    [[nodiscard]] bool isTerminal() const;

Q_SIGNALS:
    void arrived(const QByteArray &bytes);

    /// No more comes. @param error empty at the end of the input, else why it cannot be read.
    void ended(const QString &error);

private:
    void readSome();
    void end(int error);

    QSocketNotifier *m_notifier = nullptr;
    int m_descriptor;
    bool m_owned;
};

} // namespace Quorlin
