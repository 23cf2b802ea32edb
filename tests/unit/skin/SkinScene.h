#pragma once

#include "RecordedWindow.h"
#include "SkinText.h"
#include "skin/SkinEngine.h"
#include "support/TestFolder.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <functional>

namespace Quorlin {

/// Gives the English texts.
class SkinTexts : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override;
};

/// Writes messages down: "STYLE|TITLE|TEXT".
class SkinMessages : public MessageService
{
public:
    void show(const QString &text, MessageStyle style, const QString &title) override;

    QStringList all;
    /// Called while a message is on the screen.
    std::function<void()> whileShown;
};

/// An application folder of its own with a skin engine and both windows.
class SkinScene
{
public:
    explicit SkinScene(PictureLoader pictures = PictureLoader());

    /// Writes a whole skin with its picture "p.png".
    void addSkin(const char *name, const SkinText &text = {}) const;

    [[nodiscard]] const TestFolder &folder() const { return m_folder; }
    [[nodiscard]] SkinEngine &engine() { return m_engine; }
    [[nodiscard]] RecordedWindow &main() { return m_main; }
    [[nodiscard]] RecordedWindow &about() { return m_about; }
    [[nodiscard]] SkinMessages &messages() { return m_messages; }

    /// True when every Classic value, the look, the zone that minimises and the skin's name are
    /// those of the built-in layout.
    [[nodiscard]] bool isBuiltIn();

    /// What was done to both windows since they were made or cleared.
    [[nodiscard]] QStringList record() const { return m_main.record() + m_about.record(); }
    void clear();

private:
    TestFolder m_folder;
    SkinTexts m_texts;
    SkinMessages m_messages;
    RecordedWindow m_main;
    RecordedWindow m_about;
    SkinEngine m_engine;
};

} // namespace Quorlin
