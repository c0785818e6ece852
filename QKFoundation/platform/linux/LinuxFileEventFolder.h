// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace qk::platform {

/// What lies in a folder: the name, and whether it is a folder itself. Links are not followed.
struct FolderEntry {
    std::string_view name;
    bool isFolder;
};

/// The dates of an item in nanoseconds, 0 for a file system without them.
struct ItemDates {
    std::int64_t created = 0;
    std::int64_t modified = 0;
    std::int64_t changed = 0; ///< of the item itself: its content, its name, its rights
};

/// Files are dated as coarsely as this, in nanoseconds: what is dated by so much earlier may have happened now.
inline constexpr std::int64_t kFileDateSlack = 2'000'000'000;

/// The dates of the item at `path`, not through a link; all 0 when it is gone.
[[nodiscard]] ItemDates datesOf(const std::string& path);

/// An open folder that is listed. Not through a link in its place.
class OpenFolder {
public:
    /// False from `isOpen` when it is gone or must not be read.
    explicit OpenFolder(const std::string& path);
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;
    ~OpenFolder();

    [[nodiscard]] bool isOpen() const noexcept { return descriptor_ >= 0; }

    /// Calls `take` for each entry but "." and ".."; `buffer` is for the kernel to write to. How many there were.
    std::size_t forEachEntry(std::span<std::byte> buffer, const std::function<void(const FolderEntry&)>& take) const;

    /// The dates of the item `name` in it, or with "" its own; all 0 when it is gone.
    [[nodiscard]] ItemDates dates(std::string_view name) const;

private:
    [[nodiscard]] bool isFolder(const char* name, unsigned char type) const;

    int descriptor_;
};

/// `name` in the folder `path`.
[[nodiscard]] std::string joinPath(std::string_view path, std::string_view name);

/// The folder above `path`, "/" for the top.
[[nodiscard]] std::string folderAbove(const std::string& path);

/// Whether `path` is `root` or lies below it.
[[nodiscard]] bool isAtOrBelow(std::string_view path, std::string_view root);

/// The time by which file systems date what happens now, in nanoseconds.
[[nodiscard]] std::int64_t fileTimeNow();

} // namespace qk::platform
