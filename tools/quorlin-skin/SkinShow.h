#pragma once

#include "i18n/AppTextSource.h"
#include "skin/controls/WidgetSkinWindow.h"
#include "ui/AboutForm.h"
#include "ui/MainForm.h"
#include "winsupport/MessageService.h"

#include <QString>

namespace Quorlin {

/// What to show.
struct SkinShowOptions
{
    QString skin;
    QString language = QStringLiteral("english");
    /// Holds the folders "skins" and "language".
    QString applicationFolder;
    bool isWorking = false;
    bool isEmpty = false;
};

/// Writes the messages of the loaders to standard error, and remembers that there were any.
class StreamMessages : public MessageService
{
public:
    void show(const QString &text, MessageStyle style, const QString &title) override;

    [[nodiscard]] bool hasShown() const { return m_hasShown; }

private:
    bool m_hasShown = false;
};

/// Both windows in a skin, with sample texts.
class SkinShow
{
public:
    explicit SkinShow(const SkinShowOptions &options);
    ~SkinShow();
    SkinShow(const SkinShow &) = delete;
    SkinShow &operator=(const SkinShow &) = delete;

    [[nodiscard]] MainForm &mainWindow() { return m_main; }
    [[nodiscard]] AboutForm &aboutBox() { return m_about; }

    /// Puts both windows into a skin; "None", and what cannot be loaded, is the built-in layout.
    void wear(const QString &skin);

    /// False when the skin or the language could not be loaded.
    [[nodiscard]] bool isComplete() const { return !m_messages.hasShown(); }

private:
    void addDocuments();
    void showWork();

    bool m_isWorking;
    StreamMessages m_messages;
    AppTextSource m_texts;
    MainForm m_main;
    AboutForm m_about;
    WidgetSkinWindow m_mainWindow{m_main};
    WidgetSkinWindow m_aboutBox{m_about};
};

} // namespace Quorlin
