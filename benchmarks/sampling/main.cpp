// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Crowd.h"
#include "benchmarks/sampling/Register.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

using namespace qk::bench;

constexpr int kRounds = 8;
constexpr std::size_t kManyMounts = 300;

/// A job on a machine of a certain size.
struct Setting {
    const char* name;
    Job job;
    std::size_t processes = 0;
    std::size_t mounts = 0;
};
constexpr Setting kSettings[] = {
    {"processors", Job::processors},
    {"memory", Job::memory},
    {"300 processes", Job::processes, 300},
    {"3000 processes", Job::processes, 3000},
    {"volumes", Job::volumes},
    {"volumes of 300 mounts more", Job::volumes, 0, kManyMounts},
};

// What runs in this thread is measured by its processor time, other programs tell theirs.
void add(const Setting& setting, const Competitor& competitor, Crowd& crowd, Mounts& mounts) {
    const std::string name = std::string(setting.name) + "/" + competitor.who;
    auto* const registered =
        benchmark::RegisterBenchmark(name.c_str(), [&setting, &competitor, &crowd, &mounts](benchmark::State& state) {
            crowd.growTo(setting.processes);
            mounts.growTo(setting.mounts);
            if (competitor.isOutside && competitor.sample() == 0) {
                state.SkipWithError("not installed");
                return;
            }
            for (auto unused : state) {
                static_cast<void>(unused);
                const double seconds = competitor.sample();
                if (competitor.isOutside) {
                    state.SetIterationTime(seconds);
                }
            }
        });
    if (competitor.isOutside) {
        registered->UseManualTime();
    }
}

} // namespace

/// The samplers beside their floors and their peers. Everything is measured in several rounds, since what else runs on
/// the machine comes and goes; `benchmarks/sampling/ratios` takes the best of each and prints the ratios.
int main(int argc, char** argv) {
    Mounts mounts; // before anything looks at them
    Crowd crowd;
    benchmark::Initialize(&argc, argv);
    std::ranges::stable_sort(competitors(), {}, [](const Competitor& one) { return std::string_view(one.who); });
    for (int round = 0; round < kRounds; ++round) {
        for (const Setting& setting : kSettings) {
            for (const Competitor& competitor : competitors()) {
                if (competitor.job == setting.job && (setting.mounts == 0 || mounts.areAllowed())) {
                    add(setting, competitor, crowd, mounts);
                }
            }
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
