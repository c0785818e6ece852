// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Network links and their devices below a root folder, as /sys and /run show them.
namespace qk::tests {

/// A machine in files.
class DescribedLinks {
public:
    [[nodiscard]] platform::LinuxRoot root() const { return platform::LinuxRoot(folder_.path()); }

    /// The device at `place` below /sys/devices ("pci0000:00/0000:00:03.0") is on that bus.
    void addDevice(std::string_view place, std::string_view bus) const {
        const std::filesystem::path folder = folder_.path("sys/devices/" + std::string(place));
        std::filesystem::create_directories(folder);
        std::filesystem::create_directory_symlink("/sys/bus/" + std::string(bus), folder / "subsystem");
    }
    /// A file of the device at `place`.
    void write(std::string_view place, std::string_view file, std::string_view content) const {
        folder_.write("sys/devices/" + std::string(place) + "/" + std::string(file), content);
    }
    /// A file anywhere.
    void writeFile(std::string_view path, std::string_view content) const { folder_.write(path, content); }

    /// A link whose device is at `place`. Its parent is as the kernel tells it: the device's name and bus.
    [[nodiscard]] platform::NetworkLink addLink(std::string_view name, std::string_view place,
                                                std::int32_t index = 2) const {
        const std::string target = "devices/" + std::string(place) + "/net/" + std::string(name);
        std::filesystem::create_directories(folder_.path("sys/" + target));
        std::filesystem::create_directories(folder_.path("sys/class/net"));
        std::filesystem::create_directory_symlink("../../" + target,
                                                  folder_.path("sys/class/net/" + std::string(name)));
        platform::NetworkLink link;
        link.index = index;
        link.name = name;
        link.parentDevice = std::string(place.substr(place.rfind('/') + 1));
        std::error_code none;
        const auto bus =
            std::filesystem::read_symlink(folder_.path("sys/devices/" + std::string(place) + "/subsystem"), none);
        if (!none) {
            link.parentBus = bus.filename().string();
        }
        return link;
    }

private:
    TemporaryFolder folder_;
};

/// A link without a device.
[[nodiscard]] inline platform::NetworkLink virtualLink(std::string_view name, std::int32_t index,
                                                       std::uint32_t flags = 0) {
    platform::NetworkLink link;
    link.index = index;
    link.name = name;
    link.flags = flags;
    return link;
}

} // namespace qk::tests
