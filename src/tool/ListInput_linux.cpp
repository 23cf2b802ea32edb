#include "tool/ListInput.h"

#include <QFile>
#include <QSocketNotifier>

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace Quorlin {

namespace {

constexpr qsizetype PieceBytes = 65536;

// Opening a pipe must not wait for its writer.
int openForReading(const QString &file)
{
    return ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

} // namespace

ListInput::ListInput(const QString &file, QObject *parent)
    : QObject(parent), m_owned(file != QLatin1String("-"))
{
    m_descriptor = m_owned ? openForReading(file) : STDIN_FILENO;
    if (m_descriptor < 0) {
        const int error = errno;
        QMetaObject::invokeMethod(
            this, [this, error] { end(error); }, Qt::QueuedConnection);
        return;
    }
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &ListInput::readSome);
}

ListInput::~ListInput()
{
    delete m_notifier;
    if (m_owned && m_descriptor >= 0)
        ::close(m_descriptor);
}

bool ListInput::isTerminal() const
{
    return m_descriptor >= 0 && ::isatty(m_descriptor) == 1;
}

void ListInput::readSome()
{
    QByteArray bytes(PieceBytes, Qt::Uninitialized);
    const auto count = ::read(m_descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        end(count < 0 ? errno : 0);
        return;
    }
    bytes.truncate(count);
    Q_EMIT arrived(bytes);
}

void ListInput::end(int error)
{
    if (m_notifier)
        m_notifier->setEnabled(false);
    Q_EMIT ended(error == 0 ? QString()
                            : QString::fromStdString(std::generic_category().message(error)));
}

} // namespace Quorlin
