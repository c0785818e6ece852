// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace qk::platform {

/// The names of the files in one folder, as they are known from a listing and the events since. They are only needed
/// when events were lost, so they are kept small and cheap to add to rather than quick to find: one after another, a
/// later mention of a name in place of an earlier one.
class InotifyNames {
public:
    using Known = std::unordered_set<std::string>;

    /// `name` (of at most 65535 bytes) is in the folder now, or is not any more.
    void note(std::string_view name, bool isThere);

    /// All names that are in the folder; none are known afterwards.
    [[nodiscard]] Known take();

    [[nodiscard]] bool isEmpty() const noexcept { return bytes_.empty(); }
    [[nodiscard]] std::size_t size() const noexcept { return bytes_.size(); }

private:
    [[nodiscard]] Known read() const;
    void append(std::string_view name, bool isThere);

    std::string bytes_;
    std::size_t compactAt_ = 0; // bytes
};

} // namespace qk::platform
