#pragma once

#include "app/HandoffFrame.h"
#include "app/ServerSearch.h"

#include <QString>

class QWidget;

namespace Quorlin {

/// Only one instance works for a user's screen at a time: the one whose main window is marked as
/// the server. Others send it their command text. Belongs to the thread of the windows; nothing
/// here throws, and nothing but SendData() and WaitForServer() waits.
namespace mdlMultipleInstanceDialog {

/// Whether an earlier instance holds the mark. When none does, this process takes it and is the
/// first from now on, also before it has a window. Without a safe place to meet, there is never
/// an earlier instance.
[[nodiscard]] bool PrevInstance();

/// Marks a window as the server and takes the texts that others send. While another instance
/// holds the mark, the window waits for it; it also waits when the system refuses.
/// @param window gets each text through its invokable member `ReceiveMessage(QString)`. Not
/// owned; its end takes the hook away. Null does nothing.
void pHook(QWidget *window);

/// Gives the mark up, so that another window may take it.
void pUnhook();

/// Looks for a server and keeps what it found for SendData(). @return true when there is one. A
/// server that is busy is found too.
[[nodiscard]] bool GetServer();

/// Looks for a server as long as an earlier instance is there, in the rounds of ServerSearch.
[[nodiscard]] ServerSearch::Result WaitForServer();

/// Sends a text to the server that GetServer() found, waits 2000 ms at the most for it to be
/// taken, and brings the server's window to the front in any case. Does nothing for an empty
/// text or without a server.
/// @param text cut to its first 2048 UTF-16 units.
void SendData(const QString &text);

/// Asks the server that GetServer() found to restore its window and bring it to the front.
void RestoreAndActivate();

/// Takes everything that others send: texts go to pReceiveMsg(), one in each turn of the event
/// loop; requests for the window are done at once.
void WindowProc(const HandoffFrame &message);

/// Hands a text on to the marked window, whatever the tag; nothing else is done
/// with it here.
void pReceiveMsg(const HandoffFrame &block);

/// For tests: forgets everything, and meets others in this folder; empty means the user's own.
void useFolder(const QString &folder);

} // namespace mdlMultipleInstanceDialog

} // namespace Quorlin
