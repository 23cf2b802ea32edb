#pragma once

#include <QCoreApplication>

#include <cstdlib>
#include <memory>

namespace Quorlin::Fuzz {

/// The event loop of a target: the one of the test, or one of its own. Nothing is logged, since
/// every nonsense on a pipe is.
class Application
{
public:
    Application()
    {
        if (!QCoreApplication::instance())
            m_application = std::make_unique<QCoreApplication>(m_count, m_arguments);
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &) {
            if (type == QtFatalMsg)
                std::abort();
        });
    }

private:
    char m_name[5] = "fuzz";
    char *m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    std::unique_ptr<QCoreApplication> m_application;
};

} // namespace Quorlin::Fuzz
