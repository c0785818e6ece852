// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/parse/FileEvents.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qk::platform {

/// Which folder an event of fanotify(7) is about: paths by the kernel's handles, kept as long as no folder is renamed.
class FanotifyTrees {
public:
    /// The path of a folder that exists now, "" for one that is out of reach; nothing when it is gone.
    using Finder = std::function<std::optional<std::string>(const parse::FileIdentity& folder)>;
    /// `path` is below one of the roots, or is one.
    using Taker = std::function<void(std::string path, std::uint64_t mask)>;

    FanotifyTrees(std::vector<std::string> roots, Finder find) : roots_(std::move(roots)), find_(std::move(find)) {}

    /// Takes the events that one read brought, in order. Those in a folder that is gone wait until its own removal
    /// tells where it was, in this call or a later one. False when there is no room for so many of them, and what
    /// comes of some is not told.
    [[nodiscard]] bool take(const std::vector<parse::FanotifyEvent>& events, const Taker& told);

    /// Nobody will tell any more where the folders were that are waited for.
    void forgetWaiting() {
        waiting_.clear();
        waitingEvents_ = 0;
    }

    [[nodiscard]] std::size_t knownFolders() const noexcept { return known_.size(); }
    [[nodiscard]] std::size_t waitingEvents() const noexcept { return waitingEvents_; }

private:
    struct Waiting {
        std::string name;
        std::uint64_t mask;
        std::string target; // the key of what was removed, when it is a folder
    };

    [[nodiscard]] const std::string* pathOf(const parse::FileIdentity& folder, const std::string& key);
    [[nodiscard]] bool takeOne(const parse::FanotifyEvent& event, const Taker& told);
    void tell(const std::string& folder, Waiting first, const Taker& told);
    [[nodiscard]] std::vector<Waiting> takeWaiting(const std::string& folder);
    [[nodiscard]] bool isWatched(std::string_view path) const;

    const std::vector<std::string> roots_;
    const Finder find_;
    std::unordered_map<std::string, std::string> known_;            // path by handle, "" for one out of reach
    std::unordered_map<std::string, std::vector<Waiting>> waiting_; // by the handle of their folder
    std::size_t waitingEvents_ = 0;
};

} // namespace qk::platform
