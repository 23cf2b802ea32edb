#pragma once

#include <QLoggingCategory>

namespace Quorlin {

/// What the component's client has to say to developers; warnings only, unless switched on.
Q_DECLARE_LOGGING_CATEGORY(convertLog)

} // namespace Quorlin
