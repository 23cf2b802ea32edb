#pragma once

#include "convert/CompressionChoice.h"

class QComboBox;

namespace Quorlin {

/// The qualities in a box of choices.
class QualityChoice : public CompressionChoice
{
public:
    /// @param box must outlive the object.
    explicit QualityChoice(QComboBox &box) : m_box(box) {}

    [[nodiscard]] int position() const override;
    void select(int position) override;
    void clear() override;
    void add(const QString &label) override;

private:
    QComboBox &m_box;
};

} // namespace Quorlin
