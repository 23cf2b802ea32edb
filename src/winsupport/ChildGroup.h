#pragma once

#include <QtGlobal>

class QProcess;

namespace Quorlin {

/// A child process together with all that it starts. One source per system stands beside this
/// header.
namespace ChildGroup {

/// Makes a process that is about to be started the leader of a group of its own, with no signal
/// blocked, so that keys pressed in the terminal reach only the program that started it. A
/// process that could not leave the group still starts.
void lead(QProcess &process);

/// Ends a leader's whole group at once. Does nothing when there is none left.
void end(qint64 leader);

} // namespace ChildGroup

} // namespace Quorlin
