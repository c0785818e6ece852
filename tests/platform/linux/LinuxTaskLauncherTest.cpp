// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxTaskLauncher.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace qk::platform {
namespace {

using namespace std::string_view_literals;
using tests::TemporaryFolder;

NSString string(const std::string& text) {
    return NSString::fromUTF8Lossy(text);
}

TaskRequest shell(const std::string& script) {
    return {.launchPath = "/bin/sh",
            .arguments = {"-c", string(script)},
            .currentDirectoryPath = std::nullopt,
            .standardOutput = TaskStream::Collect,
            .standardError = TaskStream::Inherit};
}

TaskExit exitOf(const TaskRequest& request) {
    auto outcome = LinuxTaskLauncher().run(request);
    if (const auto* failure = std::get_if<TaskLaunchFailure>(&outcome); failure != nullptr) {
        ADD_FAILURE() << "launch failed with error " << failure->errorNumber;
        return {};
    }
    return std::get<TaskExit>(outcome);
}

int failureOf(const TaskRequest& request) {
    const auto outcome = LinuxTaskLauncher().run(request);
    const auto* failure = std::get_if<TaskLaunchFailure>(&outcome);
    return failure != nullptr ? failure->errorNumber : 0;
}

std::string outputOf(const std::string& script) {
    return std::string(exitOf(shell(script)).output.view());
}

std::ptrdiff_t countOfDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

TEST(LinuxTaskLauncher, ProgramThatPrintsNothingGivesEmptyOutput) {
    const TaskExit ended = exitOf(shell(":"));
    EXPECT_EQ(ended.terminationStatus, 0);
    EXPECT_FALSE(ended.uncaughtSignal);
    EXPECT_TRUE(ended.output.isEmpty());
}

TEST(LinuxTaskLauncher, LaunchFailureIsTheKernelsError) {
    const TemporaryFolder folder;
    TaskRequest request = shell(":");
    request.launchPath = string(folder.path("missing"));
    EXPECT_EQ(failureOf(request), ENOENT);
    request.launchPath = "";
    EXPECT_EQ(failureOf(request), ENOENT);
    request.launchPath = string(folder.path());
    EXPECT_EQ(failureOf(request), EACCES);
    request.launchPath = string(folder.write("text", "just text"));
    EXPECT_EQ(failureOf(request), EACCES) << "not executable";
    ASSERT_EQ(::chmod(folder.path("text").c_str(), 0755), 0);
    EXPECT_EQ(failureOf(request), ENOEXEC);
    request.launchPath = string(folder.path("text/below"));
    EXPECT_EQ(failureOf(request), ENOTDIR);
    request = shell(":");
    request.currentDirectoryPath = string(folder.path("missing"));
    EXPECT_EQ(failureOf(request), ENOENT);
    request.currentDirectoryPath = string(folder.path("text"));
    EXPECT_EQ(failureOf(request), ENOTDIR);
}

TEST(LinuxTaskLauncher, TextsThatNoChildCanGetAreAFailure) {
    TaskRequest request = shell(":");
    request.arguments.emplace_back(u"a\0b"sv);
    EXPECT_EQ(failureOf(request), EINVAL);
    request = shell(":");
    request.arguments.emplace_back(u"\xD800"sv);
    EXPECT_EQ(failureOf(request), EINVAL);
    request = shell(":");
    request.launchPath = NSString(u"/bin/sh\0x"sv);
    EXPECT_EQ(failureOf(request), EINVAL);
    request = shell(":");
    request.currentDirectoryPath = NSString(u"/\0"sv);
    EXPECT_EQ(failureOf(request), EINVAL);
    request = shell(":");
    request.standardError = TaskStream::Collect;
    EXPECT_EQ(failureOf(request), EINVAL);
}

TEST(LinuxTaskLauncher, ArgumentsReachTheProgramAsTheyAre) {
    TaskRequest request = shell(R"(printf '[%s]' "$@")");
    request.arguments.insert(request.arguments.end(),
                             {"name", "", "a b", "'\"$HOME*\n", "Grüße 😀", NSString(u"caf\xDCE9"sv)});
    EXPECT_EQ(exitOf(request).output.view(), "[][a b]['\"$HOME*\n][Grüße 😀][caf\xE9]");
}

TEST(LinuxTaskLauncher, StatusIsTheProgramsOwn) {
    for (const int status : {0, 1, 127, 255}) {
        const TaskExit ended = exitOf(shell("exit " + std::to_string(status)));
        EXPECT_EQ(ended.terminationStatus, status);
        EXPECT_FALSE(ended.uncaughtSignal);
    }
}

TEST(LinuxTaskLauncher, SignalThatEndsTheChildIsTold) {
    const TaskExit ended = exitOf(shell("printf before; kill -KILL $$"));
    EXPECT_TRUE(ended.uncaughtSignal);
    EXPECT_EQ(ended.terminationStatus, SIGKILL);
    EXPECT_EQ(ended.output.view(), "before");
}

TEST(LinuxTaskLauncher, RunsInTheFolderAskedFor) {
    const TemporaryFolder folder;
    TaskRequest request = shell("pwd -P");
    request.currentDirectoryPath = string(folder.path());
    EXPECT_EQ(exitOf(request).output.view(), std::filesystem::canonical(folder.path()).string() + "\n");
    EXPECT_EQ(outputOf("pwd -P"), std::filesystem::current_path().string() + "\n");
}

TEST(LinuxTaskLauncher, ProgramWhoseNameIsNotUTF8Runs) {
    const TemporaryFolder folder;
    std::filesystem::copy_file("/bin/sh", folder.path("caf\xE9"));
    TaskRequest request = shell("printf here");
    request.launchPath = string(folder.path()) + NSString(u"/caf\xDCE9"sv);
    EXPECT_EQ(exitOf(request).output.view(), "here");
}

TEST(LinuxTaskLauncher, HundredMegabytesAreComplete) {
    constexpr std::size_t kSize = 100'000'000;
    const TaskExit ended = exitOf(shell("head -c 100000000 /dev/zero | tr '\\0' 'x'"));
    EXPECT_EQ(ended.output.length(), kSize);
    EXPECT_EQ(ended.output.view().find_first_not_of('x'), std::string_view::npos);
}

TEST(LinuxTaskLauncher, FloodOnStandardErrorBlocksNobody) {
    TaskRequest request = shell("head -c 5000000 /dev/zero >&2; printf done");
    request.standardError = TaskStream::Discard;
    EXPECT_EQ(exitOf(request).output.view(), "done");
}

TEST(LinuxTaskLauncher, DiscardedOutputIsNotCollected) {
    TaskRequest request = shell("head -c 5000000 /dev/zero");
    request.standardOutput = TaskStream::Discard;
    const TaskExit ended = exitOf(request);
    EXPECT_EQ(ended.terminationStatus, 0);
    EXPECT_TRUE(ended.output.isEmpty());
}

TEST(LinuxTaskLauncher, GrandchildThatKeepsTheStreamOpenIsWaitedFor) {
    EXPECT_EQ(outputOf("(read line; printf late) </dev/null & printf early; wait"), "earlylate");
}

TEST(LinuxTaskLauncher, SignalsStartFreshInTheChild) {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    struct sigaction pipeBefore {};
    struct sigaction interruptBefore {};
    ASSERT_EQ(::sigaction(SIGPIPE, &ignore, &pipeBefore), 0);
    ASSERT_EQ(::sigaction(SIGINT, &ignore, &interruptBefore), 0);
    sigset_t blocked;
    sigset_t before;
    sigfillset(&blocked);
    ASSERT_EQ(::pthread_sigmask(SIG_SETMASK, &blocked, &before), 0);
    TaskRequest request = shell("");
    request.launchPath = "/bin/grep";
    request.arguments = {"-E", "^Sig(Blk|Ign)", "/proc/self/status"};
    const TaskExit ended = exitOf(request);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ::sigaction(SIGPIPE, &pipeBefore, nullptr);
    ::sigaction(SIGINT, &interruptBefore, nullptr);
    const std::string status(ended.output.view());
    const auto signalSet = [&status](const std::string& name) {
        const std::size_t at = status.find(name + ":\t");
        return at == std::string::npos ? ~0ULL : std::stoull(status.substr(at + name.size() + 2), nullptr, 16);
    };
    // 32 and 33 are the C library's own; it ignores them between the start of a child and that of its program.
    constexpr unsigned long long kOfLibrary = 3ULL << 31U;
    EXPECT_EQ(signalSet("SigBlk"), 0U);
    EXPECT_EQ(signalSet("SigIgn") & ~kOfLibrary, 0U);
}

TEST(LinuxTaskLauncher, ChildInheritsNoDescriptorButItsStandardStreams) {
    const int leaking = ::open("/dev/null", O_RDONLY); // without O_CLOEXEC, as a careless host has them
    ASSERT_GE(leaking, 3);
    const std::string list = outputOf("echo /proc/$$/fd/*; :");
    ::close(leaking);
    // The shell itself opens none for this: what it lists is what it was given.
    EXPECT_THAT(
        list,
        testing::MatchesRegex(
            "/proc/[0-9]+/fd/0 /proc/[0-9]+/fd/1 /proc/[0-9]+/fd/2( /proc/[0-9]+/fd/1[0-9])?( /proc/[0-9]+/fd/3)?\n"));
}

TEST(LinuxTaskLauncher, ManyRunsLeaveNothingBehind) {
    exitOf(shell(":"));
    const std::ptrdiff_t before = countOfDescriptors();
    TaskRequest request = shell("");
    request.launchPath = "/bin/true";
    request.arguments = {};
    TaskRequest failing = request;
    failing.launchPath = "/nonexistent";
    for (int run = 0; run < 1000; ++run) {
        EXPECT_EQ(exitOf(request).terminationStatus, 0);
        EXPECT_EQ(failureOf(failing), ENOENT);
    }
    EXPECT_EQ(countOfDescriptors(), before);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD) << "no child is left to wait for";
}

TEST(LinuxTaskLauncher, NoDescriptorLeftIsALaunchFailure) {
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none{3, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const int error = failureOf(shell(":"));
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_EQ(error, EMFILE);
}

TEST(LinuxTaskLauncher, SubstituteRunsOnlyWhereTheProgramIsMissing) {
    const TemporaryFolder folder;
    const std::string own = folder.write("own", "#!/bin/sh\nprintf 'own %s' \"$1\"\n");
    ASSERT_EQ(::chmod(own.c_str(), 0755), 0);
    LinuxTaskLauncher launcher({{folder.path("tool"), own}});
    TaskRequest request = shell("");
    request.launchPath = string(folder.path("tool"));
    request.arguments = {"-l"};
    EXPECT_EQ(std::get<TaskExit>(launcher.run(request)).output.view(), "own -l");
    std::filesystem::copy_file("/bin/echo", folder.path("tool"));
    EXPECT_EQ(std::get<TaskExit>(launcher.run(request)).output.view(), "-l\n");
}

// The following hosts are strange; each is a process of its own, so that this one stays sane.

// Runs `body` in a child of this process and passes on how many expectations failed there.
template <typename Body>
int inOwnProcess(Body body) {
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

TEST(LinuxTaskLauncher, HostWithoutStandardStreamsGetsItsOutput) {
    EXPECT_EQ(inOwnProcess([] {
                  ::close(STDIN_FILENO);
                  ::close(STDOUT_FILENO);
                  ::close(STDERR_FILENO);
                  EXPECT_EQ(outputOf("cat; printf here"), "here");
                  EXPECT_EQ(outputOf("readlink /proc/self/fd/0 /proc/self/fd/2"), "/dev/null\n/dev/null\n");
                  EXPECT_LT(::fcntl(STDIN_FILENO, F_GETFD), 0) << "still closed";
                  TaskRequest silent = shell("printf x");
                  silent.standardOutput = TaskStream::Discard;
                  silent.standardError = TaskStream::Discard;
                  EXPECT_EQ(exitOf(silent).terminationStatus, 0);
              }),
              0);
}

TEST(LinuxTaskLauncher, StandardStreamThatWouldCloseOnExecReachesTheChild) {
    EXPECT_EQ(inOwnProcess([] {
                  ::fcntl(STDIN_FILENO, F_SETFD, FD_CLOEXEC);
                  EXPECT_EQ(outputOf("test -e /proc/$$/fd/0 && printf open"), "open");
              }),
              0);
}

TEST(LinuxTaskLauncher, HostThatIgnoresItsChildrenGetsTheOutputAndNoSuccess) {
    EXPECT_EQ(inOwnProcess([] {
                  ::signal(SIGCHLD, SIG_IGN);
                  const TaskExit ended = exitOf(shell("printf all; exit 0"));
                  EXPECT_EQ(ended.output.view(), "all");
                  EXPECT_FALSE(ended.uncaughtSignal);
                  EXPECT_EQ(ended.terminationStatus, 255);
              }),
              0);
}

TEST(LinuxTaskLauncherThreads, RunsAtTheSameTimeDoNotMix) {
    constexpr int kThreads = 8;
    constexpr int kRuns = 25;
    std::vector<std::thread> threads;
    std::vector<int> wrong(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([number, &wrong] {
            LinuxTaskLauncher launcher;
            for (int run = 0; run < kRuns; ++run) {
                const std::string text = std::to_string(number) + ":" + std::to_string(run);
                const auto outcome = launcher.run(shell("printf " + text + "; exit " + std::to_string(number)));
                const auto* ended = std::get_if<TaskExit>(&outcome);
                if (ended == nullptr || ended->output.view() != text || ended->terminationStatus != number) {
                    ++wrong[static_cast<std::size_t>(number)];
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(wrong, testing::Each(0));
}

} // namespace
} // namespace qk::platform
