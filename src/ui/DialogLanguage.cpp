#include "ui/DialogLanguage.h"

#include "i18n/LanguageName.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace Quorlin {

namespace {

/// The toolkit's name of its translation; empty for English and for a language of which only its
/// file's name is known.
QString translationFor(const QString &language)
{
    if (language == LanguageName::German)
        return QStringLiteral("qtbase_de");
    return language == LanguageName::French ? QStringLiteral("qtbase_fr") : QString();
}

} // namespace

DialogLanguage::DialogLanguage() = default;

// A translator that is deleted is taken out by itself.
DialogLanguage::~DialogLanguage() = default;

void DialogLanguage::set(const QString &language)
{
    m_translator.reset();
    const auto name = translationFor(language);
    auto translator = std::make_unique<QTranslator>();
    if (name.isEmpty() ||
        !translator->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return;
    m_translator = std::move(translator);
    QCoreApplication::installTranslator(m_translator.get());
}

} // namespace Quorlin
