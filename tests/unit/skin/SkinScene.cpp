#include "SkinScene.h"

#include "ExpectedElements.h"

namespace Quorlin {

QString SkinTexts::text(const QString &key) const
{
    static const QHash<QString, QString> texts{
        {QStringLiteral("ErrorWindowTitle"), QStringLiteral("Error")},
        {QStringLiteral("ErrorSkinNotFound1"), QStringLiteral("Can't load")},
        {QStringLiteral("ErrorSkinNotFound2"), QStringLiteral("skin : files not found or in use")},
        {QStringLiteral("ErrorSkinInvalid1"), QStringLiteral("The skin files")},
        {QStringLiteral("ErrorSkinInvalid2"), QStringLiteral("are corrupted")},
    };
    return texts.value(key);
}

void SkinMessages::show(const QString &text, MessageStyle style, const QString &title)
{
    all.append(QStringLiteral("%1|%2|%3").arg(int(style)).arg(title, text));
    if (whileShown)
        whileShown();
}

SkinScene::SkinScene(PictureLoader pictures)
    : m_engine(m_folder.path(), m_messages, m_texts, std::move(pictures))
{
    m_engine.setWindow(SkinForm::Main, WindowRef(m_main));
    m_engine.setWindow(SkinForm::About, WindowRef(m_about));
}

void SkinScene::addSkin(const char *name, const SkinText &text) const
{
    const auto folder = QByteArray("skins/") + name;
    m_folder.write((folder + "/Info.ssk").constData(), text.bytes());
    m_folder.write((folder + "/p.png").constData(), pngOf(12, 9));
}

bool SkinScene::isBuiltIn()
{
    for (const auto &row : ExpectedElement::all()) {
        const QLatin1StringView name(row.name);
        if (const auto *const control = m_engine.objects().control(name)) {
            if (control->X(0) != row.x || control->Y(0) != row.y ||
                control->width(0) != row.width || control->height(0) != row.height ||
                control->visible(0) != row.visible)
                return false;
        } else if (const auto *const form = m_engine.objects().form(name)) {
            if (form->width(0) != row.width || form->height(0) != row.height ||
                !form->picture(0).isEmpty())
                return false;
        } else if (const auto *const picture = m_engine.objects().picture(name)) {
            if (!picture->picture(0).isEmpty())
                return false;
        } else {
            return false;
        }
    }
    const auto zone = m_engine.GetMinimiseZone();
    return m_engine.GetSkinName() == QLatin1StringView("None") && !m_engine.isTextMode() &&
           m_engine.GetSkinPath().isEmpty() && m_engine.GetLook() == SkinLook() && zone &&
           zone->left(0) == 360 && zone->right(0) == 378;
}

void SkinScene::clear()
{
    m_main.clear();
    m_about.clear();
    m_messages.all.clear();
}

} // namespace Quorlin
