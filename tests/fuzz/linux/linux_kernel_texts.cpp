// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/KernelTexts.h"
#include "QKFoundation/platform/linux/parse/Processors.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What /proc and /sys show, each parser on the same bytes.
namespace {

using qk::fuzz::require;
namespace parse = qk::platform::parse;

void checkProcessorList(std::string_view text) {
    const auto ranges = parse::processorList(text);
    if (!ranges.has_value()) {
        return;
    }
    require(!ranges->empty() && parse::countOfProcessors(*ranges) >= ranges->size());
    std::string written;
    for (const parse::ProcessorRange& range : *ranges) {
        written += (written.empty() ? "" : ",") + std::to_string(range.first) + "-" + std::to_string(range.last);
    }
    require(parse::processorList(written) == ranges);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkProcessorList(text);
    const parse::ProcessorInfo info = parse::processorInfo(text);
    require(!info.modelName.has_value() || !info.modelName->empty());
    if (const auto memory = parse::memoryTotal(text); memory.has_value()) {
        require(*memory % 1024 == 0);
    }
    static_cast<void>(parse::bootTime(text));
    static_cast<void>(parse::singleNumber(text));
    static_cast<void>(parse::singleNumber(text, 16));
    static_cast<void>(parse::numberBehind("cpu", text));
    if (const auto single = parse::singleText(text); single.has_value()) {
        require(!single->empty() && single->find('\0') == std::string::npos && text.starts_with(*single));
    }
    return 0;
}
