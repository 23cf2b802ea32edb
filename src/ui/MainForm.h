#pragma once

#include "ui/SkinnedWindow.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;

namespace Quorlin {

class KelLabel;
class KelProgressBar;
class PictureBox;
class SkinLook;
class TextSource;

/// The main window's controls under their names, without what they do. A skin places them, a
/// look colours them, a language labels them.
class MainForm : public SkinnedWindow
{
    Q_OBJECT

public:
    explicit MainForm(QWidget *parent = nullptr);

    /// Colours and fonts for all controls.
    void setLook(const SkinLook &look);
    /// Captions, and the names that assistive tools read.
    void setTexts(const TextSource &texts);

    QLabel *imgIcon;
    KelLabel *lblTitle;
    KelLabel *lblClose;
    KelLabel *LblHelp;
    KelLabel *LblMin;
    QListWidget *LstFile;
    KelLabel *LblFirst;
    KelLabel *LblPrevious;
    KelLabel *LblNext;
    KelLabel *LblLast;
    QCheckBox *OptMail;
    KelLabel *LblMail;
    QCheckBox *OptShow;
    KelLabel *LblShow;
    QCheckBox *OptLink;
    KelLabel *LblLink;
    KelLabel *LblCompress;
    QComboBox *cmbCompression;
    KelLabel *LblConvert;
    KelLabel *LblLibConvert;
    KelProgressBar *BarProgress;
    PictureBox *PctInfo;
    KelLabel *LblInfo;

private:
    void makeTitleBar();
    void makeList();
    void makeOptions();
    void makeWork();
    KelLabel *makeLabel(const char *name, QWidget *parent = nullptr);
    KelLabel *makeButton(const char *name);
};

} // namespace Quorlin
