// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Hardware.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"
#include "QKFoundation/platform/linux/parse/Processors.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace qk::platform::hardware {
namespace {

constexpr std::string_view kProcessors = "/sys/devices/system/cpu";
constexpr std::string_view kMemory = "/sys/devices/system/memory";

std::optional<std::string> readText(const LinuxRoot& root, std::string_view path) {
    const std::optional<std::string> bytes = readBytes(root.path(path));
    return bytes.has_value() ? parse::singleText(*bytes) : std::nullopt;
}

std::optional<std::uint64_t> readNumber(const std::string& path, int base = 10) {
    const std::optional<std::string> bytes = readBytes(path);
    return bytes.has_value() ? parse::singleNumber(*bytes, base) : std::nullopt;
}

parse::ProcessorInfo readProcessorInfo(const LinuxRoot& root) {
    return parse::processorInfo(readBytes(root.path("/proc/cpuinfo")).value_or(std::string()));
}

std::optional<std::vector<parse::ProcessorRange>> readOnlineProcessors(const LinuxRoot& root) {
    const std::optional<std::string> bytes = readBytes(root.path(kProcessors) + "/online");
    return bytes.has_value() ? parse::processorList(*bytes) : std::nullopt;
}

// -1 stands for "not known" in these files (a package of an ARM board), and is as good an identity as any number.
using Core = std::pair<std::string, std::string>;

std::optional<Core> readCore(const LinuxRoot& root, std::uint32_t processor) {
    const std::string topology = root.path(kProcessors) + "/cpu" + std::to_string(processor) + "/topology";
    std::optional<std::string> package = readBytes(topology + "/physical_package_id");
    std::optional<std::string> core = readBytes(topology + "/core_id");
    if (!package.has_value() || !core.has_value()) {
        return std::nullopt;
    }
    return Core(*std::move(package), *std::move(core));
}

std::optional<std::uint64_t> installedMemory(const LinuxRoot& root) {
    const std::string folder = root.path(kMemory);
    const std::optional<std::uint64_t> blockSize = readNumber(folder + "/block_size_bytes", 16);
    const std::optional<std::vector<std::string>> entries = readDirectory(folder);
    if (!blockSize.has_value() || !entries.has_value()) {
        return std::nullopt;
    }
    const auto online = static_cast<std::uint64_t>(std::ranges::count_if(*entries, [&folder](const std::string& entry) {
        return parse::numberBehind("memory", entry).has_value() &&
               readBytes(folder + "/" + entry + "/state") == "online\n";
    }));
    if (online == 0 || *blockSize == 0 || *blockSize > std::numeric_limits<std::uint64_t>::max() / online) {
        return std::nullopt;
    }
    return online * *blockSize;
}

} // namespace

std::optional<std::string> model(const LinuxRoot& root) {
    std::optional<std::string> product = readText(root, "/sys/class/dmi/id/product_name");
    return product.has_value() ? product : readText(root, "/proc/device-tree/model");
}

std::optional<std::string> processorName(const LinuxRoot& root) {
    return readProcessorInfo(root).modelName;
}

std::optional<std::uint32_t> physicalProcessors(const LinuxRoot& root) {
    std::set<Core> cores;
    const auto online = readOnlineProcessors(root).value_or(std::vector<parse::ProcessorRange>());
    for (const parse::ProcessorRange& range : online) {
        for (std::uint32_t processor = range.first; processor <= range.last; ++processor) {
            std::optional<Core> core = readCore(root, processor);
            if (!core.has_value()) {
                return logicalProcessors(root);
            }
            cores.insert(*std::move(core));
        }
    }
    return cores.empty() ? logicalProcessors(root) : static_cast<std::uint32_t>(cores.size());
}

std::optional<std::uint32_t> logicalProcessors(const LinuxRoot& root) {
    if (const auto online = readOnlineProcessors(root); online.has_value()) {
        return parse::countOfProcessors(*online);
    }
    const std::uint32_t listed = readProcessorInfo(root).processors;
    return listed != 0 ? std::optional(listed) : std::nullopt;
}

std::optional<std::uint64_t> maximumFrequency(const LinuxRoot& root) {
    constexpr std::uint64_t kUnit = 1000; // the file counts kHz
    const std::string folder = root.path(kProcessors);
    std::optional<std::uint64_t> largest;
    for (const std::string& entry : readDirectory(folder).value_or(std::vector<std::string>())) {
        if (!parse::numberBehind("cpu", entry).has_value()) {
            continue;
        }
        const std::optional<std::uint64_t> frequency = readNumber(folder + "/" + entry + "/cpufreq/cpuinfo_max_freq");
        if (frequency.value_or(0) != 0 && *frequency <= std::numeric_limits<std::uint64_t>::max() / kUnit) {
            largest = std::max(largest.value_or(0), *frequency * kUnit);
        }
    }
    return largest;
}

std::optional<std::uint64_t> memorySize(const LinuxRoot& root) {
    if (const std::optional<std::uint64_t> installed = installedMemory(root); installed.has_value()) {
        return installed;
    }
    const std::optional<std::string> bytes = readBytes(root.path("/proc/meminfo"));
    return bytes.has_value() ? parse::memoryTotal(*bytes) : std::nullopt;
}

std::optional<bool> is64BitCapable(const LinuxRoot& root) {
    const parse::ProcessorInfo info = readProcessorInfo(root);
    if (info.longMode.has_value()) {
        return info.longMode;
    }
    constexpr bool kThisProgramIs64Bit = sizeof(void*) == 8;
    return kThisProgramIs64Bit ? std::optional(true) : std::nullopt;
}

} // namespace qk::platform::hardware
