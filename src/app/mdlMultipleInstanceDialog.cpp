#include "app/mdlMultipleInstanceDialog.h"

#include "app/InstanceChannel.h"
#include "app/TextQueue.h"
#include "app/WindowActivation.h"

#include <QPointer>
#include <QThread>
#include <QTimer>
#include <QWidget>

namespace Quorlin {

namespace {

constexpr int TakeOverMilliseconds = 300;

struct ModuleState
{
    ModuleState();

    std::unique_ptr<InstanceChannel> channel;
    bool isServerFound = false;
    QPointer<QWidget> window;
    /// Belongs to the window, and goes with it.
    QPointer<QTimer> takeOver;
    TextQueue texts;
};

ModuleState &state()
{
    static ModuleState theState;
    return theState;
}

ModuleState::ModuleState()
{
    QObject::connect(&texts, &TextQueue::next, &texts, [](const QString &text) {
        mdlMultipleInstanceDialog::pReceiveMsg(HandoffFrame::ofText(text));
    });
}

InstanceChannel &channel()
{
    if (!state().channel)
        state().channel = std::make_unique<InstanceChannel>();
    return *state().channel;
}

bool warnWithoutChannel(InstanceChannel::Mark mark)
{
    if (mark != InstanceChannel::Mark::None)
        return false;
    qWarning("There is no safe folder in which to meet other instances; "
             "this one runs on its own.");
    return true;
}

/// @return true when there is nothing left to wait for.
bool becomeServer()
{
    const auto mark = channel().claim();
    if (warnWithoutChannel(mark))
        return true;
    return mark == InstanceChannel::Mark::Ours &&
           channel().listen(mdlMultipleInstanceDialog::WindowProc);
}

void waitForMark(QWidget &window)
{
    auto *const timer = new QTimer(&window);
    state().takeOver = timer;
    QObject::connect(timer, &QTimer::timeout, timer, [timer] {
        if (becomeServer())
            timer->stop();
    });
    timer->start(TakeOverMilliseconds);
}

} // namespace

namespace mdlMultipleInstanceDialog {

bool PrevInstance()
{
    const auto mark = channel().claim();
    return !warnWithoutChannel(mark) && mark == InstanceChannel::Mark::Others;
}

void pHook(QWidget *window)
{
    if (window == nullptr || window == state().window)
        return;
    delete state().takeOver;
    state().window = window;
    QObject::connect(window, &QObject::destroyed, [window] {
        if (state().window.isNull() || state().window == window)
            pUnhook();
    });
    if (!becomeServer())
        waitForMark(*window);
}

void pUnhook()
{
    delete state().takeOver;
    state().window.clear();
    state().texts.clear();
    if (state().channel)
        state().channel->giveUp();
}

bool GetServer()
{
    state().isServerFound = false;
    state().isServerFound = channel().isServerThere();
    return state().isServerFound;
}

ServerSearch::Result WaitForServer()
{
    const auto sleep = [](int milliseconds) {
        QThread::msleep(static_cast<unsigned long>(milliseconds));
    };
    return ServerSearch({GetServer, PrevInstance, sleep}).run();
}

void SendData(const QString &text)
{
    if (text.isEmpty() || !state().isServerFound)
        return;
    static_cast<void>(channel().deliver(HandoffFrame::ofText(text)));
    RestoreAndActivate();
}

void RestoreAndActivate()
{
    if (state().isServerFound)
        static_cast<void>(channel().post(HandoffFrame::ofActivation(WindowActivation::ownToken())));
}

void WindowProc(const HandoffFrame &message)
{
    if (message.kind == HandoffFrame::Kind::Text)
        state().texts.add(message.text());
    else if (state().window)
        WindowActivation::restoreAndRaise(*state().window, message.token());
}

void pReceiveMsg(const HandoffFrame &block)
{
    if (state().window)
        QMetaObject::invokeMethod(state().window, "ReceiveMessage", Qt::DirectConnection,
                                  Q_ARG(QString, block.text()));
}

void useFolder(const QString &folder)
{
    pUnhook();
    state().isServerFound = false;
    state().channel = folder.isEmpty() ? nullptr : std::make_unique<InstanceChannel>(folder);
}

} // namespace mdlMultipleInstanceDialog

} // namespace Quorlin
