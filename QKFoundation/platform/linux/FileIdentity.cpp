// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileIdentity.h"

#include <algorithm>

namespace qk::platform {
namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000; // of a second
constexpr std::int64_t kCoarsest = 3 * kNanoseconds; // FAT counts every other second

std::int64_t nanoseconds(const timespec& time) {
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

} // namespace

FileIdentity FileIdentity::of(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

std::optional<FileIdentity> FileIdentity::at(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional(of(status)) : std::nullopt;
}

bool FileIdentity::isSettled(std::int64_t now) const noexcept {
    return now - std::max(modified, changed) >= kCoarsest;
}

} // namespace qk::platform
