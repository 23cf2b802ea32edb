#include "ui/AboutForm.h"

#include "skin/SkinLook.h"
#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/LabelFace.h"
#include "ui/AccessibleNames.h"
#include "ui/FormLook.h"
#include "ui/LogoButton.h"
#include "winsupport/TextSource.h"

#include <QIcon>
#include <QLabel>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr QSize LogoSize(41, 53);
/// Of the maker's logo: its largest and its least side, and the room around it.
constexpr int MakerLogo = 36;
constexpr int LeastMakerLogo = 28;
constexpr int MakerLogoGap = 10;

} // namespace

AboutForm::AboutForm(QWidget *parent) : SkinnedWindow(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    imgAboutIcon = makeIcon("imgAboutIcon");
    lblAboutTitle = makeLabel("lblAboutTitle");
    lblAboutTitle->setAttribute(Qt::WA_TransparentForMouseEvents);
    lblAboutClose = makeLabel("lblAboutClose");
    lblAboutClose->Clickable(true);
    lblProductName = makeLabel("lblProductName");
    lblCopyright = makeLabel("lblCopyright");
    lblCopyright->Alignment(1);
    immAdobeLogo =
        makeLogo("immAdobeLogo", QIcon(QStringLiteral(":/quorlin/library.svg")), LogoSize);
    lblAdobeTitle = makeLabel("lblAdobeTitle");
    lblAdobeInfo = makeLabel("lblAdobeInfo");
    lblAdobeCopyright = makeLabel("lblAdobeCopyright");
    lblAdobeTitle->VerticalAlignment(0);
    for (auto *const label : {lblCopyright, lblAdobeInfo, lblAdobeCopyright}) {
        label->WordWrap(true);
        label->VerticalAlignment(label == lblCopyright ? 2 : 0);
    }
    immMakerLogo = makeLogo("immMakerLogo", QIcon(QStringLiteral(":/quorlin/varnex.svg")),
                            QSize(MakerLogo, MakerLogo));
    makePartner();
    orderTabs();
}

void AboutForm::makePartner()
{
    immPartner = makeLogo("immPartner", {}, QSize(1, 1));
    immPartner->setFocusPolicy(Qt::NoFocus);
    immPartner->hide();
    lblPartner = makeLabel("lblPartner");
    lblPartner->resize(1, 1);
    lblPartner->hide();
}

void AboutForm::orderTabs()
{
    setTabOrder(immMakerLogo, immAdobeLogo);
    setTabOrder(immAdobeLogo, lblAboutClose);
}

KelLabel *AboutForm::makeLabel(const char *name)
{
    auto *const label = new KelLabel(this);
    label->setObjectName(QLatin1String(name));
    label->VerticalAlignment(2);
    return label;
}

QLabel *AboutForm::makeIcon(const char *name)
{
    auto *const picture = new QLabel(this);
    picture->setObjectName(QLatin1String(name));
    picture->setPixmap(QIcon(QStringLiteral(":/quorlin/quorlin.svg")).pixmap(FormLook::IconSize));
    picture->resize(FormLook::IconSize);
    return picture;
}

LogoButton *AboutForm::makeLogo(const char *name, const QIcon &picture, const QSize &size)
{
    auto *const logo = new LogoButton(this);
    logo->setObjectName(QLatin1String(name));
    logo->setIcon(picture);
    logo->resize(size);
    return logo;
}

void AboutForm::setLook(const SkinLook &look, bool isBuiltIn)
{
    FormLook::apply(look, *this);
    if (isBuiltIn)
        Picture(FormLook::design(QStringLiteral("About")));
    for (auto *const label : {lblAboutTitle, lblAboutClose})
        FormLook::applyTitle(look, *label);
    lblAboutTitle->Font(FormLook::font(look, look.titleFontSize(), true));
    lblProductName->Font(FormLook::font(look, look.convertFontSize(), true));
    lblAdobeTitle->Font(FormLook::font(look, look.titleFontSize(), true));
    for (auto *const label :
         {lblProductName, lblCopyright, lblAdobeTitle, lblAdobeInfo, lblAdobeCopyright})
        FormLook::fitText(*label);
    placeMakerLogo();
}

void AboutForm::placeMakerLogo()
{
    const auto &label = *lblCopyright;
    const auto side = std::min(label.height(), MakerLogo);
    const auto face = label.face();
    const auto left =
        label.x() + face.textPosition(face.textBlock().size()).x() - MakerLogoGap - side;
    if (side >= LeastMakerLogo && left >= label.x()) {
        immMakerLogo->setGeometry(left, label.geometry().center().y() - side / 2, side, side);
        return;
    }
    const auto below = label.geometry().bottomRight() + QPoint(1 - MakerLogo, MakerLogoGap / 2);
    const auto last = rect().bottomRight() - QPoint(MakerLogo, MakerLogo);
    immMakerLogo->setGeometry(std::max(0, std::min(below.x(), last.x())),
                              std::max(0, std::min(below.y(), last.y())), MakerLogo, MakerLogo);
}

void AboutForm::setTexts(const TextSource &texts, const QString &language, const QString &version)
{
    const auto &names = AccessibleNames::in(language);
    lblAboutClose->setAccessibleName(names.close);
    immAdobeLogo->setAccessibleName(names.libraryLogo);
    immMakerLogo->setAccessibleName(names.makerLogo);
    const auto text = [&texts](const char *key) { return texts.text(QLatin1String(key)); };
    setWindowTitle(text("AboutTitle"));
    lblAboutTitle->Caption(text("AboutTitle"));
    lblProductName->Caption(text("AppWindowTitle") + QStringLiteral("\r\nVersion ") + version);
    lblCopyright->Caption(text("AboutCopyright") + QStringLiteral("\r\nVarnex Software"));
    lblAdobeTitle->Caption(text("AboutAdobeTitle"));
    lblAdobeInfo->Caption(text("AboutAdobeInformations"));
    lblAdobeCopyright->Caption(text("AboutAdobeTrademarks"));
}

} // namespace Quorlin
