#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

namespace Quorlin {

/// The driver's side of the component's pipe, and the wish of the system that it end.
///
/// Reads standard input without blocking the event loop; writes whole messages to standard
/// output. One source per system stands beside this header.
class RequestReader : public QObject
{
    Q_OBJECT

public:
    explicit RequestReader(QObject *parent = nullptr);
    ~RequestReader() override;

    /// Writes all bytes; a driver that is gone is noticed by the end of the input.
    void write(const QByteArray &bytes);

Q_SIGNALS:
    void arrived(const QByteArray &bytes);
    /// End of the input, or SIGTERM, SIGINT or SIGHUP.
    void ended();

private:
    void readInput();
    void watchSignals();

    QSocketNotifier *m_input;
    QSocketNotifier *m_signals = nullptr;
    int m_output;
};

} // namespace Quorlin
