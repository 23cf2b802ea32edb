#pragma once

#include "LanguageText.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"

#include <memory>

/// An application folder of its own for each test, with the built-in texts in force.
class AppTextScene
{
public:
    void begin();
    void end();

    [[nodiscard]] Quorlin::TestFolder &folder() { return *m_folder; }
    [[nodiscard]] Quorlin::KeptMessages &messages() { return *m_messages; }

    /// Writes a file into the folder of languages. The name is UTF-8.
    void write(const char *name, const QByteArray &bytes);
    void write(const char *name, const LanguageText &text) { write(name, text.bytes()); }
    void load(const char *name);

    /// True when texts, language and qualities are the built-in ones.
    [[nodiscard]] static bool isBuiltIn();
    /// The text of the message, when there was one and it has no icon and the title "Error".
    [[nodiscard]] QString onlyMessage() const;
    /// The messages for the language "fr".
    [[nodiscard]] static QString corrupted();
    [[nodiscard]] static QString notFound();

private:
    std::unique_ptr<Quorlin::TestFolder> m_folder;
    std::unique_ptr<Quorlin::KeptMessages> m_messages;
};
