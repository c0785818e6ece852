// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkDevice.h"

#include "QKFoundation/platform/linux/HardwareDatabase.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/HardwareDatabase.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kDeepest = 32; // bridges behind bridges
constexpr std::string_view kClassFolder = "/sys/class/net/";

std::string linkTarget(const std::string& path) {
    std::array<char, 4096> target; // NOLINT(cppcoreguidelines-pro-type-member-init): readlink writes it
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    return {target.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

std::optional<std::string> readText(const std::string& path) {
    const auto bytes = readBytes(path);
    return bytes.has_value() ? parse::singleText(*bytes) : std::nullopt;
}

// The folder of the device itself, as "/sys/devices/…", by the link "../../devices/…/net/eth0". None where the files
// are of another link with that name: in a container they may be those of the host's network.
std::string devicePath(const LinuxRoot& root, const NetworkLink& link) {
    const std::string target = linkTarget(root.path(kClassFolder) + link.name);
    const std::size_t begin = target.find("devices/");
    const std::size_t end = target.rfind("/net/");
    if (begin >= end || end == std::string::npos) {
        return {};
    }
    std::string path = "/sys/" + target.substr(begin, end - begin);
    return path.ends_with('/' + link.parentDevice.value_or(std::string())) ? path : std::string();
}

// A bus that leads out of the machine, or that plugs go into.
bool isExternal(std::string_view subsystem) {
    static constexpr std::array<std::string_view, 4> kBuses{"thunderbolt", "firewire", "pcmcia", "bluetooth"};
    return std::ranges::find(kBuses, subsystem) != kBuses.end();
}

// A bus inside of the machine, a hypervisor's own ones among them.
bool isInternal(std::string_view subsystem) {
    static constexpr std::array<std::string_view, 14> kBuses{"pci",       "platform", "virtio",   "vmbus",   "xen",
                                                             "sdio",      "ssb",      "bcma",     "vio",     "amba",
                                                             "auxiliary", "fsl-mc",   "mdio_bus", "ccwgroup"};
    return std::ranges::find(kBuses, subsystem) != kBuses.end();
}

// Whether the firmware marks the card itself as a part of the board; a controller that it is plugged into does not
// count.
bool isMarkedOnBoard(const std::vector<DeviceFolder>& devices) {
    const auto bus = std::ranges::find_if(devices, [](const DeviceFolder& device) {
        return device.subsystem == "pci" || device.subsystem == "usb" || isExternal(device.subsystem);
    });
    return bus != devices.end() && bus->subsystem == "pci" &&
           (readText(bus->path + "/acpi_index").has_value() || readText(bus->path + "/label").has_value());
}

std::optional<std::uint16_t> readNumber(const std::string& path) {
    const std::string text = readText(path).value_or(std::string());
    const auto number = parse::singleNumber(std::string_view(text).substr(text.starts_with("0x") ? 2 : 0), 16);
    return number.has_value() && *number <= std::numeric_limits<std::uint16_t>::max()
               ? std::optional(static_cast<std::uint16_t>(*number))
               : std::nullopt;
}

// The numbers by which people know a device. A device of a hypervisor's bus has others than the card that it is.
std::optional<HardwareNumbers> readNumbers(const std::vector<DeviceFolder>& devices) {
    for (const DeviceFolder& device : devices) {
        const bool isPCI = device.subsystem == "pci";
        if (!isPCI && device.subsystem != "usb") {
            continue;
        }
        const auto vendor = readNumber(device.path + (isPCI ? "/vendor" : "/idVendor"));
        const auto model = readNumber(device.path + (isPCI ? "/device" : "/idProduct"));
        if (vendor.has_value() && model.has_value()) {
            return HardwareNumbers{isPCI, *vendor, *model};
        }
    }
    return std::nullopt;
}

// What the nearest USB device says of itself; nothing for a device on another bus.
HardwareNames namesOfItself(const std::vector<DeviceFolder>& devices) {
    for (const DeviceFolder& device : devices) {
        if (device.subsystem == "pci") {
            break;
        }
        // An interface of a device ("1-2:1.0") is on the bus as well, but has no numbers of its own.
        if (device.subsystem == "usb" && readNumber(device.path + "/idVendor").has_value()) {
            return {readText(device.path + "/manufacturer"), readText(device.path + "/product")};
        }
    }
    return {};
}

// Takes what is missing from `others`; true when nothing is missing any more.
bool complete(HardwareNames& names, HardwareNames others) {
    if (!names.vendor.has_value()) {
        names.vendor = std::move(others.vendor);
    }
    if (!names.model.has_value()) {
        names.model = std::move(others.model);
    }
    return names.vendor.has_value() && names.model.has_value();
}

} // namespace

std::vector<DeviceFolder> deviceFolders(const LinuxRoot& root, const NetworkLink& link) {
    std::vector<DeviceFolder> devices;
    if (!link.parentDevice.has_value()) {
        return devices;
    }
    std::string path = devicePath(root, link);
    while (path.size() > std::string_view("/sys/devices").size() && devices.size() < kDeepest) {
        const std::string folder = root.path(path);
        const std::string subsystem = linkTarget(folder + "/subsystem");
        devices.push_back({folder, subsystem.substr(subsystem.rfind('/') + 1)});
        path.resize(path.rfind('/'));
    }
    return devices;
}

bool isBuiltIn(const LinuxRoot& root, const NetworkLink& link) {
    const std::vector<DeviceFolder> devices = deviceFolders(root, link);
    if (devices.empty()) { // virtual, or /sys is not there to mark anything
        return isInternal(link.parentBus.value_or(std::string()));
    }
    if (isMarkedOnBoard(devices)) {
        return true;
    }
    bool isOnUSB = false;
    bool isFixed = false; // the nearest device on USB; what it is plugged into is asked as well
    for (const DeviceFolder& device : devices) {
        const auto mark = readText(device.path + "/removable");
        if (mark == "removable" || isExternal(device.subsystem)) {
            return false;
        }
        isFixed = isFixed || (!isOnUSB && mark == "fixed");
        isOnUSB = isOnUSB || (device.subsystem == "usb" && mark.has_value());
    }
    return isOnUSB ? isFixed : isInternal(devices.front().subsystem);
}

HardwareNames readHardwareNames(const LinuxRoot& root, const NetworkLink& link) {
    HardwareNames names;
    if (!link.parentDevice.has_value()) {
        return names;
    }
    const auto record = readBytes(root.path("/run/udev/data/n") + std::to_string(link.index));
    if (complete(names, parse::databaseNames(record.value_or(std::string())))) {
        return names;
    }
    const std::vector<DeviceFolder> devices = deviceFolders(root, link);
    const std::optional<HardwareNumbers> numbers = readNumbers(devices);
    if (!complete(names, namesOfItself(devices)) && numbers.has_value() &&
        !complete(names, findInHardwareLists(root, *numbers)) && root.isHost()) {
        static_cast<void>(complete(names, findInHardwareIndex(*numbers)));
    }
    return names;
}

} // namespace qk::platform
