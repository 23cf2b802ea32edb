#include "ui/FileList.h"

#include <algorithm>

namespace Quorlin {

FileList::FileList(QWidget *parent) : QListWidget(parent)
{
    // The style draws this frame as the ring of the focus, and nothing otherwise.
    setFrameShape(QFrame::StyledPanel);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
}

void FileList::setBottomRoom(int pixels)
{
    setViewportMargins(0, 0, 0, std::max(pixels, 0));
}

} // namespace Quorlin
