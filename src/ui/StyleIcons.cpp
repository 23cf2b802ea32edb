#include "ui/StyleIcons.h"

#include "ui/LineIcon.h"

namespace Quorlin::StyleIcons {

namespace {

using Strokes = QList<QPolygonF>;

// On a square of side 1.

Strokes folder(const Strokes &onIt = {})
{
    const QPolygonF outline{{0.1, 0.8},  {0.1, 0.22}, {0.4, 0.22}, {0.5, 0.34},
                            {0.9, 0.34}, {0.9, 0.8},  {0.1, 0.8}};
    return Strokes{outline} + onIt;
}

Strokes page()
{
    return {{{0.22, 0.1}, {0.58, 0.1}, {0.78, 0.3}, {0.78, 0.9}, {0.22, 0.9}, {0.22, 0.1}},
            {{0.57, 0.12}, {0.57, 0.31}, {0.76, 0.31}}};
}

Strokes house()
{
    return {{{0.08, 0.52}, {0.5, 0.14}, {0.92, 0.52}},
            {{0.2, 0.44}, {0.2, 0.86}, {0.8, 0.86}, {0.8, 0.44}},
            {{0.42, 0.86}, {0.42, 0.6}, {0.58, 0.6}, {0.58, 0.86}}};
}

Strokes computer()
{
    return {{{0.08, 0.18}, {0.92, 0.18}, {0.92, 0.68}, {0.08, 0.68}, {0.08, 0.18}},
            {{0.5, 0.7}, {0.5, 0.86}},
            {{0.28, 0.86}, {0.72, 0.86}}};
}

Strokes drive()
{
    return {{{0.08, 0.34}, {0.92, 0.34}, {0.92, 0.72}, {0.08, 0.72}, {0.08, 0.34}},
            {{0.7, 0.53}, {0.78, 0.53}}};
}

Strokes tiles()
{
    Strokes strokes;
    for (const auto x : {0.16, 0.58})
        for (const auto y : {0.16, 0.58})
            strokes.append({{x, y}, {x + 0.26, y}, {x + 0.26, y + 0.26}, {x, y + 0.26}, {x, y}});
    return strokes;
}

Strokes lines()
{
    return {{{0.14, 0.22}, {0.86, 0.22}}, {{0.14, 0.5}, {0.86, 0.5}}, {{0.14, 0.78}, {0.86, 0.78}}};
}

Strokes strokesOf(QStyle::StandardPixmap which)
{
    switch (which) {
    case QStyle::SP_FileDialogBack:
    case QStyle::SP_ArrowBack:
        return {{{0.84, 0.5}, {0.16, 0.5}}, {{0.44, 0.2}, {0.16, 0.5}, {0.44, 0.8}}};
    case QStyle::SP_ArrowForward:
        return {{{0.16, 0.5}, {0.84, 0.5}}, {{0.56, 0.2}, {0.84, 0.5}, {0.56, 0.8}}};
    case QStyle::SP_FileDialogToParent:
        return {{{0.5, 0.86}, {0.5, 0.16}}, {{0.2, 0.44}, {0.5, 0.16}, {0.8, 0.44}}};
    case QStyle::SP_FileDialogNewFolder:
        return folder({{{0.5, 0.46}, {0.5, 0.7}}, {{0.38, 0.58}, {0.62, 0.58}}});
    case QStyle::SP_FileDialogListView:
        return tiles();
    case QStyle::SP_FileDialogDetailedView:
        return lines();
    case QStyle::SP_DirIcon:
    case QStyle::SP_DirOpenIcon:
    case QStyle::SP_DirClosedIcon:
    case QStyle::SP_DirLinkIcon:
        return folder();
    case QStyle::SP_FileIcon:
    case QStyle::SP_FileLinkIcon:
        return page();
    case QStyle::SP_DirHomeIcon:
        return house();
    case QStyle::SP_ComputerIcon:
    case QStyle::SP_DesktopIcon:
        return computer();
    case QStyle::SP_DriveHDIcon:
    case QStyle::SP_DriveNetIcon:
    case QStyle::SP_DriveCDIcon:
    case QStyle::SP_DriveFDIcon:
        return drive();
    case QStyle::SP_DialogCloseButton:
    case QStyle::SP_LineEditClearButton:
        return {{{0.22, 0.22}, {0.78, 0.78}}, {{0.78, 0.22}, {0.22, 0.78}}};
    default:
        return {};
    }
}

/// The sign in the disc of a message's icon; null for what is no such icon.
QChar signOf(QStyle::StandardPixmap which)
{
    switch (which) {
    case QStyle::SP_MessageBoxInformation:
        return QLatin1Char('i');
    case QStyle::SP_MessageBoxQuestion:
        return QLatin1Char('?');
    case QStyle::SP_MessageBoxWarning:
    case QStyle::SP_MessageBoxCritical:
        return QLatin1Char('!');
    default:
        return {};
    }
}

QColor discOf(QStyle::StandardPixmap which, const SkinLook &look)
{
    if (which != QStyle::SP_MessageBoxWarning && which != QStyle::SP_MessageBoxCritical)
        return look.colour(LookColour::Accent);
    return which == QStyle::SP_MessageBoxCritical ? QColor(0xC6, 0x28, 0x28)
                                                  : QColor(0x9A, 0x5B, 0x00);
}

} // namespace

QIcon icon(QStyle::StandardPixmap which, const SkinLook &look)
{
    if (const auto sign = signOf(which); !sign.isNull()) {
        const auto isOwn =
            which == QStyle::SP_MessageBoxWarning || which == QStyle::SP_MessageBoxCritical;
        const auto text = isOwn ? QColor(Qt::white) : look.colour(LookColour::AccentText);
        return QIcon(new LineIcon(sign, discOf(which, look), text));
    }
    const auto isFolder = which == QStyle::SP_DirIcon || which == QStyle::SP_DirOpenIcon ||
                          which == QStyle::SP_DirClosedIcon || which == QStyle::SP_DirLinkIcon;
    const auto strokes = strokesOf(which);
    if (strokes.isEmpty())
        return {};
    const auto colour = look.colour(isFolder ? LookColour::Accent : LookColour::MenuText);
    return QIcon(new LineIcon(strokes, colour, look.colour(LookColour::SelectionText),
                              look.colour(LookColour::DisabledText)));
}

} // namespace Quorlin::StyleIcons
