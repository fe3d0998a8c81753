#include "simulator/Promptness.h"

#include <linux/sched.h>
#include <linux/sched/types.h> // excludes <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vek {

void AskForPromptness() {
    sched_attr wish = {};
    wish.size = sizeof wish;
    wish.sched_policy = SCHED_NORMAL;
    wish.sched_runtime = 100'000; // ns
    wish.sched_nice = -10;
    if (::syscall(SYS_sched_setattr, 0, &wish, 0) == 0)
        return;
    wish.sched_nice = 0;
    ::syscall(SYS_sched_setattr, 0, &wish, 0);
}

} // namespace vek
