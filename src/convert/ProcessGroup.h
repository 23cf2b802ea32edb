#pragma once

class QProcess;

namespace Quorlin {

/// Lets a process that is about to be started lead a process group of its own, with no signal
/// blocked, so that keys pressed in the terminal (interrupt, quit) reach only the program that
/// started it. Cannot fail visibly: a process that could not leave the group still starts.
///
/// One source per system stands beside this header.
void leadOwnProcessGroup(QProcess &process);

} // namespace Quorlin
