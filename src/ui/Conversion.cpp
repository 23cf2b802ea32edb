#include "ui/Conversion.h"

#include <QDebug>
#include <QFileInfo>

namespace Quorlin {

bool Conversion::canBeMade(const ComponentSettings &component)
{
    const QFileInfo program(component.program);
    return program.isFile() && program.isExecutable();
}

Conversion::Conversion(const ComponentSettings &component, const ConversionSettings &settings,
                       const Surroundings &surroundings)
    : m_client(component), m_lib(m_client), m_distiller(m_client), m_merger(m_client),
      m_delivery(
          [this](const QString &source, const QString &destination) {
              return pCopyFile.CopyFile(source, destination, true, true);
          },
          surroundings.openResult, surroundings.messages, surroundings.texts,
          &surroundings.reasons),
      m_driver({m_lib, m_distiller, m_merger, surroundings.window, surroundings.messages,
                surroundings.texts, m_delivery, &surroundings.reasons},
               settings)
{
    QObject::connect(&m_client, &ComponentClient::noticed, &m_client,
                     [](const QString &text) { qWarning().noquote() << text; });
}

} // namespace Quorlin
