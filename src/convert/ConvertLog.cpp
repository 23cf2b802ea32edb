#include "convert/ConvertLog.h"

namespace Quorlin {

Q_LOGGING_CATEGORY(convertLog, "quorlin.convert", QtWarningMsg)

} // namespace Quorlin
