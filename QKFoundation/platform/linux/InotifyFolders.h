// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/InotifyNames.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace qk::platform {

/// A folder of a watched tree.
struct InotifyFolder {
    InotifyFolder* parent = nullptr; ///< null for a root and for one that has been taken out of its tree
    InotifyFolder* firstChild = nullptr;
    InotifyFolder* next = nullptr; ///< of the same parent
    InotifyFolder* previous = nullptr;
    std::string name; ///< of a root its path
    int watch = -1;
    bool isRoot = false;
    bool isPolled = false;     ///< there was no watch left for it
    bool namesAreKept = true;  ///< false when they would have taken too much memory
    bool missedEvents = false; ///< something happened in it or below while it was out of its tree
    std::uint64_t astray = 0;  ///< when its path, or one below, led nowhere: it may have been moved; 0: never
    bool isSeen = false;       ///< in the listing that is being read
    std::uint64_t serial = 0;  ///< another one when the memory is used for another folder
    std::int64_t changed = 0;  ///< its time of change when it was listed last, for those that are polled
    InotifyNames names;
};

/// The folders of all trees: by their watch, and by their parent and name.
class InotifyFolders {
public:
    InotifyFolders() = default;
    InotifyFolders(const InotifyFolders&) = delete;
    InotifyFolders& operator=(const InotifyFolders&) = delete;

    InotifyFolder& addRoot(std::string path);
    InotifyFolder& add(InotifyFolder& parent, std::string_view name);

    [[nodiscard]] InotifyFolder* find(const InotifyFolder& parent, std::string_view name) const;
    [[nodiscard]] InotifyFolder* findWatch(int watch) const;

    /// `folder` has `watch` from now on, and nobody else has it.
    void setWatch(InotifyFolder& folder, int watch);

    /// Takes a folder, with all below it, out of its tree; `attach` puts it into one again.
    void detach(InotifyFolder& folder);
    void attach(InotifyFolder& folder, InotifyFolder& parent, std::string_view name);

    /// Removes a folder and all below it, and hands over the watches that they had.
    void remove(InotifyFolder& folder, const std::function<void(int watch)>& dropWatch);

    /// The path; nothing for a folder that is out of its tree.
    [[nodiscard]] static std::optional<std::string> path(const InotifyFolder& folder);

    /// The highest folder above `folder`, or itself.
    [[nodiscard]] static InotifyFolder& top(InotifyFolder& folder);

    /// `folder` and all below it, each behind its parent.
    [[nodiscard]] static std::vector<InotifyFolder*> subtree(InotifyFolder& folder);

    [[nodiscard]] std::size_t count() const noexcept { return count_; }

private:
    using Key = std::pair<const InotifyFolder*, std::string_view>;
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const Key& key) const noexcept;
        std::size_t operator()(const InotifyFolder* folder) const noexcept { return (*this)(keyOf(*folder)); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const InotifyFolder* left, const InotifyFolder* right) const noexcept { return left == right; }
        bool operator()(const Key& left, const InotifyFolder* right) const noexcept { return left == keyOf(*right); }
        bool operator()(const InotifyFolder* left, const Key& right) const noexcept { return right == keyOf(*left); }
    };
    [[nodiscard]] static Key keyOf(const InotifyFolder& folder) { return {folder.parent, folder.name}; }

    InotifyFolder& take();

    std::deque<InotifyFolder> memory_;
    std::vector<InotifyFolder*> free_;
    std::uint64_t lastSerial_ = 0;
    std::size_t count_ = 0;
    std::unordered_set<InotifyFolder*, Hash, Equal> byName_; // those with a parent
    std::unordered_map<int, InotifyFolder*> byWatch_;
};

} // namespace qk::platform
