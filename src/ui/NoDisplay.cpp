#include "ui/NoDisplay.h"

#include <QString>

#include <cstdio>
#include <cstdlib>

namespace Quorlin {

namespace {

constexpr int CannotStart = 1;

/// Only what cannot be helped is fatal while an application object is made: the want of a display.
void tell(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const auto isFatal = type == QtFatalMsg;
    const auto line = isFatal ? QStringLiteral("There is no display that can be reached. "
                                               "quorlin-convert works without one.")
                              : qFormatLogMessage(type, context, text);
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
    if (isFatal)
        std::_Exit(CannotStart);
}

} // namespace

NoDisplay::NoDisplay() : m_before(qInstallMessageHandler(tell)) {}

NoDisplay::~NoDisplay()
{
    qInstallMessageHandler(m_before);
}

} // namespace Quorlin
