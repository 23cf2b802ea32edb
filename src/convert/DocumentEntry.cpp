#include "convert/DocumentEntry.h"

namespace Quorlin {

DocumentEntry::DocumentEntry(const QString &filename, const QString &text2, const QString &text3,
                             const QString &text4)
    : m_filename(filename), m_text2(text2), m_text3(text3), m_text4(text4)
{
}

} // namespace Quorlin
