#pragma once

#include "skin/MetafileRenderer.h"

#include <QString>

#include <chrono>

namespace Quorlin {

/// Renders metafiles with the office engine at 96 points to the inch. The engine's profile lives as
/// long as the call.
class OfficeMetafiles : public MetafileRenderer
{
public:
    static constexpr std::chrono::milliseconds Limit{30000};

    /// @param program path of soffice; empty means the one of PATH.
    explicit OfficeMetafiles(const QString &program = {}, std::chrono::milliseconds limit = Limit);

    [[nodiscard]] QByteArray render(const QByteArray &content, PictureFormat format) const override;

private:
    QString m_program;
    std::chrono::milliseconds m_limit;
};

} // namespace Quorlin
