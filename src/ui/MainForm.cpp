#include "ui/MainForm.h"

#include "skin/SkinLook.h"
#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"
#include "ui/FormLook.h"
#include "ui/PictureBox.h"
#include "ui/SkinStyle.h"
#include "winsupport/TextSource.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>

namespace Quorlin {

namespace {

/// A control that a skin finds by this name.
template <typename Control>
Control *named(Control *control, const char *name)
{
    control->setObjectName(QLatin1String(name));
    return control;
}

} // namespace

MainForm::MainForm(QWidget *parent) : SkinnedWindow(parent)
{
    setObjectName(QStringLiteral("frmMain"));
    makeTitleBar();
    makeList();
    makeOptions();
    makeWork();
}

KelLabel *MainForm::makeLabel(const char *name, QWidget *parent)
{
    auto *const label = named(new KelLabel(parent ? parent : this), name);
    label->VerticalAlignment(2);
    return label;
}

/// A picture of the skin that can be pressed: the label over it has no text of its own.
KelLabel *MainForm::makeButton(const char *name)
{
    auto *const label = makeLabel(name);
    label->Clickable(true);
    return label;
}

void MainForm::makeTitleBar()
{
    imgIcon = named(new QLabel(this), "imgIcon");
    imgIcon->setPixmap(QIcon(QStringLiteral(":/quorlin/quorlin.svg")).pixmap(FormLook::IconSize));
    imgIcon->resize(FormLook::IconSize);
    imgIcon->setAttribute(Qt::WA_TransparentForMouseEvents);
    lblTitle = makeLabel("lblTitle");
    lblTitle->setAttribute(Qt::WA_TransparentForMouseEvents);
    LblHelp = makeButton("LblHelp");
    LblMin = makeButton("LblMin");
    lblClose = makeButton("lblClose");
}

void MainForm::makeList()
{
    LstFile = named(new QListWidget(this), "LstFile");
    LstFile->setFrameShape(QFrame::NoFrame);
    LstFile->setTextElideMode(Qt::ElideMiddle);
    LstFile->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    LstFile->setUniformItemSizes(true);
    LblFirst = makeButton("LblFirst");
    LblPrevious = makeButton("LblPrevious");
    LblNext = makeButton("LblNext");
    LblLast = makeButton("LblLast");
}

void MainForm::makeOptions()
{
    OptMail = named(new QCheckBox(this), "OptMail");
    LblMail = makeLabel("LblMail");
    OptShow = named(new QCheckBox(this), "OptShow");
    LblShow = makeLabel("LblShow");
    OptLink = named(new QCheckBox(this), "OptLink");
    LblLink = makeLabel("LblLink");
    for (auto *const caption : {LblMail, LblShow, LblLink})
        caption->WordWrap(true);
    LblCompress = makeLabel("LblCompress");
    cmbCompression = named(new QComboBox(this), "cmbCompression");
}

void MainForm::makeWork()
{
    LblConvert = makeButton("LblConvert");
    LblLibConvert = makeLabel("LblLibConvert");
    LblLibConvert->Alignment(2);
    LblLibConvert->setAttribute(Qt::WA_TransparentForMouseEvents);
    BarProgress = named(new KelProgressBar(this), "BarProgress");
    PctInfo = named(new PictureBox(this), "PctInfo");
    LblInfo = makeLabel("LblInfo", PctInfo);
    LblInfo->WordWrap(true);
}

void MainForm::setLook(const SkinLook &look)
{
    FormLook::apply(look, *this);
    const auto colour = [&look](LookColour which) {
        return ColorValue::stored(look.colour(which));
    };
    for (auto *const label : {lblTitle, lblClose, LblHelp, LblMin}) {
        label->TextColor(colour(LookColour::Title));
        label->DisabledTextColor(ColorValue::Computed);
    }
    lblTitle->Font(FormLook::font(look, look.titleFontSize(), true));
    LblInfo->TextColor(colour(LookColour::InfoText));
    LblInfo->Font(FormLook::font(look, look.titleFontSize(), true));
    for (auto *const label : {LblConvert, LblLibConvert}) {
        label->TextColor(colour(LookColour::ConvertText));
        label->DisabledTextColor(ColorValue::Computed);
        label->Font(FormLook::font(look, look.convertFontSize(), true));
    }
    BarProgress->BackColor(colour(LookColour::ProgressBack));
    BarProgress->ScrollColor(colour(LookColour::Progress));
    BarProgress->TextColor(colour(LookColour::ProgressText));
}

void MainForm::setTexts(const TextSource &texts)
{
    const auto text = [&texts](const char *key) { return texts.text(QLatin1String(key)); };
    setWindowTitle(text("AppWindowTitle"));
    lblTitle->Caption(text("AppWindowTitle"));
    LblMail->Caption(text("TextOptMail"));
    LblShow->Caption(text("TextOptShow"));
    LblLink->Caption(text("TextOptLink"));
    LblCompress->Caption(text("TextLblCompress"));
    LblLibConvert->Caption(text("TextBtnConvert"));
    LblInfo->Caption(text("TextInfoInProgress"));
    OptMail->setAccessibleName(text("TextOptMail"));
    OptShow->setAccessibleName(text("TextOptShow"));
    OptLink->setAccessibleName(text("TextOptLink"));
    cmbCompression->setAccessibleName(text("TextLblCompress"));
    LblConvert->setAccessibleName(text("TextBtnConvert"));
    LblFirst->setAccessibleName(text("MenuLstFirst"));
    LblPrevious->setAccessibleName(text("MenuLstPrevious"));
    LblNext->setAccessibleName(text("MenuLstNext"));
    LblLast->setAccessibleName(text("MenuLstLast"));
}

} // namespace Quorlin
