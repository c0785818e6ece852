// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileIdentity.h"

#include "QKFoundation/platform/linux/Nanoseconds.h"

#include <algorithm>

namespace qk::platform {
namespace {

constexpr std::int64_t kCoarsest = 3'000'000'000; // FAT counts every other second

} // namespace

FileIdentity FileIdentity::of(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim.tv_sec, status.st_mtim.tv_nsec),
            nanoseconds(status.st_ctim.tv_sec, status.st_ctim.tv_nsec)};
}

std::optional<FileIdentity> FileIdentity::at(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional(of(status)) : std::nullopt;
}

bool FileIdentity::isSettled(std::int64_t now) const noexcept {
    return std::max(modified, changed) <= now - kCoarsest;
}

} // namespace qk::platform
