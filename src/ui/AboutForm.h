#pragma once

#include "ui/SkinnedWindow.h"

class QLabel;

namespace Quorlin {

class KelLabel;
class SkinLook;
class TextSource;

/// The about box's controls under their names, without what they do.
class AboutForm : public SkinnedWindow
{
    Q_OBJECT

public:
    explicit AboutForm(QWidget *parent = nullptr);

    /// Colours and fonts for all controls.
    void setLook(const SkinLook &look);
    /// Captions in the language in use.
    /// @param version three numbers joined by points.
    void setTexts(const TextSource &texts, const QString &version);

    QLabel *imgAboutIcon;
    KelLabel *lblAboutTitle;
    KelLabel *lblAboutClose;
    KelLabel *lblProductName;
    KelLabel *lblCopyright;
    QLabel *immAdobeLogo;
    KelLabel *lblAdobeTitle;
    KelLabel *lblAdobeInfo;
    KelLabel *lblAdobeCopyright;

private:
    KelLabel *makeLabel(const char *name);
    QLabel *makePicture(const char *name, const char *resource, const QSize &size);
};

} // namespace Quorlin
