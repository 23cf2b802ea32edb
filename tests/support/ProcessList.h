#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace Quorlin {

/// A running process, as the system tells it.
struct RunningProcess
{
    qint64 id = 0;
    qint64 parent = 0;
    QString name;           ///< file name of the program
    QByteArray commandLine; ///< arguments, separated by zero bytes
};

/// Finds the processes of one test among all others by a mark in their environment, which
/// children inherit and keep when their parents die.
namespace ProcessList {

/// Those that run with `name=value` in their environment. One that has ended and was not
/// reaped does not count.
[[nodiscard]] QList<RunningProcess> withVariable(const QByteArray &name, const QByteArray &value);

} // namespace ProcessList

} // namespace Quorlin
