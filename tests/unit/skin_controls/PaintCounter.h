#pragma once

#include <QObject>

class QWidget;

namespace Quorlin {

/// Shows a widget and counts its paint events, and those of all widgets inside it.
class PaintCounter : public QObject
{
    Q_OBJECT

public:
    explicit PaintCounter(QWidget &widget);

    /// Paint events since the last call, after everything asked for was painted.
    [[nodiscard]] int take();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int m_count = 0;
};

} // namespace Quorlin
