// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFileEventWatcher.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include "benchmarks/files/WatchPeers.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

/// Beginning to watch a tree of 10,000 folders with a file in each, in the folder that TMPDIR names.
namespace {

using namespace qk::benchmarks;
using namespace qk::platform;

constexpr int kTop = 100;
constexpr int kBelow = 99;

class Tree {
public:
    Tree() {
        std::string name = (std::filesystem::temp_directory_path() / "qkfoundation-watch-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
        for (int top = 0; top < kTop; ++top) {
            for (int below = 0; below < kBelow; ++below) {
                const std::string folder = path_ + "/folder" + std::to_string(top) + "/below" + std::to_string(below);
                std::filesystem::create_directories(folder);
                std::ofstream(folder + "/file") << "content";
            }
        }
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree() { std::filesystem::remove_all(path_); }

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
};

// The end of a watch is not part of the time.
template <typename Watch>
void setUp(benchmark::State& state, Watch watch) {
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        auto watcher = watch();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        if (watcher == nullptr) {
            state.SkipWithError("not allowed here");
            return;
        }
        state.SetIterationTime(time.count());
    }
}

template <typename Watch>
void add(const char* name, Watch watch) {
    benchmark::RegisterBenchmark(name, [watch](benchmark::State& state) { setUp(state, watch); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    const Tree tree;
    const std::string& top = tree.path();
    const auto loop = LinuxRunLoop::make();
    add("set_up/ours_inotify", [&] { return watchWithInotify(loop, {top}, [](auto, auto) {}); });
    add("set_up/ours_fanotify", [&] { return watchWithFanotify(loop, {top}, [](auto, auto) {}); });
    add("set_up/inotify_by_hand", [&] { return watchByHand(top); });
#if defined(QK_HAVE_GIO)
    add("set_up/gio", [&] { return watchWithGIO(top); });
#endif
#if defined(QK_HAVE_QT)
    add("set_up/qt", [&] { return watchWithQt(top); });
#endif
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
