#include "component/confinement/CallFilter.h"

#include <cerrno>
#include <csignal>
#include <initializer_list>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/sched.h>
#include <linux/seccomp.h>
#include <linux/sockios.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Quorlin {

namespace {

/// Other programs' memory, the kernel's own workings, and ways around filters and file rules.
constexpr std::initializer_list<int> NeverNeeded{
    SCMP_SYS(acct),
    SCMP_SYS(add_key),
    SCMP_SYS(bpf),
    SCMP_SYS(chroot),
    SCMP_SYS(fanotify_init),
    SCMP_SYS(fsconfig),
    SCMP_SYS(fsmount),
    SCMP_SYS(fsopen),
    SCMP_SYS(fspick),
    SCMP_SYS(io_uring_enter),
    SCMP_SYS(io_uring_register),
    SCMP_SYS(io_uring_setup),
    SCMP_SYS(ioprio_set),
    SCMP_SYS(kcmp),
    SCMP_SYS(keyctl),
    SCMP_SYS(migrate_pages),
    SCMP_SYS(mknod),
    SCMP_SYS(mknodat),
    SCMP_SYS(mount),
    SCMP_SYS(move_mount),
    SCMP_SYS(move_pages),
    SCMP_SYS(mq_open),
    SCMP_SYS(mq_unlink),
    SCMP_SYS(msgctl),
    SCMP_SYS(msgget),
    SCMP_SYS(msgrcv),
    SCMP_SYS(msgsnd),
    SCMP_SYS(open_by_handle_at),
    SCMP_SYS(open_tree),
    SCMP_SYS(openat2),
    SCMP_SYS(perf_event_open),
    SCMP_SYS(pidfd_getfd),
    SCMP_SYS(pidfd_open),
    SCMP_SYS(pivot_root),
    SCMP_SYS(process_vm_readv),
    SCMP_SYS(process_vm_writev),
    SCMP_SYS(ptrace),
    SCMP_SYS(quotactl),
    SCMP_SYS(request_key),
    SCMP_SYS(sched_setaffinity),
    SCMP_SYS(sched_setattr),
    SCMP_SYS(sched_setparam),
    SCMP_SYS(sched_setscheduler),
    SCMP_SYS(semctl),
    SCMP_SYS(semget),
    SCMP_SYS(semop),
    SCMP_SYS(semtimedop),
    SCMP_SYS(setns),
    SCMP_SYS(setpgid),
    SCMP_SYS(setpriority),
    SCMP_SYS(setsid),
    SCMP_SYS(shmat),
    SCMP_SYS(shmctl),
    SCMP_SYS(shmget),
    SCMP_SYS(symlink),
    SCMP_SYS(symlinkat),
    SCMP_SYS(umount2),
    SCMP_SYS(unshare),
    SCMP_SYS(userfaultfd),
};

/// What changes a file without opening it for writing: the file rules do not look at it.
constexpr std::initializer_list<int> ChangesWithoutWriting{
    SCMP_SYS(chmod),       SCMP_SYS(chown),    SCMP_SYS(fchmod),       SCMP_SYS(fchmodat),
    SCMP_SYS(fchown),      SCMP_SYS(fchownat), SCMP_SYS(fremovexattr), SCMP_SYS(fsetxattr),
    SCMP_SYS(futimesat),   SCMP_SYS(lchown),   SCMP_SYS(lremovexattr), SCMP_SYS(lsetxattr),
    SCMP_SYS(removexattr), SCMP_SYS(setxattr), SCMP_SYS(truncate),     SCMP_SYS(utime),
    SCMP_SYS(utimensat),   SCMP_SYS(utimes),
};

/// The same in younger kernels, under numbers that all machines share: fchmodat2, setxattrat,
/// removexattrat, file_setattr.
constexpr std::initializer_list<int> YoungerChanges{452, 463, 466, 469};

constexpr std::initializer_list<int> Signals{
    SCMP_SYS(kill), SCMP_SYS(tkill), SCMP_SYS(pidfd_send_signal), SCMP_SYS(rt_sigqueueinfo)};

/// To one thread of any process. Where signals stay inside by other rules they are needed: a
/// program sends them to itself.
constexpr std::initializer_list<int> ThreadSignals{SCMP_SYS(tgkill), SCMP_SYS(rt_tgsigqueueinfo)};

/// What the kernel takes of an argument of type int; a filter sees all of the register.
constexpr std::uint64_t Int = 0xFFFFFFFF;
constexpr std::uint64_t SocketKind = 0xF; ///< the rest of a socket's type are flags
constexpr std::uint64_t OpenMode = O_ACCMODE | O_TRUNC;
constexpr std::uint64_t NewNamespace = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC |
                                       CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;

/// Collects what is refused; everything else is allowed.
class FilterMaker
{
public:
    FilterMaker() : m_filter(seccomp_init(SCMP_ACT_ALLOW)) {}
    ~FilterMaker() { seccomp_release(m_filter); }
    FilterMaker(const FilterMaker &) = delete;
    FilterMaker &operator=(const FilterMaker &) = delete;

    void refuse(int call, int error = EPERM)
    {
        m_good = seccomp_rule_add_array(m_filter, SCMP_ACT_ERRNO(error), call, 0, nullptr) == 0 &&
                 m_good;
    }

    void refuseIf(int call, scmp_arg_cmp condition, int error = EPERM)
    {
        m_good =
            seccomp_rule_add_array(m_filter, SCMP_ACT_ERRNO(error), call, 1, &condition) == 0 &&
            m_good;
    }

    /// The kernel's form of the filter; empty when something went wrong.
    [[nodiscard]] QByteArray program() const
    {
        const int file = ::memfd_create("filter", MFD_CLOEXEC);
        QByteArray result;
        struct stat status = {};
        if (m_good && file >= 0 && seccomp_export_bpf(m_filter, file) == 0 &&
            ::fstat(file, &status) == 0) {
            result.resize(status.st_size);
            if (::pread(file, result.data(), static_cast<size_t>(result.size()), 0) !=
                result.size())
                result.clear();
        }
        ::close(file);
        return result;
    }

private:
    scmp_filter_ctx m_filter;
    bool m_good = true;
};

void refuseNetwork(FilterMaker &filter)
{
    filter.refuseIf(SCMP_SYS(socket), SCMP_A0(SCMP_CMP_NE, AF_UNIX), EACCES);
    filter.refuseIf(SCMP_SYS(socketpair), SCMP_A0(SCMP_CMP_NE, AF_UNIX), EACCES);
    // A socket for packets may send them to any name without ever being connected to it.
    for (const int call : {SCMP_SYS(socket), SCMP_SYS(socketpair)})
        for (const int kind : {SOCK_DGRAM, SOCK_RAW, SOCK_RDM, SOCK_SEQPACKET})
            filter.refuseIf(
                call, SCMP_A1(SCMP_CMP_MASKED_EQ, SocketKind, static_cast<unsigned>(kind)), EACCES);
}

/// The words of older kernels' file rules do not cover opening for reading that empties a file.
void refuseEmptying(FilterMaker &filter)
{
    filter.refuseIf(SCMP_SYS(open), SCMP_A1(SCMP_CMP_MASKED_EQ, OpenMode, O_RDONLY | O_TRUNC));
    filter.refuseIf(SCMP_SYS(openat), SCMP_A2(SCMP_CMP_MASKED_EQ, OpenMode, O_RDONLY | O_TRUNC));
}

/// Threads are made; whatever else clone() makes is a process.
void refuseProcesses(FilterMaker &filter)
{
    filter.refuse(SCMP_SYS(fork));
    filter.refuse(SCMP_SYS(vfork));
    filter.refuseIf(SCMP_SYS(clone), SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0));
}

void refuseNamespaces(FilterMaker &filter)
{
    for (std::uint64_t bit = 1; bit <= NewNamespace; bit <<= 1U)
        if ((NewNamespace & bit) != 0)
            filter.refuseIf(SCMP_SYS(clone), SCMP_A0(SCMP_CMP_MASKED_EQ, bit, bit));
    // Its flags are in memory, where a filter cannot look; without it the C library takes clone().
    filter.refuse(SCMP_SYS(clone3), ENOSYS);
}

void refuseTypingIntoTerminals(FilterMaker &filter)
{
    filter.refuseIf(SCMP_SYS(ioctl), SCMP_A1(SCMP_CMP_MASKED_EQ, Int, TIOCSTI));
    filter.refuseIf(SCMP_SYS(ioctl), SCMP_A1(SCMP_CMP_MASKED_EQ, Int, TIOCLINUX));
}

/// A file can be told to send a signal to any process when something happens to it.
void refuseSignalsOfFiles(FilterMaker &filter)
{
    for (const std::uint64_t command : {F_SETOWN, F_SETOWN_EX, F_SETSIG})
        filter.refuseIf(SCMP_SYS(fcntl), SCMP_A1(SCMP_CMP_MASKED_EQ, Int, command));
    for (const std::uint64_t request : {FIOSETOWN, SIOCSPGRP})
        filter.refuseIf(SCMP_SYS(ioctl), SCMP_A1(SCMP_CMP_MASKED_EQ, Int, request));
}

/// What lies in the folder afterwards may get a second name beside the user's documents.
void refuseProgramsOfOthers(FilterMaker &filter)
{
    for (const std::uint64_t bit : {S_ISUID, S_ISGID}) {
        filter.refuseIf(SCMP_SYS(creat), SCMP_A1(SCMP_CMP_MASKED_EQ, bit, bit));
        filter.refuseIf(SCMP_SYS(open), SCMP_A2(SCMP_CMP_MASKED_EQ, bit, bit));
        filter.refuseIf(SCMP_SYS(openat), SCMP_A3(SCMP_CMP_MASKED_EQ, bit, bit));
    }
}

void refuseWriteProbes(FilterMaker &filter)
{
    filter.refuseIf(SCMP_SYS(access), SCMP_A1(SCMP_CMP_MASKED_EQ, Int, W_OK), EACCES);
    filter.refuseIf(SCMP_SYS(faccessat), SCMP_A2(SCMP_CMP_MASKED_EQ, Int, W_OK), EACCES);
    filter.refuseIf(SCMP_SYS(faccessat2), SCMP_A2(SCMP_CMP_MASKED_EQ, Int, W_OK), EACCES);
}

QByteArray makeProgram(const Boundaries &boundaries, bool scopesSignals)
{
    FilterMaker filter;
    for (const int call : NeverNeeded)
        filter.refuse(call);
    for (const auto &calls : {ChangesWithoutWriting, YoungerChanges})
        for (const int call : calls)
            filter.refuse(call);
    filter.refuseIf(SCMP_SYS(prlimit64), SCMP_A0(SCMP_CMP_NE, 0));
    refuseNetwork(filter);
    refuseEmptying(filter);
    refuseNamespaces(filter);
    refuseTypingIntoTerminals(filter);
    refuseSignalsOfFiles(filter);
    refuseProgramsOfOthers(filter);
    if (!scopesSignals)
        for (const int call : ThreadSignals)
            filter.refuse(call);
    if (!boundaries.connectsLocally)
        filter.refuse(SCMP_SYS(connect), EACCES);
    if (boundaries.ownSocketsOnly)
        refuseWriteProbes(filter);
    if (!boundaries.startsPrograms) {
        refuseProcesses(filter);
        filter.refuseIf(SCMP_SYS(prctl), SCMP_A0(SCMP_CMP_MASKED_EQ, Int, PR_SET_PDEATHSIG));
        // Who starts programs also has to end them.
        for (const int call : Signals)
            filter.refuse(call);
    }
    return filter.program();
}

} // namespace

CallFilter::CallFilter(const Boundaries &boundaries, bool scopesSignals)
    : m_program(isSupported() ? makeProgram(boundaries, scopesSignals) : QByteArray())
{
}

bool CallFilter::isSupported()
{
    // A null program is refused as a bad address only by a kernel that knows filters.
    static const bool supported =
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, nullptr, 0, 0) != 0 && errno == EFAULT;
    return supported;
}

bool CallFilter::apply() const noexcept
{
    if (!isSupported())
        return true;
    if (m_program.isEmpty())
        return false;
    // The kernel only reads it, though the interface says otherwise.
    sock_fprog program{
        static_cast<unsigned short>(static_cast<size_t>(m_program.size()) / sizeof(sock_filter)),
        reinterpret_cast<sock_filter *>(const_cast<char *>(m_program.constData()))};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return false;
    const auto result =
        ::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_TSYNC, &program);
    if (result != -1 || (errno != ENOSYS && errno != EPERM))
        return result == 0;
    // Containers may know only the older call, which is for the calling thread alone.
    return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) == 0;
}

} // namespace Quorlin
