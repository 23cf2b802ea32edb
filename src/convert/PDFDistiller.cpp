#include "convert/PDFDistiller.h"

#include "component/protocol/Protocol.h"

namespace Quorlin {

PDFDistiller::PDFDistiller(ComponentClient &client, QObject *parent)
    : ComponentObject(client, Protocol::Distil, parent)
{
}

QJsonObject PDFDistiller::documentMembers(const DocumentEntry &entry) const
{
    auto members = ComponentObject::documentMembers(entry);
    members.insert(QStringLiteral("options"), entry.text3());
    return members;
}

} // namespace Quorlin
