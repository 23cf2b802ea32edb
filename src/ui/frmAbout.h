#pragma once

#include "skin/controls/WidgetSkinWindow.h"
#include "ui/AboutForm.h"

#include <functional>

namespace Quorlin {

class Registry;

/// The about box: the product with its version, the notices of the PDF library, and logos that
/// open web pages. It wears the program's skin, and AppSkin must be in use as long as it lives.
class frmAbout : public AboutForm
{
    Q_OBJECT

public:
    struct Surroundings
    {
        /// Bound to the key of the application.
        Registry &registry;
        const TextSource &texts;
        /// Name of the language in use.
        QString language;
        /// Shows a page; called with addresses that are not empty.
        std::function<void(const QString &address)> openLink;
    };

    /// Reads everything that it shows. It stands over the middle of its owner, which is
    /// its parent.
    explicit frmAbout(const Surroundings &surroundings, QWidget *parent = nullptr);
    ~frmAbout() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void connectLogos();
    void open(const QString &address);
    void wearSkin();
    void standOver(const QWidget &owner);

    QString m_language;
    std::function<void(const QString &address)> m_openLink;
    WidgetSkinWindow m_skinWindow{*this};
};

} // namespace Quorlin
