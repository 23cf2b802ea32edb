#include "ui/MainForm.h"

#include "skin/SkinLook.h"
#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"
#include "ui/AccessibleNames.h"
#include "ui/FileList.h"
#include "ui/FormLook.h"
#include "ui/PictureBox.h"
#include "ui/SkinStyle.h"
#include "winsupport/TextSource.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QCursor>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace Quorlin {

namespace {

/// A control that a skin finds by this name.
template <typename Control>
Control *named(Control *control, const char *name)
{
    control->setObjectName(QLatin1String(name));
    return control;
}

/// While its list is open, a choice is not told that the mouse has gone.
void leaveIfLeft(QWidget &control)
{
    if (control.rect().contains(control.mapFromGlobal(QCursor::pos())))
        return;
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&control, &leave);
}

} // namespace

MainForm::MainForm(QWidget *parent) : SkinnedWindow(parent)
{
    setObjectName(QStringLiteral("frmMain"));
    makeTitleBar();
    makeList();
    makeOptions();
    makeWork();
    orderTabs();
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
    LstFile = named(new FileList(this), "LstFile");
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
    connect(cmbCompression, &QComboBox::activated, this, [this] {
        QTimer::singleShot(0, cmbCompression, [this] { leaveIfLeft(*cmbCompression); });
    });
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

/// The list comes first, what ends the work last.
void MainForm::orderTabs()
{
    const QList<QWidget *> order{
        LstFile, LstFile->addButton(), LblFirst,   LblPrevious, LblNext, LblLast, OptMail, OptShow,
        OptLink, cmbCompression,       LblConvert, LblHelp,     LblMin,  lblClose};
    for (qsizetype at = 1; at < order.size(); ++at)
        setTabOrder(order.at(at - 1), order.at(at));
    LstFile->setFocus();
}

void MainForm::setLook(const SkinLook &look, bool isBuiltIn)
{
    FormLook::apply(look, *this);
    if (isBuiltIn) {
        Picture(FormLook::design(QStringLiteral("Main")));
        PctInfo->Picture(FormLook::design(QStringLiteral("Info")));
    }
    setTitleLook(look);
    setWorkLook(look);
    for (auto *const label : {LblMail, LblShow, LblLink, LblCompress, LblLibConvert})
        FormLook::fitText(*label);
    setInfo(LblInfo->Caption());
    FormLook::fitChoice(*cmbCompression);
    // The built-in layout puts the first option over the list's lower edge.
    LstFile->setBottomRoom(isBuiltIn ? LstFile->geometry().bottom() - OptMail->y() + 4 : 0);
}

void MainForm::setInfo(const QString &text)
{
    LblInfo->Font(m_infoFont);
    LblInfo->Caption(text);
    FormLook::fitText(*LblInfo);
}

void MainForm::setTitleLook(const SkinLook &look)
{
    for (auto *const label : {lblTitle, lblClose, LblHelp, LblMin})
        FormLook::applyTitle(look, *label);
    lblTitle->Font(FormLook::font(look, look.titleFontSize(), true));
}

void MainForm::setWorkLook(const SkinLook &look)
{
    const auto colour = [&look](LookColour which) {
        return ColorValue::stored(look.colour(which));
    };
    LblInfo->TextColor(colour(LookColour::InfoText));
    m_infoFont = FormLook::font(look, look.titleFontSize(), true);
    for (auto *const label : {LblConvert, LblLibConvert}) {
        label->TextColor(colour(LookColour::ConvertText));
        label->FocusColor(ColorValue::Computed);
        label->Font(FormLook::font(look, look.convertFontSize(), true));
    }
    BarProgress->BackColor(colour(LookColour::ProgressBack));
    BarProgress->ScrollColor(colour(LookColour::Progress));
    BarProgress->TextColor(colour(LookColour::ProgressText));
    BarProgress->DoneTextColor(colour(LookColour::ProgressDoneText));
}

void MainForm::setTexts(const TextSource &texts, const QString &language)
{
    const auto text = [&texts](const char *key) { return texts.text(QLatin1String(key)); };
    setWindowTitle(text("AppWindowTitle"));
    lblTitle->Caption(text("AppWindowTitle"));
    LblMail->Caption(text("TextOptMail"));
    LblShow->Caption(text("TextOptShow"));
    LblLink->Caption(text("TextOptLink"));
    LblCompress->Caption(text("TextLblCompress"));
    LblLibConvert->Caption(text("TextBtnConvert"));
    setInfo(text("TextInfoInProgress"));
    const auto &names = AccessibleNames::in(language);
    lblClose->setAccessibleName(names.close);
    LblHelp->setAccessibleName(names.help);
    LblMin->setAccessibleName(names.minimise);
    LstFile->setAccessibleName(names.documents);
    BarProgress->setAccessibleName(names.progress);
    OptMail->setAccessibleName(text("TextOptMail"));
    OptShow->setAccessibleName(text("TextOptShow"));
    OptLink->setAccessibleName(text("TextOptLink"));
    LstFile->addButton()->setText(
        text("MenuLstAdd").replace(QLatin1Char('&'), QLatin1String("&&")));
    // As its name, assistive tools are told the choice.
    cmbCompression->setAccessibleDescription(text("TextLblCompress"));
    LblConvert->setAccessibleName(text("TextBtnConvert"));
    LblFirst->setAccessibleName(text("MenuLstFirst"));
    LblPrevious->setAccessibleName(text("MenuLstPrevious"));
    LblNext->setAccessibleName(text("MenuLstNext"));
    LblLast->setAccessibleName(text("MenuLstLast"));
}

} // namespace Quorlin
