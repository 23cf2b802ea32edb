#include "component/protocol/Message.h"

#include <QJsonDocument>

namespace Quorlin::Message {

QByteArray encode(const QJsonObject &message)
{
    return QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<QJsonObject> decode(const QByteArray &line)
{
    const auto document = QJsonDocument::fromJson(line);
    if (!document.isObject())
        return std::nullopt;
    return document.object();
}

} // namespace Quorlin::Message
