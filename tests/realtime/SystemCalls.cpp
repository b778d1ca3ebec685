#include <csignal>
#include <cstddef>
#include <execinfo.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include "tests/realtime/RealtimeCheck.h"

// Instead of a trapped system call the kernel sends SIGSYS. The handler counts the call, then makes it. See "Seccomp BPF"
// in the kernel's documentation.

/// Makes a system call from the one address that the filter allows. Returns the kernel's result.
extern "C" long realtimeKernelCall(long number, long a, long b, long c, long d, long e, long f);
extern "C" const char realtimeKernelCallMade[];
asm(R"(
    .text
    .type realtimeKernelCall, @function
realtimeKernelCall:
    mov %rdi, %rax
    mov %rsi, %rdi
    mov %rdx, %rsi
    mov %rcx, %rdx
    mov %r8, %r10
    mov %r9, %r8
    mov 8(%rsp), %r9
    syscall
realtimeKernelCallMade:
    ret
    .size realtimeKernelCall, . - realtimeKernelCall
)");

namespace RealtimeCheck {
namespace {

void onTrap(int, siginfo_t *info, void *context)
{
    const long number = info->si_syscall;
    if (Counts *const counts = thread.counts) {
        const bool ofLock = thread.lockDepth > 0;
        ++(ofLock ? counts->callsOfLocks : counts->callsElsewhere);
        if (!ofLock) recordFinding("system call", number);
    }
    auto &registers = static_cast<ucontext_t *>(context)->uc_mcontext.gregs;
    registers[REG_RAX] =
        realtimeKernelCall(number, registers[REG_RDI], registers[REG_RSI], registers[REG_RDX],
                           registers[REG_R10], registers[REG_R8], registers[REG_R9]);
}

bool filterCalls()
{
    const auto load = [](size_t offset) {
        return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<uint32_t>(offset));
    };
    const auto skipUnless = [](uint64_t value, uint8_t skipped) {
        return sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<uint32_t>(value), 0, skipped);
    };
    const auto end = [](uint32_t action) { return sock_filter BPF_STMT(BPF_RET | BPF_K, action); };
    constexpr size_t kFrom = offsetof(seccomp_data, instruction_pointer);
    const auto own = reinterpret_cast<uint64_t>(realtimeKernelCallMade);
    std::array program = {load(offsetof(seccomp_data, nr)),
                          skipUnless(SYS_rt_sigreturn, 1),
                          end(SECCOMP_RET_ALLOW),
                          load(kFrom),
                          skipUnless(own, 3),
                          load(kFrom + 4),
                          skipUnless(own >> 32, 1),
                          end(SECCOMP_RET_ALLOW),
                          end(SECCOMP_RET_TRAP)};
    const sock_fprog filter = {static_cast<unsigned short>(program.size()), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

} // namespace

bool arm()
{
    struct sigaction action = {};
    action.sa_sigaction = onTrap;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSYS, &action, nullptr);
    std::array<void *, 4> frames;
    backtrace(frames.data(), frames.size()); // its first call loads a library
    return filterCalls();
}

} // namespace RealtimeCheck
