#pragma once

#include <QString>

#include <memory>

class QTranslator;

namespace Quorlin {

/// The language of what the toolkit itself shows: the buttons of message boxes, the file dialog.
/// English when there is no translation for the language in use. One object for the program,
/// which needs its QCoreApplication.
class DialogLanguage
{
public:
    DialogLanguage();
    ~DialogLanguage();
    DialogLanguage(const DialogLanguage &) = delete;
    DialogLanguage &operator=(const DialogLanguage &) = delete;

    /// @param language name of the language in use; any other than "français" and "deutsch" is
    /// English.
    void set(const QString &language);

private:
    std::unique_ptr<QTranslator> m_translator;
};

} // namespace Quorlin
