// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/FileIdentity.h"
#include "QKFoundation/platform/linux/ReadBytes.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace qk::platform {

/// What a small file says that is asked for again and again and seldom changes: it is read again when the kernel tells
/// of another file there, or of a change. One look at its times costs a third of reading it. What changed a moment
/// before it was read is not remembered, since the next change may bear the same time. Threads: any, at the same time.
template <typename Content>
class RememberedFile {
public:
    using Parse = Content (*)(std::string_view);
    using Clock = std::int64_t (*)();

    /// A file of more than `limit` bytes counts as one that is not there. `clock` tells nanoseconds since 1970.
    RememberedFile(std::string path, std::size_t limit, Parse parse, Clock clock = present)
        : path_(std::move(path)), limit_(limit), parse_(parse), clock_(clock) {}

    /// Null where the file cannot be read.
    [[nodiscard]] std::shared_ptr<const Content> read() {
        const std::optional<FileIdentity> found = FileIdentity::at(path_);
        const std::scoped_lock lock(mutex_);
        if (content_ != nullptr && found == identity_) {
            return content_;
        }
        content_ = nullptr;
        const std::optional<std::string> bytes = found.has_value() ? readBytes(path_, limit_) : std::nullopt;
        if (!bytes.has_value()) {
            return nullptr;
        }
        auto content = std::make_shared<const Content>(parse_(*bytes));
        // The path may have led elsewhere meanwhile.
        if (found->isSettled(clock_()) && FileIdentity::at(path_) == found) {
            identity_ = found;
            content_ = content;
        }
        return content;
    }

private:
    [[nodiscard]] static std::int64_t present() {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    }

    const std::string path_;
    const std::size_t limit_;
    const Parse parse_;
    const Clock clock_;
    std::mutex mutex_;
    std::optional<FileIdentity> identity_;   // of what is remembered
    std::shared_ptr<const Content> content_; // null: nothing is remembered
};

} // namespace qk::platform
