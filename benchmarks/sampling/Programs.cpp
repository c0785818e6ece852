// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Register.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

namespace qk::bench {
namespace {

// Runs a program to its end, its output thrown away; the processor time that it took, its start included.
double run(const char* const* arguments) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, const_cast<char* const*>(arguments), environ);
    posix_spawn_file_actions_destroy(&actions);
    rusage used{};
    if (error != 0 || wait4(child, nullptr, 0, &used) < 0) {
        return 0;
    }
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

template <typename... Arguments>
bool competeWithProgram(const char* who, Job job, Arguments... arguments) {
    competitors().push_back({who, job,
                             [arguments...] {
                                 const char* const list[] = {arguments..., nullptr};
                                 return run(list);
                             },
                             true});
    return true;
}

const bool kProcesses = competeWithProgram("ps", Job::processes, "ps", "-e", "-o", "pid,stat,comm");
const bool kVolumes = competeWithProgram("df", Job::volumes, "df", "-B1");

} // namespace
} // namespace qk::bench
