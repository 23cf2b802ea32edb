#include "convert/PDFLib.h"

#include "component/protocol/Protocol.h"

namespace Quorlin {

PDFLib::PDFLib(ComponentClient &client, QObject *parent)
    : ComponentObject(client, Protocol::Print, parent), m_printerName(QStringLiteral("Varnex PDF"))
{
}

bool PDFLib::acceptsFile(const QString &filePath)
{
    const auto refusal = refusalOf(filePath);
    if (refusal.code() == 0)
        return true;
    m_lastRefusal = refusal;
    return false;
}

Refusal PDFLib::refusalOf(const QString &filePath)
{
    return Refusal(Acceptance::refusalOf(filePath));
}

QStringList PDFLib::extensions(Family family)
{
    return Acceptance::extensions(family);
}

QJsonObject PDFLib::requestMembers() const
{
    return {{QStringLiteral("printer"), m_printerName}};
}

void PDFLib::outputKnown(qint32 index, const QString &filename)
{
    auto name = filename;
    Q_EMIT OnOutputFilename(index, name);
}

} // namespace Quorlin
