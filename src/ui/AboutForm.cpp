#include "ui/AboutForm.h"

#include "skin/SkinLook.h"
#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "ui/AccessibleNames.h"
#include "ui/FormLook.h"
#include "winsupport/TextSource.h"

#include <QIcon>
#include <QLabel>

namespace Quorlin {

namespace {

constexpr QSize LogoSize(41, 53);

} // namespace

AboutForm::AboutForm(QWidget *parent) : SkinnedWindow(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    imgAboutIcon = makePicture("imgAboutIcon", ":/quorlin/quorlin.svg", FormLook::IconSize);
    lblAboutTitle = makeLabel("lblAboutTitle");
    lblAboutTitle->setAttribute(Qt::WA_TransparentForMouseEvents);
    lblAboutClose = makeLabel("lblAboutClose");
    lblAboutClose->Clickable(true);
    lblProductName = makeLabel("lblProductName");
    lblCopyright = makeLabel("lblCopyright");
    lblCopyright->Alignment(1);
    immAdobeLogo = makePicture("immAdobeLogo", ":/quorlin/library.svg", LogoSize);
    immAdobeLogo->setAlignment(Qt::AlignCenter);
    lblAdobeTitle = makeLabel("lblAdobeTitle");
    lblAdobeInfo = makeLabel("lblAdobeInfo");
    lblAdobeCopyright = makeLabel("lblAdobeCopyright");
    lblAdobeTitle->VerticalAlignment(0);
    for (auto *const label : {lblCopyright, lblAdobeInfo, lblAdobeCopyright}) {
        label->WordWrap(true);
        label->VerticalAlignment(label == lblCopyright ? 2 : 0);
    }
}

KelLabel *AboutForm::makeLabel(const char *name)
{
    auto *const label = new KelLabel(this);
    label->setObjectName(QLatin1String(name));
    label->VerticalAlignment(2);
    return label;
}

QLabel *AboutForm::makePicture(const char *name, const char *resource, const QSize &size)
{
    auto *const picture = new QLabel(this);
    picture->setObjectName(QLatin1String(name));
    picture->setPixmap(QIcon(QLatin1String(resource)).pixmap(size));
    picture->resize(size);
    return picture;
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
}

void AboutForm::setTexts(const TextSource &texts, const QString &language, const QString &version)
{
    lblAboutClose->setAccessibleName(AccessibleNames::in(language).close);
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
