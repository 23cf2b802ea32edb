#pragma once

#include "convert/ComponentObject.h"

namespace Quorlin {

/// Turns PostScript files into PDF. The third text of Documents.Add is the job-options file.
class PDFDistiller : public ComponentObject
{
    Q_OBJECT

public:
    /// @param client is not owned and must outlive the object.
    explicit PDFDistiller(ComponentClient &client, QObject *parent = nullptr);

protected:
    [[nodiscard]] QJsonObject documentMembers(const DocumentEntry &entry) const override;
};

} // namespace Quorlin
