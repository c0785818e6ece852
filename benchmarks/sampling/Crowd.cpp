// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Crowd.h"

#include "benchmarks/sampling/Register.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace qk::bench {
namespace {

std::size_t processesNow() {
    const auto isProcess = [](const std::filesystem::directory_entry& entry) {
        const std::string name = entry.path().filename().string();
        return std::ranges::all_of(name, [](char unit) { return unit >= '0' && unit <= '9'; });
    };
    return static_cast<std::size_t>(
        std::count_if(std::filesystem::directory_iterator("/proc"), std::filesystem::directory_iterator(), isProcess));
}

} // namespace

std::vector<Competitor>& competitors() {
    static auto& all = *new std::vector<Competitor>();
    return all;
}

Crowd::~Crowd() {
    growTo(0);
}

void Crowd::growTo(std::size_t processes) {
    const std::size_t others = processesNow() - children_.size();
    const std::size_t wanted = processes > others ? processes - others : 0;
    while (children_.size() > wanted) {
        ::kill(children_.back(), SIGKILL);
        ::waitpid(children_.back(), nullptr, 0);
        children_.pop_back();
    }
    while (children_.size() < wanted) {
        const pid_t child = ::fork();
        if (child < 0) {
            return;
        }
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL); // nobody outlives the benchmark
            for (;;) {
                ::pause();
            }
        }
        children_.push_back(child);
    }
}

Mounts::Mounts() {
    std::string folder = (std::filesystem::temp_directory_path() / "qk-mounts-XXXXXX").string();
    areAllowed_ = ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  ::mkdtemp(folder.data()) != nullptr;
    folder_ = folder;
}

Mounts::~Mounts() {
    growTo(0);
    if (areAllowed_) {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
}

void Mounts::growTo(std::size_t mounts) {
    while (paths_.size() > mounts) {
        ::umount2(paths_.back().c_str(), MNT_DETACH);
        paths_.pop_back();
    }
    while (areAllowed_ && paths_.size() < mounts) {
        paths_.push_back(folder_ + "/" + std::to_string(paths_.size()));
        std::filesystem::create_directory(paths_.back());
        ::mount("tmpfs", paths_.back().c_str(), "tmpfs", 0, "size=64k");
    }
}

} // namespace qk::bench
