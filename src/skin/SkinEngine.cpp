#include "skin/SkinEngine.h"

#include "settings/IniFile.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace Quorlin {

namespace {

constexpr qint32 Classic = 0;

QString builtInName()
{
    return QStringLiteral("None");
}

/// The zone that minimises stands beside the help button.
ClickableZone builtInMinimiseZone()
{
    ClickableZone zone;
    zone.SetDefValues(360, 5, 18, 18, true, Classic);
    return zone;
}

/// No folder has a longer name; a setting could hold one that no box can show.
QString shown(const QString &name)
{
    constexpr qsizetype Longest = 255;
    return name.size() > Longest ? name.left(Longest) + QChar(0x2026) : name;
}

/// The message does not say it, and who made the skin wants to know.
void tellWrong(const QString &skin, const SkinElement &element)
{
    const auto *const lacks = element.kind == SkinKind::Picture  ? "its picture"
                              : element.kind == SkinKind::Window ? "its picture or a Classic size"
                                                                 : "a Classic value";
    qWarning("%s/Info.ssk: %s in [%s] lacks %s", qUtf8Printable(shown(skin)), element.name.data(),
             element.section.data(), lacks);
}

} // namespace

SkinEngine::SkinEngine(const QString &applicationFolder, MessageService &messages,
                       const TextSource &texts, PictureLoader pictures)
    : m_folder(applicationFolder), m_messages(messages), m_texts(texts),
      m_pictures(std::move(pictures)), m_objects(*this)
{
    SetDefaultSkin();
}

void SkinEngine::setWindow(SkinForm form, std::optional<WindowRef> window)
{
    m_windows.at(std::size_t(form)) = window;
}

QStringList SkinEngine::GetSkinList() const
{
    return m_folder.names();
}

void SkinEngine::SetSkin(const QString &name)
{
    m_next = name;
    if (m_loading)
        return;
    while (m_next)
        load(*std::exchange(m_next, {}));
}

void SkinEngine::load(const QString &name)
{
    if (GetSkinList().isEmpty() || name.isEmpty() || name == builtInName()) {
        SetDefaultSkin();
    } else {
        // A message and slow pictures let other code run, which must not see half a skin.
        const QScopedValueRollback loading(m_loading, true);
        const auto result = read(name);
        if (result != Result::Loaded) {
            showFailure(result, name);
            SetDefaultSkin();
        }
    }
    ApplySkin(Classic);
}

SkinEngine::Result SkinEngine::read(const QString &name)
{
    IniFile ini;
    if (ini.Load(m_folder.descriptionOf(name)) != 0)
        return Result::NotFound;
    m_path = m_folder.pathOf(name);
    m_name = name;
    if (!readElements(ini))
        return Result::Invalid;
    readMinimiseZone(ini);
    m_look = SkinLook::read(ini);
    return Result::Loaded;
}

bool SkinEngine::readElements(const IniFile &ini)
{
    const auto mode = ini.GetVar(QStringLiteral("TextMode"), QStringLiteral("FormMain"));
    m_textMode = mode == QLatin1StringView("1");
    const auto elements = SkinElement::all();
    const auto wrong = std::ranges::find_if_not(elements, [this, &ini](const auto &element) {
        return (m_textMode && element.skippedInTextMode) || m_objects.read(element, ini);
    });
    if (wrong == elements.end())
        return true;
    tellWrong(m_name, *wrong);
    return false;
}

void SkinEngine::readMinimiseZone(const IniFile &ini)
{
    ClickableZone zone;
    m_minimise.reset();
    if (zone.SetValues(ini, QStringLiteral("Min"), QStringLiteral("FormMain")))
        m_minimise = zone;
}

void SkinEngine::showFailure(Result result, const QString &name)
{
    const auto key = result == Result::NotFound ? QStringLiteral("ErrorSkinNotFound%1")
                                                : QStringLiteral("ErrorSkinInvalid%1");
    m_messages.show(m_texts.text(key.arg(1)) + QLatin1Char(' ') + shown(name) + QLatin1Char(' ') +
                        m_texts.text(key.arg(2)),
                    MessageStyle::Plain, m_texts.text(QStringLiteral("ErrorWindowTitle")));
}

void SkinEngine::SetDefaultSkin()
{
    m_objects.setBuiltIn();
    m_look = {};
    m_minimise = builtInMinimiseZone();
    m_name = builtInName();
    m_path.clear();
    m_textMode = false;
}

void SkinEngine::ApplySkin(qint32 mode)
{
    // Each window is laid out as a whole before the next one.
    apply(SkinForm::Main, mode);
    apply(SkinForm::About, mode);
}

void SkinEngine::ApplySkinTo(SkinForm form, qint32 mode)
{
    apply(form, mode);
}

void SkinEngine::apply(SkinForm form, qint32 mode)
{
    const auto window = m_windows.at(std::size_t(form));
    if (m_loading || !window)
        return;
    for (const auto *const element : SkinElement::inOrderOfApplication()) {
        if (element->form == form)
            m_objects.assign(*element, *window, mode);
    }
}

std::optional<SkinPicture> SkinEngine::loadPicture(const QString &value) const
{
    return m_pictures.load(m_path, value);
}

} // namespace Quorlin
