// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/text/Texts.h"

#include <benchmark/benchmark.h>

#include <array>
#include <deque>

namespace {

using qk::bench::Script;

constexpr std::array kScripts{Script::ascii, Script::latin, Script::cjk, Script::emoji};

struct Size {
    const char* name;
    std::size_t bytes;
};

/// Of the UTF-8 form.
constexpr std::array kSizes{Size{"16B", 16}, Size{"1KB", 1024}, Size{"1MB", 1024 * 1024}};

} // namespace

/// The text conversions beside those of ICU, Qt, GLib and iconv. `benchmarks/text/ratios` turns the JSON output into
/// tables.
int main(int argc, char** argv) {
    using namespace qk::bench;
    benchmark::Initialize(&argc, argv);
    std::deque<Text> texts;
    for (const Script script : kScripts) {
        for (const Size size : kSizes) {
            const Text& text = texts.emplace_back(makeText(script, size.bytes));
            const std::string name = std::string{nameOf(script)} + "/" + size.name;
            registerOurs(name, text);
            registerICU(name, text);
            registerQt(name, text);
            registerGLib(name, text);
            registerIconv(name, text);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
