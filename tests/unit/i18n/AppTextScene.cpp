#include "AppTextScene.h"

#include "ExpectedTexts.h"
#include "i18n/AppText.h"

#include <algorithm>

using namespace Quorlin;

void AppTextScene::begin()
{
    m_folder = std::make_unique<TestFolder>();
    m_messages = std::make_unique<KeptMessages>();
    AppText::Initialise(m_folder->path(), *m_messages);
    AppText::LoadDefaultTexts();
}

void AppTextScene::end()
{
    m_folder.reset();
}

void AppTextScene::write(const char *name, const QByteArray &bytes)
{
    m_folder->write((QByteArray("language/") + name).constData(), bytes);
}

void AppTextScene::load(const char *name)
{
    AppText::LoadLanguage(QString::fromUtf8(name));
}

bool AppTextScene::isBuiltIn()
{
    const auto named = [](const char *name) {
        return TextQuality{QString::fromLatin1(name), QString::fromLatin1(name)};
    };
    const QList<TextQuality> qualities{named("Default"), named("Low"), named("Medium"),
                                       named("High")};
    return AppText::GetLanguage() == QStringLiteral("deutsch") &&
           AppText::GetQualityList() == qualities &&
           std::ranges::all_of(expectedTexts(), [](const auto &expected) {
               return AppText::GetText(QString::fromLatin1(expected.key)) ==
                      QString::fromLatin1(expected.builtIn);
           });
}

QString AppTextScene::onlyMessage() const
{
    if (m_messages->all().size() != 1)
        return QStringLiteral("%1 messages").arg(m_messages->all().size());
    const auto &message = m_messages->all().first();
    if (message.style != MessageStyle::Plain)
        return QStringLiteral("an icon");
    return message.title == QStringLiteral("Error") ? message.text : message.title;
}

QString AppTextScene::corrupted()
{
    return QStringLiteral("The language file fr.slg is corrupted");
}

QString AppTextScene::notFound()
{
    return QStringLiteral("Can't load fr language : file not found or in use");
}
