// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// One child process from start to end, in the kernel's terms.
namespace qk::platform {

enum class ChildStream {
    Inherit, ///< this process's own stream; where that is closed, /dev/null
    Collect, ///< into the result
    Discard, ///< /dev/null
};

struct ChildRequest {
    std::string path;                                    ///< relative to `workingDirectory` when that is given
    std::vector<std::string> arguments;                  ///< behind the program's own name, which is `path`
    std::optional<std::string> workingDirectory;         ///< nothing: this process's
    std::optional<std::vector<std::string>> environment; ///< "NAME=value"; nothing: this process's
    ChildStream input = ChildStream::Inherit;            ///< `Inherit` or `Discard`
    ChildStream output = ChildStream::Inherit;
    ChildStream error = ChildStream::Inherit;       ///< `Inherit` or `Discard`
    std::optional<std::chrono::milliseconds> limit; ///< when to kill the child and all that it has started
};

/// Bytes in memory of `malloc`, so that they can be handed on without a copy.
class MallocBytes {
public:
    struct Free {
        void operator()(char* bytes) const noexcept { std::free(bytes); }
    };

    MallocBytes() noexcept = default;
    MallocBytes(std::unique_ptr<char, Free> bytes, std::size_t length) noexcept
        : bytes_(std::move(bytes)), length_(length) {}

    [[nodiscard]] std::string_view view() const noexcept { return {bytes_.get(), length_}; }
    [[nodiscard]] std::size_t length() const noexcept { return length_; }
    /// Hands the memory to the caller; null when it is empty.
    [[nodiscard]] char* release() noexcept { return bytes_.release(); }

private:
    std::unique_ptr<char, Free> bytes_;
    std::size_t length_ = 0;
};

struct ChildExit {
    int status = 0;           ///< the exit status, or the signal's number
    bool signaled = false;    ///< whether a signal ended the child
    bool limitPassed = false; ///< whether the child was killed because `limit` had passed
    MallocBytes output;       ///< complete unless `limitPassed`
};

/// What `ChildExit::status` says when the child's end was taken away from this process: a host that ignores SIGCHLD or
/// waits for every child in another thread. Such an end is never reported as success.
inline constexpr int kUnknownExitStatus = 255;

/// Starts the program and waits for its end; the error number of the start when it fails. The child has default signal
/// dispositions, an empty signal mask and no descriptor above 2. Starting does not copy this process, however much
/// memory it holds. Threads: any, at the same time.
[[nodiscard]] std::variant<int, ChildExit> runChild(const ChildRequest& request);

} // namespace qk::platform
