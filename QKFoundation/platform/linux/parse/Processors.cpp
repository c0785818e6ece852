// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Processors.h"

#include "QKFoundation/platform/linux/parse/Text.h"

namespace qk::platform::parse {
namespace {

// Far above what any kernel is built for; keeps counts within 32 bits.
constexpr std::uint32_t kHighestProcessor = 1U << 20U;

bool containsWord(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        const std::size_t end = words.find(' ');
        if (words.substr(0, end) == word) {
            return true;
        }
        if (end == std::string_view::npos) {
            return false;
        }
        words.remove_prefix(end + 1);
    }
    return false;
}

std::optional<ProcessorRange> processorRange(std::string_view text) {
    const std::size_t dash = text.find('-');
    const auto first = number<std::uint32_t>(text.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : number<std::uint32_t>(text.substr(dash + 1));
    if (!first.has_value() || !last.has_value() || *first > *last || *last > kHighestProcessor) {
        return std::nullopt;
    }
    return ProcessorRange{*first, *last};
}

} // namespace

ProcessorInfo processorInfo(std::string_view cpuinfo) {
    ProcessorInfo info;
    forEachLine(cpuinfo, [&info](std::string_view line) {
        const auto sides = splitAt(line, ':');
        if (!sides.has_value()) {
            return true;
        }
        const auto& [key, value] = *sides;
        if (key == "processor") {
            ++info.processors;
        } else if (key == "model name" && !info.modelName.has_value() && !value.empty()) {
            info.modelName = std::string(value);
        } else if (key == "flags" && !info.longMode.has_value()) {
            info.longMode = containsWord(value, "lm");
        }
        return true;
    });
    return info;
}

std::optional<std::vector<ProcessorRange>> processorList(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    std::vector<ProcessorRange> ranges;
    for (;;) {
        const std::size_t comma = text.find(',');
        const std::optional<ProcessorRange> range = processorRange(text.substr(0, comma));
        if (!range.has_value() || (!ranges.empty() && range->first <= ranges.back().last)) {
            return std::nullopt;
        }
        ranges.push_back(*range);
        if (comma == std::string_view::npos) {
            return ranges;
        }
        text.remove_prefix(comma + 1);
    }
}

std::uint32_t countOfProcessors(const std::vector<ProcessorRange>& ranges) {
    std::uint32_t count = 0;
    for (const ProcessorRange& range : ranges) {
        count += range.last - range.first + 1;
    }
    return count;
}

std::optional<std::uint32_t> numberBehind(std::string_view prefix, std::string_view name) {
    if (!name.starts_with(prefix)) {
        return std::nullopt;
    }
    name.remove_prefix(prefix.size());
    if (name.size() > 1 && name.front() == '0') {
        return std::nullopt;
    }
    return number<std::uint32_t>(name);
}

} // namespace qk::platform::parse
