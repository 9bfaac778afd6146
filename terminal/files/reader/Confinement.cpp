#include "terminal/files/reader/Confinement.h"

#include <array>
#include <cerrno>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <vector>

namespace reader {
namespace {

#if defined(__x86_64__)
constexpr unsigned kArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr unsigned kArchitecture = AUDIT_ARCH_AARCH64;
#else
#error "the system calls of this processor are not known here"
#endif

/// What a reader calls: memory, and what is open already.
constexpr unsigned kAllowed[] = {
    __NR_read,      __NR_write,   __NR_close,        __NR_fstat,          __NR_newfstatat,
    __NR_lseek,     __NR_mmap,    __NR_mprotect,     __NR_munmap,         __NR_mremap,
    __NR_brk,       __NR_madvise, __NR_rt_sigaction, __NR_rt_sigreturn,   __NR_futex,
    __NR_getrandom, __NR_exit,    __NR_exit_group,   __NR_rt_sigprocmask,
};

sock_filter statement(unsigned short code, unsigned value) {
    return {code, 0, 0, value};
}

/// Goes on with the next statement when the loaded number is the value, else passes over it.
sock_filter unlessEqual(unsigned value) {
    return {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, value};
}

bool limit(__rlimit_resource resource, rlim_t most) {
    const rlimit both{most, most};
    return setrlimit(resource, &both) == 0;
}

bool filterCalls() {
    std::vector<sock_filter> filter;
    filter.push_back(statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)));
    filter.push_back({BPF_JMP | BPF_JEQ | BPF_K, 1, 0, kArchitecture});
    filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS));
    filter.push_back(statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
    for (const unsigned call : kAllowed) {
        filter.push_back(unlessEqual(call));
        filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    }
    filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

bool confine() {
    return limit(RLIMIT_AS, kMostMemory) && limit(RLIMIT_CPU, kMostSeconds) && limit(RLIMIT_CORE, 0) &&
           limit(RLIMIT_FSIZE, 0) && prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) == 0 && filterCalls();
}

} // namespace reader
