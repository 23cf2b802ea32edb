#pragma once

#include "component/supervisor/Limits.h"
#include "component/supervisor/Outputs.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Quorlin {

/// One line of the driver, read and checked; docs/component-protocol.md describes the words.
struct ComponentRequest
{
    enum class Kind {
        None,    ///< an empty line
        Refused, ///< makes no sense; complaint says why
        Job,     ///< step, number, documents and what else the step needs
        Clear,   ///< step
        Warm,
    };

    struct Document
    {
        QString file;    ///< absolute path
        QString options; ///< of the distilling step
    };

    Kind kind = Kind::None;
    QString complaint;         ///< for the driver's developers, in English
    std::optional<int> number; ///< the driver's number of the job, when it could be read
    Outputs::Step step = Outputs::Step::Print;
    QList<Document> documents;
    QString printer;
    bool bookmarks = false;
    Limits limits;

    /// @param line without its line end; any bytes.
    [[nodiscard]] static ComponentRequest read(const QByteArray &line);

    [[nodiscard]] QStringList files() const;

private:
    [[nodiscard]] static ComponentRequest refused(const QString &complaint,
                                                  std::optional<int> number = std::nullopt);
    [[nodiscard]] static ComponentRequest readJob(Outputs::Step step, const QJsonObject &request);
    [[nodiscard]] static ComponentRequest readClear(const QJsonObject &request);
};

} // namespace Quorlin
