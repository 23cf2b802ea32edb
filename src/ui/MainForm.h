#pragma once

#include "ui/SkinnedWindow.h"

class QCheckBox;
class QComboBox;
class QLabel;

namespace Quorlin {

class FileList;
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

    /// Colours and fonts for all controls; to be called when the skin has placed them and the
    /// texts are set, since texts without room are made smaller.
    /// @param isBuiltIn the layout is the built-in one: the window's own pictures are shown.
    void setLook(const SkinLook &look, bool isBuiltIn);
    /// Captions, and the names that assistive tools read.
    /// @param language name of the language in use.
    void setTexts(const TextSource &texts, const QString &language);
    /// What is being done, in the information zone.
    void setInfo(const QString &text);

    QLabel *imgIcon;
    KelLabel *lblTitle;
    KelLabel *lblClose;
    KelLabel *LblHelp;
    KelLabel *LblMin;
    FileList *LstFile;
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
    QFont m_infoFont;

    void makeTitleBar();
    void makeList();
    void makeOptions();
    void makeWork();
    void orderTabs();
    void setTitleLook(const SkinLook &look);
    void setWorkLook(const SkinLook &look);
    KelLabel *makeLabel(const char *name, QWidget *parent = nullptr);
    KelLabel *makeButton(const char *name);
};

} // namespace Quorlin
