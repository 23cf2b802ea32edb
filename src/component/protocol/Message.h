#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace Quorlin::Message {

/// One message as one line: compact JSON in UTF-8 with its line feed.
[[nodiscard]] QByteArray encode(const QJsonObject &message);

/// The object of one line, or nothing when the line is not one JSON object.
[[nodiscard]] std::optional<QJsonObject> decode(const QByteArray &line);

} // namespace Quorlin::Message
