#include "ui/FileItem.h"

#include <QDir>
#include <QTextDocument>

#include <algorithm>

namespace Quorlin {

namespace {

/// A path with "<" in it must not be shown as the page that it looks like.
QString plain(const QString &text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped())
                                     : text;
}

} // namespace

QString FileItem::nameOf(const QString &fullPath)
{
    const auto last =
        std::max(fullPath.lastIndexOf(QLatin1Char('\\')), fullPath.lastIndexOf(QDir::separator()));
    return fullPath.sliced(last + 1);
}

QVariant FileItem::data(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return nameOf(m_fullPath);
    case Qt::ToolTipRole:
        return plain(m_fullPath);
    case Qt::AccessibleDescriptionRole:
        return m_fullPath;
    default:
        return QListWidgetItem::data(role);
    }
}

} // namespace Quorlin
