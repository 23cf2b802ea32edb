#pragma once

#include <QtGlobal>

namespace Quorlin {

/// While it lives, a program that cannot reach a display ends with a sentence on standard error and
/// exit code 1. The toolkit alone would abort it. To be made before the application object, and to
/// go when that is made.
class NoDisplay
{
public:
    NoDisplay();
    ~NoDisplay();
    Q_DISABLE_COPY_MOVE(NoDisplay)

private:
    QtMessageHandler m_before;
};

} // namespace Quorlin
