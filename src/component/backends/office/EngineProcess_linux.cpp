#include "component/backends/office/EngineProcess.h"

#include "component/confinement/ChildSetUp.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Quorlin {

namespace {

/// Longest part of the engine's own output that is passed on, in bytes.
constexpr qsizetype LogLimit = 65536;

/// Strings in the form that execve() takes.
class ArgumentList
{
public:
    explicit ArgumentList(const QStringList &texts)
    {
        for (const auto &text : texts)
            m_bytes.push_back(QFile::encodeName(text));
        for (auto &bytes : m_bytes)
            m_pointers.push_back(bytes.data());
        m_pointers.push_back(nullptr);
    }

    [[nodiscard]] char *const *data() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_bytes;
    std::vector<char *> m_pointers;
};

/// Runs in the child between fork() and execve(): nothing here may allocate.
[[noreturn]] void become(const char *program, const char *folder, const ArgumentList &arguments,
                         const ArgumentList &environment, int log, qint64 parent,
                         const Confinement &confinement)
{
    ChildSetUp::begin(parent);
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(log, STDOUT_FILENO);
    ::dup2(log, STDERR_FILENO);
    ::signal(SIGPIPE, SIG_DFL);
    ::umask(077);
    if (::chdir(folder) == 0 && confinement.enter())
        ::execve(program, arguments.data(), environment.data());
    ::_exit(127);
}

/// Reads until the other end is closed, passing on the beginning only.
void drain(int source)
{
    std::array<char, 4096> bytes{};
    qsizetype passed = 0;
    for (;;) {
        const auto count = ::read(source, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        if (passed < LogLimit)
            (void)!::write(STDERR_FILENO, bytes.data(), static_cast<size_t>(count));
        passed += count;
    }
    ::close(source);
}

int codeOf(int status)
{
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

EngineProcess::~EngineProcess()
{
    kill();
    (void)waitForEnd(std::chrono::seconds(5));
}

bool EngineProcess::start(const EngineCommand &command)
{
    const ArgumentList arguments(QStringList(command.program) + command.arguments);
    const ArgumentList environment(command.environment);
    const auto program = QFile::encodeName(command.program);
    const auto folder = QFile::encodeName(command.folder);
    std::array<int, 2> log{};
    if (::pipe2(log.data(), O_CLOEXEC) != 0)
        return false;
    const auto parent = ChildSetUp::thisProcess();
    const auto child = ::fork();
    if (child == 0)
        become(program.constData(), folder.constData(), arguments, environment, log[1], parent,
               *command.confinement);
    ::close(log[1]);
    if (child < 0) {
        ::close(log[0]);
        return false;
    }
    const std::lock_guard lock(m_mutex);
    m_id = child;
    m_exitCode.reset();
    m_log = std::jthread(drain, log[0]);
    return true;
}

std::optional<int> EngineProcess::exitCode()
{
    const std::lock_guard lock(m_mutex);
    if (m_id == 0 || m_exitCode)
        return m_exitCode;
    int status = 0;
    rusage usage{};
    if (::wait4(static_cast<pid_t>(m_id), &status, WNOHANG, &usage) == m_id) {
        m_exitCode = codeOf(status);
        m_peakMemory = qint64{usage.ru_maxrss} * 1024;
    }
    return m_exitCode;
}

bool EngineProcess::waitForEnd(std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (m_id != 0 && !exitCode()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

void EngineProcess::kill()
{
    const std::lock_guard lock(m_mutex);
    if (m_id != 0 && !m_exitCode)
        ::kill(static_cast<pid_t>(m_id), SIGKILL);
}

} // namespace Quorlin
