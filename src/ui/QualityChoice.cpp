#include "ui/QualityChoice.h"

#include <QComboBox>

namespace Quorlin {

int QualityChoice::position() const
{
    return m_box.currentIndex();
}

void QualityChoice::select(int position)
{
    m_box.setCurrentIndex(position);
}

void QualityChoice::clear()
{
    m_box.clear();
}

/// A box of its own accord selects its first entry.
void QualityChoice::add(const QString &label)
{
    const auto selected = m_box.currentIndex();
    m_box.addItem(label);
    m_box.setCurrentIndex(selected);
}

} // namespace Quorlin
