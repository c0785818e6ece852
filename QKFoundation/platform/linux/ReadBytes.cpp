// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ReadBytes.h"

#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace qk::platform {
namespace {

constexpr std::size_t kFirstRead = 4096;

int openRetrying(const char* path, int flags) {
    int descriptor = -1;
    do {
        descriptor = ::open(path, flags);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

} // namespace

std::optional<std::string> readBytes(const std::string& path, std::size_t limit) {
    const UniqueFD file(openRetrying(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!file) {
        return std::nullopt;
    }
    // The sizes of files under /proc and /sys say nothing, so the end is found by reading.
    std::string bytes;
    std::size_t length = 0;
    for (;;) {
        if (length == bytes.size()) {
            bytes.resize(std::min(std::max(kFirstRead, 2 * length), limit + 1));
        }
        const ssize_t count = ::read(file.get(), bytes.data() + length, bytes.size() - length);
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
        if (length > limit) {
            return std::nullopt;
        }
    }
    bytes.resize(length);
    return bytes;
}

std::optional<std::vector<std::string>> readDirectory(const std::string& path) {
    UniqueFD descriptor(openRetrying(path.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY));
    if (!descriptor) {
        return std::nullopt;
    }
    const UniqueDirectory directory(::fdopendir(descriptor.get()));
    if (!directory) {
        return std::nullopt;
    }
    static_cast<void>(descriptor.release()); // the directory stream closes it
    std::vector<std::string> names;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr) {
            break;
        }
        const std::string_view name(static_cast<const char*>(entry->d_name));
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
    if (errno != 0) {
        return std::nullopt;
    }
    return names;
}

} // namespace qk::platform
