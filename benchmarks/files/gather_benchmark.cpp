// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxDispatch.h"
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"
#include "QKFoundation/platform/linux/MetadataGatherer.h"

#include "benchmarks/files/GatherPeers.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <random>
#include <string>

/// The newest 40 of many files: 100,000, or as many as QK_BENCHMARK_FILES says, made in a temporary folder.
namespace {

using namespace qk;
using namespace qk::platform;

constexpr std::size_t kWanted = 40;

class Tree {
public:
    explicit Tree(int files) {
        std::string name = (std::filesystem::temp_directory_path() / "qkfoundation-gather-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
        constexpr std::array kExtensions{"txt", "pdf", "png", "jpg", "odt", "zip", "mp3", "html", "csv", "docx"};
        constexpr int kFilesInFolder = 100;
        constexpr int kFoldersInFolder = 10;
        constexpr int kTenYears = 315'360'000;
        std::mt19937 random(1);
        std::uniform_int_distribution<time_t> date(1'400'000'000, 1'400'000'000 + kTenYears);
        std::string folder;
        for (int index = 0; index < files; ++index) {
            if (index % kFilesInFolder == 0) {
                const int number = index / kFilesInFolder;
                folder =
                    path_ + "/project " + std::to_string(number / kFoldersInFolder) + "/part " + std::to_string(number);
                std::filesystem::create_directories(folder);
            }
            const std::string file = folder + "/document " + std::to_string(index) + "." +
                                     kExtensions[static_cast<std::size_t>(index) % kExtensions.size()];
            std::ofstream{file};
            const timespec times[2] = {{.tv_sec = date(random), .tv_nsec = 0}, {.tv_sec = date(random), .tv_nsec = 0}};
            ::utimensat(AT_FDCWD, file.c_str(), times, 0);
        }
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree() { std::filesystem::remove_all(path_); }

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
};

// Nobody helps.
class OneThread final : public Dispatch {
public:
    [[nodiscard]] bool isMainThread() const override { return true; }
    [[nodiscard]] std::shared_ptr<RunLoop> mainRunLoop() override { return nullptr; }
    [[nodiscard]] std::shared_ptr<RunLoop> currentRunLoop() override { return nullptr; }
    void asyncOnMainQueue(std::function<void()> /*task*/) override {}
    void syncOnMainQueue(const std::function<void()>& /*task*/) override {}
    void asyncOnBackgroundQueue(std::function<void()> /*task*/) override {}
};

std::vector<std::string> newestByIndex(const std::string& root, const std::shared_ptr<Dispatch>& dispatch) {
    MetadataSearch search;
    search.predicate = NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.data'");
    search.sortDescriptors = {{kMDItemContentModificationDate, false}, {kMDItemLastUsedDate, false}};
    search.limit = kWanted;
    const auto gatherer =
        std::make_shared<MetadataGatherer>(search, MetadataPlaces{.scopes = {root}, .recentlyUsedList = "", .root = ""},
                                           dispatch, std::make_shared<LinuxUniformTypes>());
    const auto results = gatherer->gather(nullptr);
    std::vector<std::string> paths;
    for (const auto& item : results.value()) {
        paths.push_back(item->valueForAttribute(NSMetadataItemPathKey)->as<NSString>()->utf8Lossy());
    }
    return paths;
}

// Seconds of processor time of the programs that were run.
double ofChildren() {
    rusage used{};
    ::getrusage(RUSAGE_CHILDREN, &used);
    constexpr double kMicro = 1e-6;
    return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
           static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) * kMicro;
}

void measure(benchmark::State& state, const std::function<std::vector<std::string>()>& gather) {
    const double before = ofChildren();
    for (auto unused : state) {
        static_cast<void>(unused);
        if (gather().size() != kWanted) {
            state.SkipWithError("not all were found");
        }
    }
    state.counters["children"] = benchmark::Counter(ofChildren() - before, benchmark::Counter::kAvgIterations);
}

void add(const char* name, std::function<std::vector<std::string>()> gather) {
    benchmark::RegisterBenchmark(name,
                                 [gather = std::move(gather)](benchmark::State& state) { measure(state, gather); })
        ->UseRealTime()
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv) {
    constexpr int kFiles = 100'000;
    const char* const wanted = std::getenv("QK_BENCHMARK_FILES");
    const Tree tree(wanted != nullptr ? std::atoi(wanted) : kFiles);
    const std::string& root = tree.path();
    const auto alone = std::make_shared<OneThread>();
    const auto helped = std::make_shared<LinuxDispatch>();
    if (newestByIndex(root, helped) != bench::newestByHand(root, kWanted)) {
        std::cerr << "The newest files are not those that the bare loop finds.\n";
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    add("ours, one thread", [&] { return newestByIndex(root, alone); });
    add("ours", [&] { return newestByIndex(root, helped); });
    add("bare loop", [&] { return bench::newestByHand(root, kWanted); });
    add("std::filesystem", [&] { return bench::newestByFileSystem(root, kWanted); });
    add("nftw", [&] { return bench::newestByNftw(root, kWanted); });
    add("fts", [&] { return bench::newestByFts(root, kWanted); });
    add("find, sort, head", [&] { return bench::newestByFind(root, kWanted); });
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    std::cerr << "largest memory: " << used.ru_maxrss << " kB\n";
    return 0;
}
