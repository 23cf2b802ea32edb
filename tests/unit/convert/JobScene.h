#pragma once

#include "convert/ComponentClient.h"
#include "convert/JobDriver.h"
#include "convert/PDFDistiller.h"
#include "convert/PDFLib.h"
#include "convert/PDFMerger.h"
#include "convert/ReasonTexts.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"
#include "unit/convert/KeptWindow.h"
#include "winsupport/TextSource.h"
#include "winsupport/clsKelCopyFile.h"

#include <QObject>

#include <functional>
#include <memory>

namespace Quorlin {

/// Every text is its key, so that messages show which texts they are made of.
class KeyTexts : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override { return key; }
};

/// The driver with a window that keeps what happens to it, and a component that converts nothing
/// but behaves as asked. Tests derive from it.
class JobScene : public QObject
{
protected:
    /// A new world, with a driver in it.
    void prepare();
    void tidyUp();
    /// A new driver in the same world. @param reasons may be null.
    void makeDriver(const ReasonTexts *reasons);

    void start(const QList<QByteArray> &names);
    /// Starts and waits until the window is idle again.
    void run(const QList<QByteArray> &names);
    [[nodiscard]] bool isOver() const;
    /// The texts of all messages, with a complaint before one of a wrong style or title.
    [[nodiscard]] QStringList messages() const;

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<ComponentClient> m_client;
    std::unique_ptr<PDFLib> m_lib;
    std::unique_ptr<PDFDistiller> m_distiller;
    std::unique_ptr<PDFMerger> m_merger;
    std::unique_ptr<clsKelCopyFile> m_copy;
    std::unique_ptr<ResultDelivery> m_delivery;
    std::unique_ptr<JobDriver> m_driver;
    ConversionSettings m_settings;
    KeptWindow m_window;
    KeptMessages m_messages;
    KeyTexts m_texts;
    QStringList m_opened;
    std::function<void()> m_afterCopy;
};

} // namespace Quorlin
