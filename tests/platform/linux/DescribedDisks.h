// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/platform/linux/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <string_view>

/// Disks and mounts below a root folder, as /sys and /proc show them.
namespace qk::tests {

/// A block device at `place` below /sys/devices ("pci0000:00/usb1/block/sdb", "…/sdb/sdb1") with that number ("8:16").
inline void addBlockDevice(const TemporaryFolder& root, std::string_view place, std::string_view number) {
    const std::string folder = "sys/devices/" + std::string(place);
    const std::string name(place.substr(place.rfind('/') + 1));
    root.write(folder + "/dev", std::string(number) + "\n");
    for (const std::string& link : {"sys/dev/block/" + std::string(number), "sys/class/block/" + name}) {
        const std::filesystem::path path = root.path(link);
        std::filesystem::create_directories(path.parent_path());
        std::filesystem::create_directory_symlink(
            std::filesystem::path(root.path(folder)).lexically_relative(path.parent_path()), path);
    }
}

inline void addDisk(const TemporaryFolder& root, std::string_view place, std::string_view number,
                    bool isRemovable = false) {
    addBlockDevice(root, place, number);
    root.write("sys/devices/" + std::string(place) + "/removable", isRemovable ? "1\n" : "0\n");
}

inline void addPartition(const TemporaryFolder& root, std::string_view place, std::string_view number) {
    addBlockDevice(root, place, number);
    root.write("sys/devices/" + std::string(place) + "/partition", "1\n");
}

/// The mapped device at `place` lies on the device at `slave`.
inline void addSlave(const TemporaryFolder& root, std::string_view place, std::string_view slave) {
    const std::filesystem::path folder = root.path("sys/devices/" + std::string(place) + "/slaves");
    std::filesystem::create_directories(folder);
    const std::string target = root.path("sys/devices/" + std::string(slave));
    std::filesystem::create_directory_symlink(std::filesystem::path(target).lexically_relative(folder),
                                              folder / std::filesystem::path(target).filename());
}

/// A line of mountinfo. `path` is as the kernel writes it.
inline std::string mountLine(std::string_view device, std::string_view root, std::string_view path,
                             std::string_view type, std::string_view source, std::string_view options = "rw") {
    std::string line = "30 1 ";
    for (const std::string_view word : {device, root, path}) {
        line.append(word).append(" ");
    }
    line.append("rw,relatime shared:1 - ").append(type).append(" ").append(source).append(" ").append(options);
    return line + "\n";
}

} // namespace qk::tests
