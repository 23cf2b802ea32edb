#pragma once

#include "ui/SkinnedWindow.h"

class QLabel;

namespace Quorlin {

class KelLabel;
class LogoButton;
class SkinLook;
class TextSource;

/// The about box's controls under their names, without what they do.
class AboutForm : public SkinnedWindow
{
    Q_OBJECT

public:
    explicit AboutForm(QWidget *parent = nullptr);

    /// Captions in the language in use.
    /// @param language name of the language in use.
    /// @param version three numbers joined by points.
    void setTexts(const TextSource &texts, const QString &language, const QString &version);
    /// Colours and fonts for all controls; to be called when the skin has placed them and the
    /// texts are set, since texts without room are made smaller.
    /// @param isBuiltIn the layout is the built-in one: the window's own picture is shown.
    void setLook(const SkinLook &look, bool isBuiltIn);

    QLabel *imgAboutIcon;
    KelLabel *lblAboutTitle;
    KelLabel *lblAboutClose;
    KelLabel *lblProductName;
    KelLabel *lblCopyright;
    LogoButton *immAdobeLogo;
    KelLabel *lblAdobeTitle;
    KelLabel *lblAdobeInfo;
    KelLabel *lblAdobeCopyright;
    /// No skin places it: it stands beside the copyright, or below where that has no room.
    LogoButton *immMakerLogo;
    /// Kept for a partner's logo and name; not shown.
    LogoButton *immPartner;
    KelLabel *lblPartner;

private:
    KelLabel *makeLabel(const char *name);
    QLabel *makeIcon(const char *name);
    LogoButton *makeLogo(const char *name, const QIcon &picture, const QSize &size);
    void makePartner();
    void orderTabs();
    void placeMakerLogo();
};

} // namespace Quorlin
