// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFSEvents.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

/// What a watcher misses of files that are made while it watches: run by hand, in the folder that TMPDIR names.
///
///     watch_losses                 this library, with each of the kernel's means
///     watch_losses --inotifywait   that program
///     watch_losses --watchman      that one
namespace {

using namespace qk;
using namespace qk::platform;
using Paths = std::unordered_set<std::string>;
using Clock = std::chrono::steady_clock;

constexpr auto kAway = std::chrono::seconds(3);
constexpr double kPatience = 10; // seconds without anything new

struct Job {
    const char* name;
    int files;
    int folders; // made before; or 0: two levels of new ones for each file
    bool isReaderAway;
};
constexpr Job kJobs[] = {{"1,000 in folders made at that moment", 1000, 0, false},
                         {"50,000 in 1 folder", 50'000, 1, false},
                         {"50,000 in 500 folders", 50'000, 500, false},
                         {"50,000 in 1 folder, reader away", 50'000, 1, true},
                         {"50,000 in 500 folders, reader away", 50'000, 500, true}};

std::string folderOf(const Job& job, int file) {
    return job.folders > 0 ? "/" + std::to_string(file % job.folders)
                           : "/" + std::to_string(file) + "/below" + std::to_string(file);
}

Paths make(const Job& job, const std::string& top) {
    Paths made;
    for (int file = 0; file < job.files; ++file) {
        const std::string folder = top + folderOf(job, file);
        if (job.folders == 0) {
            std::filesystem::create_directories(folder);
        }
        const std::string path = folder + "/file" + std::to_string(file);
        ::close(::open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR));
        made.insert(path);
    }
    return made;
}

void report(const char* who, const Job& job, const Paths& made, const Paths& told, double seconds, bool isLossTold) {
    std::size_t missed = 0;
    for (const std::string& path : made) {
        missed += told.contains(path) ? 0 : 1;
    }
    std::printf("%-12s %-40s missed %6zu of %zu, all there after %5.2f s%s\n", who, job.name, missed, made.size(),
                seconds, isLossTold ? ", the kernel lost events and it was told" : "");
    std::fflush(stdout);
}

// What a stream of this library tells, in the process's own run loop.
class Stream {
public:
    Stream(LinuxFSEvents::Means means, const std::string& top) : events_(means) {
        constexpr double kLatency = 0.5;
        stream_ = events_.streamCreate(tell, {0, this}, {NSString::fromUTF8(top).value()},
                                       kFSEventStreamEventIdSinceNow, kLatency, 0x11);
        stream_->scheduleWithRunLoop(loop_);
        isWatching_ = stream_->start();
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    ~Stream() { stream_->release(); }

    [[nodiscard]] bool isWatching() const { return isWatching_; }
    [[nodiscard]] bool isLossTold() const { return isLossTold_; }

    /// Runs until as many files are known as `count` says, or nothing comes any more.
    const Paths& runUntil(const std::function<std::size_t()>& count) {
        const auto look = loop_->scheduleTimer(0.05, true, [&] {
            const std::chrono::duration<double> quiet = Clock::now() - last_;
            if (told_.size() >= count() || quiet.count() > kPatience) {
                loop_->stop();
            }
        });
        last_ = Clock::now();
        loop_->run();
        return told_;
    }

private:
    static void tell(FSEventStreamRef /*stream*/, void* info, std::size_t numEvents, const NSArray& paths,
                     std::span<const FSEventStreamEventFlags> flags, std::span<const FSEventStreamEventId> /*ids*/) {
        auto& self = *static_cast<Stream*>(info);
        self.last_ = Clock::now();
        for (std::size_t index = 0; index < numEvents; ++index) {
            self.isLossTold_ = self.isLossTold_ || (flags[index] & kFSEventStreamEventFlagKernelDropped) != 0;
            if ((flags[index] & kFSEventStreamEventFlagItemCreated) != 0 &&
                (flags[index] & kFSEventStreamEventFlagItemIsFile) != 0) {
                self.told_.insert(paths[index].as<NSString>()->utf8Lossy());
            }
        }
    }

    LinuxFSEvents events_;
    std::shared_ptr<LinuxRunLoop> loop_ = LinuxRunLoop::make();
    FSEventStreamRef stream_ = nullptr;
    bool isWatching_ = false;
    bool isLossTold_ = false;
    Paths told_;
    Clock::time_point last_;
};

void runOurs(const char* who, LinuxFSEvents::Means means, const Job& job, const std::string& top) {
    Stream stream(means, top);
    if (!stream.isWatching()) {
        std::printf("%-12s %-40s not allowed here\n", who, job.name);
        return;
    }
    const auto begin = Clock::now();
    Paths made;
    std::thread writer([&] { made = make(job, top); });
    if (job.isReaderAway) {
        std::this_thread::sleep_for(kAway);
    }
    const Paths& told = stream.runUntil([&] { return static_cast<std::size_t>(job.files); });
    const std::chrono::duration<double> time = Clock::now() - begin;
    writer.join();
    report(who, job, made, told, time.count(), stream.isLossTold());
}

// Another program, and the lines that it prints.
class Program {
public:
    explicit Program(std::vector<std::string> words, const std::string& told = {}) {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0) {
            std::abort();
        }
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        child_ = ::fork();
        if (child_ == 0) {
            ::dup2(input[0], STDIN_FILENO);
            ::dup2(output[1], STDOUT_FILENO);
            ::dup2(output[1], STDERR_FILENO);
            ::execvp(arguments[0], arguments.data());
            ::_exit(1);
        }
        ::close(input[0]);
        ::close(output[1]);
        static_cast<void>(::write(input[1], told.data(), told.size()));
        ::close(input[1]);
        output_ = ::fdopen(output[0], "r");
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        ::kill(child_, SIGTERM);
        ::waitpid(child_, nullptr, 0);
        std::fclose(output_);
        std::free(line_);
    }

    [[nodiscard]] bool isOver() const {
        siginfo_t ended{};
        ::waitid(P_PID, static_cast<id_t>(child_), &ended, WEXITED | WNOHANG | WNOWAIT);
        return ended.si_pid == child_;
    }

    /// Empty at the end.
    std::string next() {
        const ssize_t length = ::getline(&line_, &room_, output_);
        return length > 0 ? std::string(line_, static_cast<std::size_t>(length) - 1) : std::string();
    }

private:
    pid_t child_;
    std::FILE* output_;
    char* line_ = nullptr;
    std::size_t room_ = 0;
};

// What `next` tells, a few paths at a time, of the files that are made meanwhile. A last file, made when the program
// has had time to rest, is the end, whatever was lost before.
void runPeer(const char* who, const Job& job, const std::string& top, const std::function<Paths()>& next) {
    constexpr auto kRest = std::chrono::seconds(1);
    const std::string last = top + "/last";
    const auto begin = Clock::now();
    Paths made;
    std::thread writer([&] {
        made = make(job, top);
        std::this_thread::sleep_for(kRest);
        ::close(::open(last.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, S_IRUSR));
    });
    if (job.isReaderAway) {
        std::this_thread::sleep_for(kAway);
    }
    Paths told;
    for (bool isOver = false; !isOver && !told.contains(last);) {
        Paths paths = next();
        isOver = paths.empty();
        told.merge(paths);
    }
    const std::chrono::duration<double> time = Clock::now() - begin - kRest;
    writer.join();
    report(who, job, made, told, time.count(), false);
}

void runInotifywait(const Job& job, const std::string& top) {
    Program program({"inotifywait", "-m", "-r", "-e", "create", "--format", "%w%f", top});
    for (std::string line = program.next(); line != "Watches established."; line = program.next()) {
        if (line.empty()) {
            std::puts("inotifywait cannot be run");
            return;
        }
    }
    runPeer("inotifywait", job, top, [&] {
        const std::string path = program.next();
        return path.empty() ? Paths() : Paths{path};
    });
}

// A server of its own, and a client that subscribes to every file.
void runWatchman(const Job& job, const std::string& top) {
    const tests::TemporaryFolder place;
    const std::string socket = "--sockname=" + place.path("socket");
    const Program server({"watchman", "--foreground", "--no-save-state", socket, "--logfile=" + place.path("log"),
                          "--pidfile=" + place.path("pid")});
    const auto ask = [&](const nlohmann::json& command) {
        return Program({"watchman", socket, "--no-spawn", "--persistent", "--json-command", "--no-pretty"},
                       command.dump());
    };
    while (!std::filesystem::exists(place.path("socket"))) {
        if (server.isOver()) {
            std::puts("watchman cannot be run");
            return;
        }
        std::this_thread::yield();
    }
    const nlohmann::json everyFile = {{"expression", {"type", "f"}}, {"fields", {"name"}}};
    if (ask({"watch", top}).next().find("error") != std::string::npos) {
        std::puts("watchman does not watch here");
        return;
    }
    Program client = ask({"subscribe", top, "files", everyFile});
    client.next(); // that it does
    runPeer("watchman", job, top, [&] {
        Paths paths;
        const std::string line = client.next();
        if (!line.empty()) {
            for (const std::string name : nlohmann::json::parse(line).value("files", nlohmann::json::array())) {
                paths.insert(std::string(top).append("/").append(name));
            }
        }
        return paths;
    });
}

} // namespace

int main(int count, char** arguments) {
    const std::string peer = count > 1 ? arguments[1] : "";
    for (const Job& job : kJobs) {
        const auto run = [&](const std::function<void(const std::string& top)>& watch) {
            const tests::TemporaryFolder folder;
            const std::string top = std::filesystem::canonical(folder.path()).string();
            for (int number = 0; number < job.folders; ++number) {
                std::filesystem::create_directory(folder.path(std::to_string(number)));
            }
            watch(top);
        };
        if (peer == "--inotifywait") {
            run([&](const std::string& top) { runInotifywait(job, top); });
        } else if (peer == "--watchman") {
            run([&](const std::string& top) { runWatchman(job, top); });
        } else {
            run([&](const std::string& top) { runOurs("inotify", LinuxFSEvents::Means::Inotify, job, top); });
            run([&](const std::string& top) { runOurs("fanotify", LinuxFSEvents::Means::Fanotify, job, top); });
        }
    }
    return 0;
}
