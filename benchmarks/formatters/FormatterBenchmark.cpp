// SPDX-License-Identifier: Apache-2.0
// What one edit of a field costs: the field asks its formatter with every key, before it shows the character.
#include "QKFoundation/formatters/QKIDNameIPFormatter.h"
#include "QKFoundation/formatters/QKInstantSupportIdFormatter.h"
#include "QKFoundation/formatters/QKPasswordObfuscator.h"
#include "QKFoundation/formatters/QKStringLengthFormatter.h"
#include "QKFoundation/formatters/QKTFAFormatter.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <optional>

namespace {

using namespace qk; // NOLINT(google-build-using-namespace): a program of its own

struct Edit {
    NSString proposed;
    NSRange caret;
    NSString original;
    NSRange replaced;
};

void edit(benchmark::State& state, const NSFormatter& formatter, const Edit& one) {
    std::optional<NSString> error;
    for (auto _ : state) {
        NSString text = one.proposed;
        NSRange caret = one.caret;
        benchmark::DoNotOptimize(formatter.isPartialStringValid(text, caret, one.original, one.replaced, error));
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(caret);
    }
}

const Edit& tenthDigit() {
    static const Edit one{"123 456 7890", {12, 0}, "123 456 789", {11, 0}};
    return one;
}

const Edit& digitGone() { // the longest way: separators of both texts are counted
    static const Edit one{"1 234 67 890", {6, 0}, "1 234 567 890", {6, 1}};
    return one;
}

const Edit& tooMuch() { // cut, and formatted once more
    static const Edit one{"1 234 567 8901", {14, 0}, "1 234 567 890", {13, 0}};
    return one;
}

const Edit& meetingDigit() {
    static const Edit one{"m12-345-678", {11, 0}, "m12-345-67", {10, 0}};
    return one;
}

const Edit& address() {
    static const Edit one{"192.168.100.20", {14, 0}, "192.168.100.2", {13, 0}};
    return one;
}

const Edit& code() {
    static const Edit one{"123456", {6, 0}, "12345", {5, 0}};
    return one;
}

// The text is set as a bound field sets it, and the object makes its asterisks.
void setPassword(benchmark::State& state) {
    const auto obfuscator = QKPasswordObfuscator::init();
    const NSString password("correct horse");
    for (auto _ : state) {
        obfuscator->setDisplayPassword(password);
        benchmark::DoNotOptimize(obfuscator->displayPassword());
    }
}

void showCount(benchmark::State& state) {
    const auto formatter = QKStringLengthFormatter::init();
    const std::optional<Value> count(100);
    for (auto _ : state) {
        benchmark::DoNotOptimize(formatter->stringForObjectValue(count));
    }
}

// What a setter of an observable property adds while nobody observes.
void setUnobserved(benchmark::State& state) {
    const auto formatter = QKStringLengthFormatter::init();
    for (auto _ : state) {
        formatter->setMaxLength(3);
        benchmark::ClobberMemory();
    }
}

template <typename Formatter>
void add(const char* name, std::shared_ptr<Formatter> formatter, const Edit& one) {
    benchmark::RegisterBenchmark(name, [formatter, &one](benchmark::State& state) { edit(state, *formatter, one); });
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    add("edit/partner ID, the tenth digit", QKIDFormatter::init(), tenthDigit());
    add("edit/partner ID, a digit deleted", QKIDFormatter::init(), digitGone());
    add("edit/partner ID, one digit too many", QKIDFormatter::init(), tooMuch());
    add("edit/name or address, an address", QKIDNameIPFormatter::init(), address());
    add("edit/name or address, a partner ID", QKIDNameIPFormatter::init(), tenthDigit());
    add("edit/meeting ID", QKMeetingIDFormatter::init(), meetingDigit());
    add("edit/instant support", QKInstantSupportIdFormatter::init(), meetingDigit());
    add("edit/number", QKDecimalNumberFormatter::initWithCoder(NSCoder()), code());
    add("edit/two-factor code", QKTFAFormatter::initWithCoder(NSCoder()), code());
    benchmark::RegisterBenchmark("set/password", setPassword);
    benchmark::RegisterBenchmark("show/count", showCount);
    benchmark::RegisterBenchmark("set/unobserved property", setUnobserved);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
