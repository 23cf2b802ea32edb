#include "convert/clsJobOptions.h"

namespace Quorlin {

clsJobOptions::clsJobOptions(const QString &name, const QString &Filename)
    : m_name(name), m_filename(Filename)
{
}

} // namespace Quorlin
