// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <dirent.h>
#include <unistd.h>

#include <utility>

namespace qk::platform {

/// Owns one handle of the operating system and gives it back at the end of its life.
/// `Policy` names the handle's type (`Handle`), the value that means none (`none()`) and how one is given back
/// (`close`).
template <typename Policy>
class UniqueHandle {
public:
    using Handle = typename Policy::Handle;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Handle handle) noexcept : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        reset(other.release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { reset(); }

    [[nodiscard]] Handle get() const noexcept { return handle_; }
    [[nodiscard]] explicit operator bool() const noexcept { return handle_ != Policy::none(); }

    /// Hands the handle to the caller, who closes it from now on.
    [[nodiscard]] Handle release() noexcept { return std::exchange(handle_, Policy::none()); }

    /// Gives the present handle back and takes `handle` over.
    void reset(Handle handle = Policy::none()) noexcept {
        if (const Handle previous = std::exchange(handle_, handle); previous != Policy::none()) {
            Policy::close(previous);
        }
    }

private:
    Handle handle_ = Policy::none();
};

struct FileDescriptorPolicy {
    using Handle = int;
    static constexpr int none() noexcept { return -1; }
    // No retry: Linux has freed the descriptor even when close is interrupted.
    static void close(int descriptor) noexcept { ::close(descriptor); }
};
using UniqueFD = UniqueHandle<FileDescriptorPolicy>;

struct DirectoryPolicy {
    using Handle = DIR*;
    static constexpr DIR* none() noexcept { return nullptr; }
    static void close(DIR* directory) noexcept { ::closedir(directory); }
};
using UniqueDirectory = UniqueHandle<DirectoryPolicy>;

} // namespace qk::platform
