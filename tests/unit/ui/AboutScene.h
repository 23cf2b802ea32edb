#pragma once

#include "i18n/AppTextSource.h"
#include "settings/Registry.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"
#include "ui/frmAbout.h"

#include <QStringList>

#include <memory>

namespace Quorlin {

/// A program around the about box: English texts and the skin "Varnex", an empty registry of its
/// own, pages for all links that it writes down instead of opening them.
class AboutScene
{
public:
    AboutScene();
    ~AboutScene();
    AboutScene(const AboutScene &) = delete;
    AboutScene &operator=(const AboutScene &) = delete;

    /// The about box, shown and active.
    [[nodiscard]] std::unique_ptr<frmAbout>
    opened(const QString &language = QStringLiteral("english"), QWidget *owner = nullptr);

    /// Writes the settings of all links but those whose name begins so, and reads them.
    void writeLinks(const QByteArray &without = {}) const;

    [[nodiscard]] Registry &registry() { return *m_registry; }
    /// The addresses that were to be opened.
    [[nodiscard]] const QStringList &pages() const { return m_pages; }

private:
    TestFolder m_folder;
    KeptMessages m_messages;
    AppTextSource m_texts;
    std::unique_ptr<Registry> m_registry;
    QStringList m_pages;
};

} // namespace Quorlin
