// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace qk::platform::parse {

/// One event of inotify(7). The name is that of a file in the watched folder, empty when the event is about the watched
/// item itself; it refers to the bytes that were read.
struct InotifyEvent {
    int watch;
    std::uint32_t mask;
    std::uint32_t cookie;
    std::string_view name;

    [[nodiscard]] friend bool operator==(const InotifyEvent&, const InotifyEvent&) = default;
};

/// Takes the first event off `bytes`, what a read of an inotify descriptor filled. Nothing, with no bytes left, at the
/// end and when what is left is not a whole event.
[[nodiscard]] std::optional<InotifyEvent> takeInotifyEvent(std::span<const std::byte>& bytes);

/// How fanotify(7) names a file: as name_to_handle_at(2) does, with the file system that it is on. `isPresent` is false
/// when the kernel told none. The handle refers to the bytes that were read.
struct FileIdentity {
    bool isPresent = false;
    std::uint64_t fileSystem = 0;
    std::int32_t type = 0;
    std::string_view handle;

    [[nodiscard]] friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// One event of fanotify(7) in a group that reports names: something happened to `name` in `folder`. The name is "."
/// when it happened to the folder itself. `target` is the file of that name, of events about entries of a folder.
struct FanotifyEvent {
    std::uint64_t mask = 0;
    FileIdentity folder;
    std::string_view name;
    FileIdentity target;

    [[nodiscard]] friend bool operator==(const FanotifyEvent&, const FanotifyEvent&) = default;
};

/// Takes the first event off `bytes`, what a read of a fanotify descriptor filled. Nothing, with no bytes left, at the
/// end and when what is left is not a whole event of a known layout. Records of unknown kinds are passed over; one
/// that is damaged ends the event's list of records.
[[nodiscard]] std::optional<FanotifyEvent> takeFanotifyEvent(std::span<const std::byte>& bytes);

} // namespace qk::platform::parse
