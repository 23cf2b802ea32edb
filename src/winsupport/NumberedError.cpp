#include "winsupport/NumberedError.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace Quorlin {

NumberedError::NumberedError(quint32 number, const QString &source, const QString &description)
    : m_number(number), m_source(executableName() + QLatin1Char('.') + source),
      m_description(description), m_what(description.toUtf8())
{
}

QString NumberedError::executableName()
{
    auto name = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    if (name.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive))
        name.chop(4);
    return name;
}

} // namespace Quorlin
