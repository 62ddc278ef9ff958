#include "platform/linux/confinement/CallFilter.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvu {
namespace {

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
#else
#error "name the architecture as the kernel's call filters know it"
#endif
static_assert(std::endian::native == std::endian::little);

constexpr std::array allowedCalls{
    SYS_read,
    SYS_write,
    SYS_close,
    SYS_fstat,
    SYS_brk,
    SYS_munmap,
    SYS_mremap,
    SYS_madvise,
    SYS_futex,
    SYS_exit,
    SYS_exit_group,
    SYS_rt_sigreturn,
    SYS_rt_sigaction,
    SYS_rt_sigprocmask,
    SYS_sigaltstack,
    SYS_sched_yield,
    SYS_getrandom,
    SYS_getpid,
    SYS_gettid,
    SYS_sched_getaffinity,
    SYS_clock_gettime,
    SYS_gettimeofday,
    SYS_nanosleep,
    SYS_clock_nanosleep,
    SYS_restart_syscall,
    SYS_rseq,
    SYS_set_robust_list,
};

/// The program of the filter, which the kernel runs at each call: one value, and steps that compare
/// it and go on or end.
class Filter {
public:
    Filter() {
        load(offsetof(seccomp_data, arch));
        unless(BPF_JEQ, architecture, SECCOMP_RET_KILL_PROCESS);
        load(offsetof(seccomp_data, nr));
    }

    void allow(long call) { answer(call, SECCOMP_RET_ALLOW); }
    void answer(long call, std::uint32_t result) {
        add(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 0, 1);
        add(BPF_RET | BPF_K, result);
    }
    /// Allows a call if the bits `mask` of its argument `index` are `value`.
    void allowIf(long call, std::size_t index, std::uint32_t mask, std::uint32_t value) {
        add(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 0, 5);
        load(offsetof(seccomp_data, args) + index * sizeof(std::uint64_t));
        add(BPF_ALU | BPF_AND | BPF_K, mask);
        add(BPF_JMP | BPF_JEQ | BPF_K, value, 0, 1);
        add(BPF_RET | BPF_K, SECCOMP_RET_ALLOW);
        add(BPF_RET | BPF_K, refusal(EPERM));
    }
    [[nodiscard]] static std::uint32_t refusal(int error) {
        return SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(error);
    }
    /// Refuses all else, from now on and in all threads.
    [[nodiscard]] bool install() {
        add(BPF_RET | BPF_K, refusal(EPERM));
        const sock_fprog program{static_cast<unsigned short>(steps_.size()), steps_.data()};
        return syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_TSYNC, &program) ==
               0;
    }

private:
    void add(int code, std::uint32_t value, std::uint8_t ifTrue = 0, std::uint8_t ifFalse = 0) {
        steps_.push_back({static_cast<std::uint16_t>(code), ifTrue, ifFalse, value});
    }
    void load(std::size_t offset) {
        add(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
    }
    void unless(int comparison, std::uint32_t value, std::uint32_t result) {
        add(BPF_JMP | comparison | BPF_K, value, 1, 0);
        add(BPF_RET | BPF_K, result);
    }

    std::vector<sock_filter> steps_;
};

}  // namespace

bool installCallFilter(std::initializer_list<long> furtherCalls) {
    Filter filter;
    for (const long call : allowedCalls) filter.allow(call);
    for (const long call : furtherCalls) filter.allow(call);
    filter.allowIf(SYS_mmap, 2, PROT_EXEC, 0);
    filter.allowIf(SYS_mprotect, 2, PROT_EXEC, 0);
    filter.allowIf(SYS_clone, 0, CLONE_THREAD, CLONE_THREAD);
    // Without a look at any file: what draws letters asks so about a font that it holds open.
    constexpr int claimedSuccess = 0;
#ifdef SYS_access
    filter.answer(SYS_access, Filter::refusal(claimedSuccess));
#endif
    filter.answer(SYS_faccessat, Filter::refusal(claimedSuccess));
    // Its arguments are out of a filter's sight. Without it the library takes the other one.
    filter.answer(SYS_clone3, Filter::refusal(ENOSYS));
    return filter.install();
}

}  // namespace orvu
