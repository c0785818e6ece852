// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Register.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

extern char** environ;

namespace qk::bench {
namespace {

/// The script "psutil-peer", which takes the samples of psutil and tells how long they took: started with the first
/// sample, so that it sees the same mounts, and kept, as a program with psutil in it would be.
class Script {
public:
    static Script& instance() {
        static Script& script = *new Script();
        return script;
    }

    /// The seconds of processor time that one sample took; 0 without psutil.
    double sample(const char* job) {
        if (requests_ == nullptr || std::fprintf(requests_, "%s\n", job) < 0 || std::fflush(requests_) != 0) {
            return 0;
        }
        std::array<char, 64> line{};
        return std::fgets(line.data(), line.size(), answers_) != nullptr ? std::strtod(line.data(), nullptr) : 0;
    }

private:
    Script() {
        std::signal(SIGPIPE, SIG_IGN); // a script that ended answers nothing
        std::array<int, 2> requests{};
        std::array<int, 2> answers{};
        if (::pipe(requests.data()) != 0 || ::pipe(answers.data()) != 0) {
            return;
        }
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, requests[0], 0);
        posix_spawn_file_actions_adddup2(&actions, answers[1], 1);
        for (const int end : {requests[0], requests[1], answers[0], answers[1]}) {
            posix_spawn_file_actions_addclose(&actions, end);
        }
        const char* const arguments[] = {"/usr/bin/python3", QK_PSUTIL_SCRIPT, nullptr};
        pid_t child = 0;
        if (posix_spawn(&child, arguments[0], &actions, nullptr, const_cast<char* const*>(arguments), environ) == 0) {
            requests_ = ::fdopen(requests[1], "w");
            answers_ = ::fdopen(answers[0], "r");
        }
        posix_spawn_file_actions_destroy(&actions);
        ::close(requests[0]);
        ::close(answers[1]);
    }

    std::FILE* requests_ = nullptr;
    std::FILE* answers_ = nullptr;
};

bool competeAt(Job job, const char* name) {
    competitors().push_back({"psutil", job, [name] { return Script::instance().sample(name); }, true});
    return true;
}

const bool kProcessors = competeAt(Job::processors, "processors");
const bool kMemory = competeAt(Job::memory, "memory");
const bool kProcesses = competeAt(Job::processes, "processes");
const bool kVolumes = competeAt(Job::volumes, "volumes");

} // namespace
} // namespace qk::bench
