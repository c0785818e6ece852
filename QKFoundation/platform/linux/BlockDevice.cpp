// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BlockDevice.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

constexpr int kDeepest = 8; // mapped devices on mapped devices

struct FreePath {
    void operator()(char* path) const noexcept { std::free(path); }
};

std::string realPath(const std::string& path) {
    const std::unique_ptr<char, FreePath> resolved(::realpath(path.c_str(), nullptr));
    return resolved != nullptr ? std::string(resolved.get()) : std::string();
}

bool exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

bool isExternal(std::string_view devicePath) {
    static constexpr std::array<std::string_view, 5> kBuses{"/usb", "/firewire", "/thunderbolt", "/mmc",
                                                            "/nvme-fabrics"};
    devicePath.remove_prefix(std::min(devicePath.rfind("/sys/"), devicePath.size())); // the root may be anywhere
    return std::ranges::any_of(kBuses,
                               [&](std::string_view bus) { return devicePath.find(bus) != std::string_view::npos; });
}

// Adds the disk in `folder`, or the disks that it lies on.
void addDisk(const std::string& folder, BlockDevice& device, int depth) {
    const auto slaves = readDirectory(folder + "/slaves").value_or(std::vector<std::string>());
    if (!slaves.empty() && depth < kDeepest) {
        for (const std::string& slave : slaves) {
            const std::string target = realPath(folder + "/slaves/" + slave);
            addDisk(exists(target + "/partition") ? target.substr(0, target.rfind('/')) : target, device, depth + 1);
        }
        return;
    }
    const auto removable = readBytes(folder + "/removable");
    const std::string_view name = std::string_view(folder).substr(folder.rfind('/') + 1);
    device.isRemovable |= removable.has_value() && parse::singleNumber(*removable).value_or(0) == 1;
    device.isEjectable |= name.starts_with("sr") || exists(folder + "/loop/backing_file");
    device.isInternal &= !isExternal(folder);
}

} // namespace

std::string blockDeviceNumber(const LinuxRoot& root, const std::string& number, const std::string& source) {
    if (exists(root.path("/sys/dev/block/") + number) || !source.starts_with("/dev/")) {
        return number;
    }
    const std::string node = realPath(root.path(source));
    const std::string name = node.substr(node.rfind('/') + 1);
    const auto told = name.empty() ? std::nullopt : readBytes(root.path("/sys/class/block/") + name + "/dev");
    return told.has_value() ? std::string(parse::trimmed(told->substr(0, told->find('\n')))) : number;
}

BlockDevice readBlockDevice(const LinuxRoot& root, const std::string& number) {
    BlockDevice device;
    const std::string folder = realPath(root.path("/sys/dev/block/") + number);
    if (folder.empty()) {
        return device;
    }
    addDisk(exists(folder + "/partition") ? folder.substr(0, folder.rfind('/')) : folder, device, 0);
    return device;
}

} // namespace qk::platform
