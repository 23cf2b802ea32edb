#include "unit/confinement/ConfinedAction.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ipc.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Quorlin::ConfinedAction {

namespace {

using Target = const char *;

/// Opens and reads or writes one byte, since opening alone may succeed.
int useFile(Target path, int flags)
{
    const int file = ::open(path, flags | O_CLOEXEC, 0600);
    if (file < 0)
        return -1;
    char byte = 'x';
    const bool writes = (flags & O_ACCMODE) != O_RDONLY;
    return static_cast<int>(writes ? ::write(file, &byte, 1) : ::read(file, &byte, 1));
}

int connectTcp(Target port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(std::atoi(port)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return socket < 0 ? -1
                      : ::connect(socket, reinterpret_cast<sockaddr *>(&address), sizeof address);
}

sockaddr_un localAddress(Target path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
    return address;
}

int connectLocal(Target path)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto address = localAddress(path);
    return ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

int listenLocal(Target path)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto address = localAddress(path);
    return ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

int startProcess()
{
    const auto child = ::fork();
    if (child == 0)
        ::_exit(0);
    return child < 0 ? -1 : ::waitpid(child, nullptr, 0);
}

int startThread()
{
    try {
        std::jthread([] {}).join();
    } catch (const std::exception &) {
        errno = EAGAIN;
        return -1;
    }
    return 0;
}

int runProgram(Target path)
{
    char *const arguments[] = {const_cast<char *>(path), nullptr};
    ::execve(path, arguments, environ);
    return -1;
}

pid_t process(Target number)
{
    return static_cast<pid_t>(std::atoi(number));
}

const std::map<QByteArray, std::function<int(Target)>> &actions()
{
    static const std::map<QByteArray, std::function<int(Target)>> table{
        {"read", [](Target path) { return useFile(path, O_RDONLY); }},
        {"write", [](Target path) { return useFile(path, O_WRONLY | O_APPEND); }},
        {"create", [](Target path) { return useFile(path, O_WRONLY | O_CREAT | O_EXCL); }},
        {"empty", [](Target path) { return useFile(path, O_RDONLY | O_TRUNC); }},
        {"truncate", [](Target path) { return ::truncate(path, 0); }},
        {"list", [](Target path) { return ::open(path, O_RDONLY | O_DIRECTORY); }},
        {"remove", [](Target path) { return ::unlink(path); }},
        {"make-folder", [](Target path) { return ::mkdir(path, 0700); }},
        {"link", [](Target path) { return ::symlink("/etc/passwd", path); }},
        {"make-pipe", [](Target path) { return ::mkfifo(path, 0600); }},
        {"second-name", [](Target path) { return ::link(path, "second-name"); }},
        {"permissions", [](Target path) { return ::chmod(path, 0777); }},
        {"owner", [](Target path) { return ::chown(path, ::getuid(), ::getgid()); }},
        {"times", [](Target path) { return ::utimes(path, nullptr); }},
        {"run", runProgram},
        {"process", [](Target) { return startProcess(); }},
        {"thread", [](Target) { return startThread(); }},
        {"session", [](Target) { return static_cast<int>(::setsid()); }},
        {"group", [](Target) { return ::setpgid(0, 0); }},
        {"survive-parent", [](Target) { return ::prctl(PR_SET_PDEATHSIG, 0); }},
        {"namespace", [](Target) { return ::unshare(CLONE_NEWUSER); }},
        {"connect-tcp", connectTcp},
        {"packet-socket", [](Target) { return ::socket(AF_INET, SOCK_DGRAM, 0); }},
        {"local-packets", [](Target) { return ::socket(AF_UNIX, SOCK_DGRAM, 0); }},
        {"kernel-socket", [](Target) { return ::socket(AF_NETLINK, SOCK_RAW, 0); }},
        {"connect-local", connectLocal},
        {"listen-local", listenLocal},
        {"signal", [](Target number) { return ::kill(process(number), 0); }},
        {"trace",
         [](Target number) {
             return static_cast<int>(::ptrace(PTRACE_SEIZE, process(number), nullptr, nullptr));
         }},
        {"limits-of-another",
         [](Target number) {
             rlimit limits{};
             return ::prlimit(process(number), RLIMIT_NOFILE, nullptr, &limits);
         }},
        {"shared-memory", [](Target) { return ::shmget(IPC_PRIVATE, 4096, IPC_CREAT | 0600); }},
        {"ring",
         [](Target) { return static_cast<int>(::syscall(SYS_io_uring_setup, 1, nullptr)); }},
        {"write-probe", [](Target path) { return ::access(path, W_OK); }},
    };
    return table;
}

/// A filter that answers one system call with an error and lets all others through.
bool refuseCall(unsigned call, int error, int firstArgument)
{
    constexpr auto Number = static_cast<unsigned>(offsetof(seccomp_data, nr));
    constexpr auto Argument = static_cast<unsigned>(offsetof(seccomp_data, args));
    const auto first = static_cast<unsigned>(firstArgument);
    const __u8 anyArgument = firstArgument < 0 ? 0 : 1; // steps to skip when it is another
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, Number),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, Argument),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, first, 0, anyArgument),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{sizeof steps / sizeof *steps, steps};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) == 0;
}

} // namespace

QByteArray attempt(const QByteArray &name, const QByteArray &target)
{
    const auto action = actions().find(name);
    if (action == actions().end())
        return "no such action";
    errno = 0;
    return action->second(target.constData()) >= 0 ? QByteArray("ok")
                                                   : QByteArray(::strerrorname_np(errno));
}

bool hideFileRules()
{
    constexpr unsigned CreateRuleset = 444;
    return refuseCall(CreateRuleset, EOPNOTSUPP, -1);
}

bool hideCallFilters()
{
    // The kernel's answer when it was built without them.
    return refuseCall(SYS_prctl, EINVAL, PR_SET_SECCOMP);
}

void become(char **command)
{
    ::execvp(*command, command);
}

} // namespace Quorlin::ConfinedAction
