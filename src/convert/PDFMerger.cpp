#include "convert/PDFMerger.h"

#include "component/protocol/Protocol.h"

namespace Quorlin {

PDFMerger::PDFMerger(ComponentClient &client, QObject *parent)
    : ComponentObject(client, Protocol::Merge, parent)
{
}

QJsonObject PDFMerger::requestMembers() const
{
    return {{QStringLiteral("bookmarks"), m_bookmarkPerDocument}};
}

} // namespace Quorlin
