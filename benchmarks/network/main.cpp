// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/network/Machine.h"
#include "benchmarks/network/Register.h"

#include <algorithm>
#include <cstdio>
#include <list>
#include <string>
#include <string_view>

namespace qk::bench {

std::vector<Competitor>& competitors() {
    static auto& all = *new std::vector<Competitor>();
    return all;
}

} // namespace qk::bench

namespace {

using namespace qk::bench;

constexpr int kRounds = 8;
constexpr std::size_t kSizes[] = {1, 10, 200};

// What runs in this thread is measured by its processor time, other programs tell theirs.
void add(const Machine& machine, const Competitor& competitor) {
    const std::string name = std::to_string(machine.interfaces()) + "/" + competitor.who;
    auto* const registered =
        benchmark::RegisterBenchmark(name.c_str(), [&machine, &competitor](benchmark::State& state) {
            machine.enter();
            if (competitor.isOutside && competitor.read(machine.interfaces()) == 0) {
                state.SkipWithError("not installed");
                return;
            }
            for (auto unused : state) {
                static_cast<void>(unused);
                const double seconds = competitor.read(machine.interfaces());
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

/// All interfaces with their addresses, read by us and by others on machines of 1, 10 and 200 interfaces. Everything is
/// measured in several rounds, since what else runs on the machine comes and goes; `benchmarks/network/ratios` takes
/// the best of each and prints the ratios.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!leaveThisSystem()) {
        std::fputs("network_benchmark needs namespaces, which are not allowed here\n", stderr);
        return 1;
    }
    std::list<Machine> machines;
    for (const std::size_t size : kSizes) {
        if (!machines.emplace_back(size).isThere()) {
            std::fprintf(stderr, "a machine with %zu interfaces could not be made\n", size);
            return 1;
        }
    }
    std::ranges::stable_sort(competitors(), {}, [](const Competitor& one) { return std::string_view(one.who); });
    for (int round = 0; round < kRounds; ++round) {
        for (const Machine& machine : machines) {
            for (const Competitor& competitor : competitors()) {
                add(machine, competitor);
            }
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
