#pragma once

#include "convert/ComponentSettings.h"
#include "convert/ResultDelivery.h"

#include <QString>

#include <functional>

namespace Quorlin {

class FileDialogs;
class MessageService;
class Registry;
class TextSource;
class WindowServices;

/// What the main window works with; nothing is owned, all must outlive it.
struct MainSurroundings
{
    Registry &registry; ///< bound to the user's key
    MessageService &messages;
    const TextSource &texts;
    FileDialogs &dialogs;
    WindowServices &services;
    QString programFolder;
    ComponentSettings component;
    ResultDelivery::Open openFile;
    std::function<void(const QString &address)> openLink;
};

} // namespace Quorlin
