#include "ui/frmAbout.h"

#include "i18n/mdli18n.h"
#include "settings/Registry.h"
#include "skin/AppSkin.h"
#include "skin/controls/KelLabel.h"
#include "ui/LogoButton.h"
#include "ui/mdlPartner.h"
#include "winsupport/NumberedError.h"

#include <QKeyEvent>
#include <QScreen>

#include <algorithm>

namespace Quorlin {

namespace {

bool isNumber(const QString &text)
{
    constexpr qsizetype MostDigits = 5;
    return !text.isEmpty() && text.size() <= MostDigits &&
           std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// Major number, minor number and revision; the program's own where the registry has none.
QString version(Registry &registry)
{
    constexpr qsizetype Numbers = 3;
    const auto value = registry.GetAppData(QStringLiteral("Version"));
    const auto parts = value.split(QLatin1Char('.')).mid(0, Numbers);
    const auto isVersion = parts.size() == Numbers && std::ranges::all_of(parts, isNumber);
    return isVersion ? parts.join(QLatin1Char('.')) : QStringLiteral(QUORLIN_VERSION);
}

void offer(LogoButton &logo, const QString &usualAddress)
{
    if (!usualAddress.isEmpty())
        logo.setCursor(Qt::PointingHandCursor);
}

} // namespace

frmAbout::frmAbout(const Surroundings &surroundings, QWidget *parent)
    : AboutForm(parent), m_language(surroundings.language), m_openLink(surroundings.openLink)
{
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    mdli18n::AdaptFormFonts(*this);
    setTexts(surroundings.texts, m_language, version(surroundings.registry));
    connectLogos();
    connect(lblAboutClose, &KelLabel::Click, this, &QWidget::close);
    lblAboutClose->setFocus();
    wearSkin();
    if (parent)
        standOver(*parent->window());
}

frmAbout::~frmAbout()
{
    AppSkin::SetWindow(SkinForm::About, {});
}

void frmAbout::connectLogos()
{
    const auto usual = QStringLiteral("default");
    offer(*immAdobeLogo, mdlPartner::GetAdobeLink(usual));
    offer(*immMakerLogo, mdlPartner::GetMakerLink(usual));
    connect(immAdobeLogo, &LogoButton::clicked, this,
            [this] { open(mdlPartner::GetAdobeLink(m_language)); });
    connect(immMakerLogo, &LogoButton::clicked, this,
            [this] { open(mdlPartner::GetMakerLink(m_language)); });
    // A place kept for a partner, who has no page.
    connect(immPartner, &LogoButton::clicked, this, [this] { open({}); });
    connect(lblPartner, &KelLabel::Click, this, [this] { open({}); });
}

void frmAbout::open(const QString &address)
{
    if (!address.isEmpty() && m_openLink)
        m_openLink(address);
}

void frmAbout::wearSkin()
{
    AppSkin::SetWindow(SkinForm::About, m_skinWindow);
    try {
        AppSkin::ApplySkinTo(SkinForm::About, 0);
    } catch (const NumberedError &error) {
        // What was placed before stays; nothing is told.
        qWarning("about box: %s", error.what());
    }
    setLook(AppSkin::GetLook(), AppSkin::GetSkinName() == QLatin1String("None"));
}

void frmAbout::standOver(const QWidget &owner)
{
    const auto screen = owner.screen()->availableGeometry();
    const auto place = owner.geometry().center() - rect().center();
    const auto last = screen.bottomRight() - rect().bottomRight();
    move(std::max(screen.left(), std::min(place.x(), last.x())),
         std::max(screen.top(), std::min(place.y(), last.y())));
}

void frmAbout::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        AboutForm::keyPressEvent(event);
}

} // namespace Quorlin
