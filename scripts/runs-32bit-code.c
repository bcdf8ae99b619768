/* Answers whether this machine executes 32-bit x86 code inside a 64-bit process, as a WoW64 Wine
 * needs for every 32-bit Windows program: it switches the CPU to compatibility mode with a far
 * jump to the kernel's 32-bit user code segment. Some virtual machines lack that segment, and
 * there the jump faults, as would the first 32-bit program under any Wine.
 *
 * Built without PIE, so that the code and the stack the 32-bit side uses lie below 4 GiB:
 *   gcc -O0 -no-pie -o runs-32bit-code scripts/runs-32bit-code.c && ./runs-32bit-code
 * Prints "yes: ..." and exits 0, or "no: ..." and exits 1. */
#include <signal.h>
#include <stdio.h>
#include <sys/wait.h>
#include <unistd.h>

enum { user_code32 = 0x23, user_code64 = 0x33, answer = 0x2a };

__attribute__((used)) static unsigned char low_stack[8192] __attribute__((aligned(16)));

/* Jumps into 32-bit code that loads a number and jumps back; the number comes back in eax. */
static int round_trip(void) {
    int seen;
    __asm__ volatile("mov %%rsp, %%rbx\n\t"
                     "lea low_stack+8192(%%rip), %%rsp\n\t"
                     "lea 3f(%%rip), %%rcx\n\t"
                     "pushq %[code32]\n\t"
                     "pushq %%rcx\n\t"
                     "lretq\n\t"
                     ".code32\n"
                     "3:\n\t"
                     "mov %[value], %%eax\n\t"
                     "pushl %[code64]\n\t"
                     "pushl $4f\n\t"
                     "lret\n\t"
                     ".code64\n"
                     "4:\n\t"
                     "mov %%rbx, %%rsp\n\t"
                     : "=a"(seen)
                     : [code32] "i"(user_code32), [code64] "i"(user_code64), [value] "i"(answer)
                     : "rbx", "rcx", "memory");
    return seen;
}

int main(void) {
    fflush(stdout);
    const pid_t child = fork();
    if (child < 0) {
        puts("no: the probe could not start its child process");
        return 1;
    }
    if (child == 0) {
        alarm(5); /* a machine that hangs in the switch answers no as well */
        _exit(round_trip() == answer ? 0 : 3);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child) {
        puts("no: the probe lost its child process");
        return 1;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
        puts("yes: this machine runs 32-bit x86 code");
        return 0;
    }
    if (WIFSIGNALED(status)) {
        printf("no: 32-bit x86 code faults here (signal %d on entering the 32-bit code segment)\n",
               WTERMSIG(status));
    } else {
        printf("no: 32-bit x86 code gave a wrong result here (exit %d)\n", WEXITSTATUS(status));
    }
    return 1;
}
