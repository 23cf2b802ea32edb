#include "RecordedWindow.h"

#include <QRegularExpression>

namespace Quorlin {

namespace {

QString sizeText(const QSize &size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString textOf(const QVariant &value)
{
    return value.canConvert<SkinPicture>() ? sizeText(value.value<SkinPicture>().logicalSize())
                                           : value.toString();
}

} // namespace

SkinTarget *RecordedWindow::find(QLatin1StringView objectName)
{
    m_target.window = this;
    m_target.name = objectName;
    return m_missing.contains(m_target.name) ? nullptr : &m_target;
}

bool RecordedWindow::Target::set(QLatin1StringView property, const QVariant &value)
{
    return window->note(name + QLatin1Char('.') + property, textOf(value));
}

bool RecordedWindow::setSize(const QSize &pixels)
{
    return note(QStringLiteral("window.size"), sizeText(pixels));
}

bool RecordedWindow::setPicture(const SkinPicture &picture)
{
    return note(QStringLiteral("window.Picture"), sizeText(picture.logicalSize()));
}

bool RecordedWindow::note(const QString &property, const QString &value)
{
    if (m_refused.contains(property))
        return false;
    m_record.append(property + QLatin1Char('=') + value);
    return true;
}

QStringList RecordedWindow::recordOf(const QString &control) const
{
    return m_record.filter(QRegularExpression(QLatin1Char('^') + control + QLatin1String("\\.")));
}

QStringList RecordedWindow::order() const
{
    QStringList names;
    for (const auto &line : m_record) {
        const auto name = line.section(QLatin1Char('.'), 0, 0);
        if (names.isEmpty() || names.last() != name)
            names.append(name);
    }
    return names;
}

} // namespace Quorlin
