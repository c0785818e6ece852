// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/codecs/Jobs.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace {

using namespace qk::bench;

constexpr int kRounds = 8;

struct Setting {
    const char* name;
    Job job;
};
constexpr Setting kSettings[] = {{"read XML", Job::readXML},
                                 {"read binary", Job::readBinary},
                                 {"write XML", Job::writeXML},
                                 {"write binary", Job::writeBinary}};

void add(const std::string& name, const std::function<void()>& work) {
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
        for (auto unused : state) {
            static_cast<void>(unused);
            work();
            benchmark::ClobberMemory();
        }
    });
}

void addPlistlib(const Setting& setting) {
    benchmark::RegisterBenchmark((setting.name + std::string("/plistlib")).c_str(),
                                 [job = setting.job](benchmark::State& state) {
                                     for (auto unused : state) {
                                         static_cast<void>(unused);
                                         const double seconds = plistlib(job);
                                         if (seconds == 0) {
                                             state.SkipWithError("not installed");
                                             return;
                                         }
                                         state.SetIterationTime(seconds);
                                     }
                                 })
        ->UseManualTime()
        ->Iterations(1);
}

void addDigests(std::size_t size, const char* name) {
    const std::string text(size, 'x');
    add(std::string("SHA-1 of ") + name + "/ours", [text] { ourSHA1(text); });
    add(std::string("SHA-1 of ") + name + "/bare", [text] { libcryptoSHA1(text); });
}

} // namespace

/// Formats and digests beside the libraries that they stand on and beside Python. Everything is measured in several
/// rounds, since what else runs on the machine comes and goes; `benchmarks/codecs/ratios` takes the median of each.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (int round = 0; round < kRounds; ++round) {
        for (const Setting& setting : kSettings) {
            add(setting.name + std::string("/ours"), [job = setting.job] { ours(job); });
            add(setting.name + std::string("/bare"), [job = setting.job] { libplist(job); });
            if (round == 0) {
                addPlistlib(setting);
            }
        }
        addDigests(16, "16 B");
        addDigests(std::size_t{1} << 10U, "1 KB");
        addDigests(std::size_t{64} << 10U, "64 KB");
        addDigests(std::size_t{1} << 20U, "1 MB");
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
