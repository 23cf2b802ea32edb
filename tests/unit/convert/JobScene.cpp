#include "unit/convert/JobScene.h"

#include <QTest>

namespace Quorlin {

void JobScene::prepare()
{
    m_folder = std::make_unique<TestFolder>();
    m_window = {};
    m_messages.clear();
    m_opened.clear();
    m_afterCopy = {};
    m_folder->write("Quorlin.ini", "[Printer]\nName = Test PDF\n[JobOptions]\nLow = l.joboptions\n"
                                   "High = h.joboptions\n");
    m_folder->write("Settings/l.joboptions", "<< >> setdistillerparams");
    m_folder->write("Settings/h.joboptions", "<< >> setdistillerparams");
    m_settings = *ConversionSettings::load(m_folder->path());
    ComponentSettings component;
    component.program = QStringLiteral(QUORLIN_FAKE_COMPONENT);
    m_client = std::make_unique<ComponentClient>(component);
    m_lib = std::make_unique<PDFLib>(*m_client);
    m_distiller = std::make_unique<PDFDistiller>(*m_client);
    m_merger = std::make_unique<PDFMerger>(*m_client);
    m_copy = std::make_unique<clsKelCopyFile>();
    m_delivery = std::make_unique<ResultDelivery>(
        [this](const QString &source, const QString &destination) {
            const auto copied = m_copy->CopyFile(source, destination, true, true);
            if (m_afterCopy)
                m_afterCopy();
            return copied;
        },
        [this](const QString &name) { m_opened.append(name); }, m_messages, m_texts);
    makeDriver(nullptr);
}

void JobScene::makeDriver(const ReasonTexts *reasons)
{
    m_driver =
        std::make_unique<JobDriver>(JobDriver::Parts{*m_lib, *m_distiller, *m_merger, m_window,
                                                     m_messages, m_texts, *m_delivery, reasons},
                                    m_settings);
}

void JobScene::tidyUp()
{
    m_driver.reset();
    m_merger.reset();
    m_distiller.reset();
    m_lib.reset();
    m_client.reset();
    qunsetenv("QUORLIN_FAKE");
    qunsetenv("QUORLIN_FAKE_LOG");
}

void JobScene::start(const QList<QByteArray> &names)
{
    m_window.list.clear();
    for (const auto &name : names)
        m_window.list.append(m_folder->write(name.constData(), name));
    m_driver->LblConvert_Click();
}

bool JobScene::isOver() const
{
    return !m_window.working && !m_lib->isRunning() && !m_distiller->isRunning() &&
           !m_merger->isRunning();
}

void JobScene::run(const QList<QByteArray> &names)
{
    start(names);
    QTRY_VERIFY_WITH_TIMEOUT(isOver(), 20000);
}

QStringList JobScene::messages() const
{
    QStringList texts;
    for (const auto &message : m_messages.all()) {
        if (message.style != MessageStyle::Critical ||
            message.title != QLatin1String("ErrorWindowTitle"))
            texts.append(QStringLiteral("wrong style or title"));
        texts.append(message.text);
    }
    return texts;
}

} // namespace Quorlin
