#pragma once

#include "skin/SvgRenderer.h"

#include <QString>

#include <chrono>

namespace Quorlin {

/// Renders drawings in a process of their own, so that none can take more than its time or bring
/// this program down.
class SvgProcess : public SvgRenderer
{
public:
    /// While a window waits for being drawn, there is less time.
    struct Limits
    {
        std::chrono::milliseconds withEvents{10000};
        std::chrono::milliseconds still{2000};
    };

    /// @param program path of quorlin-svg.
    explicit SvgProcess(const QString &program);
    SvgProcess(const QString &program, const Limits &limits);

    [[nodiscard]] QImage render(const QByteArray &svg, const QSize &pixels,
                                Waiting waiting) const override;

private:
    QString m_program;
    Limits m_limits;
};

} // namespace Quorlin
