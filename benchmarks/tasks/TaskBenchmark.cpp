// SPDX-License-Identifier: Apache-2.0
// Running a child and taking what it prints, beside the same through the system's own means and its usual libraries.
#include "QKFoundation/platform/linux/LinuxTaskLauncher.h"

#include "benchmarks/tasks/Peers.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace qk::benchmarks;
using qk::NSString;
using qk::platform::LinuxTaskLauncher;
using qk::platform::TaskExit;
using qk::platform::TaskRequest;
using qk::platform::TaskStream;

constexpr std::size_t kOutputSize = 100'000'000;
constexpr std::size_t kGigabyte = std::size_t{1} << 30U;
constexpr std::string_view kWriterOption = "--write-output";

std::size_t runOurs(const Command& command) {
    TaskRequest request;
    request.launchPath = NSString::fromUTF8Lossy(command.path);
    for (const std::string& argument : command.arguments) {
        request.arguments.push_back(NSString::fromUTF8Lossy(argument));
    }
    request.standardOutput = TaskStream::Collect;
    request.standardError = TaskStream::Discard;
    const auto outcome = LinuxTaskLauncher().run(request);
    const auto* ended = std::get_if<TaskExit>(&outcome);
    return ended != nullptr ? ended->output.length() : 0;
}

using Runner = std::size_t (*)(const Command&);

void measure(benchmark::State& state, Runner run, const Command& command, std::size_t expected) {
    for (auto _ : state) {
        if (run(command) != expected) {
            state.SkipWithError("the output is not complete");
            return;
        }
    }
}

struct Peer {
    const char* name;
    Runner run;
};

std::vector<Peer> peers() {
    std::vector<Peer> result = {
        {"posix_spawn", runBareSpawn}, {"ours", runOurs}, {"fork", runFork}, {"popen", runPopen}};
    if (runGLib != nullptr) {
        result.push_back({"g_spawn_sync", runGLib});
    }
    return result;
}

// Memory that this process holds while it starts children: what fork copies the tables of.
std::unique_ptr<char[]> ballast;

void holdMemory(std::size_t size) {
    ballast.reset(size != 0 ? new char[size] : nullptr);
    if (size != 0) {
        std::memset(ballast.get(), 1, size);
    }
}

void registerAll(const std::string& self) {
    const Command output{self, {std::string(kWriterOption), std::to_string(kOutputSize)}};
    const Command nothing{"/bin/true", {}};
    for (const Peer& peer : peers()) {
        benchmark::RegisterBenchmark(
            ("output_100MB/" + std::string(peer.name)).c_str(),
            [peer, output](benchmark::State& state) { measure(state, peer.run, output, kOutputSize); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    for (const std::size_t held : {std::size_t{0}, kGigabyte}) {
        for (const Peer& peer : peers()) {
            benchmark::RegisterBenchmark((std::string(held == 0 ? "start/" : "start_holding_1GB/") + peer.name).c_str(),
                                         [peer, nothing, held](benchmark::State& state) {
                                             holdMemory(held);
                                             measure(state, peer.run, nothing, 0);
                                             holdMemory(0);
                                         })
                ->Unit(benchmark::kMicrosecond)
                ->UseRealTime();
        }
    }
}

// The child of the output benchmark: writes `size` bytes as fast as the pipe takes them.
int writeOutput(std::size_t size) {
    static std::array<char, std::size_t{1} << 20U> block;
    block.fill('x');
    while (size > 0) {
        const ssize_t written = ::write(STDOUT_FILENO, block.data(), std::min(size, block.size()));
        if (written <= 0) {
            return 1;
        }
        size -= static_cast<std::size_t>(written);
    }
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    if (count == 3 && arguments[1] == kWriterOption) {
        return writeOutput(std::strtoull(arguments[2], nullptr, 10));
    }
    std::array<char, 4096> self{};
    if (::readlink("/proc/self/exe", self.data(), self.size() - 1) < 0) {
        return 1;
    }
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 1;
    }
    registerAll(self.data());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
