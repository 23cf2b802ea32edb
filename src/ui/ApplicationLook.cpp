#include "ui/ApplicationLook.h"

#include "skin/SkinLook.h"
#include "ui/FormLook.h"
#include "ui/SkinStyle.h"

#include <QApplication>

namespace Quorlin::ApplicationLook {

void wear(const SkinLook &look)
{
    auto *style = qobject_cast<SkinStyle *>(QApplication::style());
    if (!style) {
        style = new SkinStyle;
        style->setLook(look);
        QApplication::setStyle(style);
    }
    style->setLook(look);
    QApplication::setPalette(SkinStyle::paletteFor(look));
    QApplication::setFont(FormLook::font(look, look.fontSize()));
}

void ensure()
{
    if (!qobject_cast<SkinStyle *>(QApplication::style()))
        wear(SkinLook());
}

} // namespace Quorlin::ApplicationLook
