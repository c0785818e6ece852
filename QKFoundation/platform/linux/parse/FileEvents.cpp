// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/FileEvents.h"

#include <linux/fanotify.h>
#include <sys/inotify.h>

#include <cstring>

namespace qk::platform::parse {
namespace {

using Bytes = std::span<const std::byte>;

// That of inotify_event, whose last member has no size.
struct InotifyHeader {
    int watch;
    std::uint32_t mask;
    std::uint32_t cookie;
    std::uint32_t length;
};
static_assert(sizeof(InotifyHeader) == sizeof(inotify_event));

// The bytes need not be aligned for a `T`.
template <typename T>
std::optional<T> readAt(Bytes bytes, std::size_t offset = 0) {
    if (bytes.size() < offset || bytes.size() - offset < sizeof(T)) {
        return std::nullopt;
    }
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

std::string_view textOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Up to the first null byte.
std::string_view nameIn(Bytes bytes) {
    const std::string_view text = textOf(bytes);
    return text.substr(0, text.find('\0'));
}

bool isUsableName(std::string_view name) {
    return name.find('/') == std::string_view::npos;
}

std::uint64_t number(const __kernel_fsid_t& fileSystem) {
    static_assert(sizeof fileSystem == sizeof(std::uint64_t));
    std::uint64_t value = 0;
    std::memcpy(&value, &fileSystem, sizeof value);
    return value;
}

// What follows the header of a record: the file system, the handle and, for some kinds, a name.
struct IdentityRecord {
    FileIdentity identity;
    std::string_view name;
};

std::optional<IdentityRecord> identityRecord(Bytes record) {
    struct HandleHeader {
        std::uint32_t size;
        std::int32_t type;
    };
    constexpr std::size_t kFileSystemAt = sizeof(fanotify_event_info_header);
    constexpr std::size_t kHandleAt = kFileSystemAt + sizeof(__kernel_fsid_t);
    constexpr std::size_t kBytesAt = kHandleAt + sizeof(HandleHeader);
    const auto fileSystem = readAt<__kernel_fsid_t>(record, kFileSystemAt);
    const auto header = readAt<HandleHeader>(record, kHandleAt);
    if (!fileSystem.has_value() || !header.has_value() || record.size() - kBytesAt < header->size) {
        return std::nullopt;
    }
    const Bytes handle = record.subspan(kBytesAt, header->size);
    return IdentityRecord{{true, number(*fileSystem), header->type, textOf(handle)},
                          nameIn(record.subspan(kBytesAt + header->size))};
}

void takeRecord(std::uint8_t kind, Bytes record, FanotifyEvent& event) {
    const auto read = identityRecord(record);
    if (!read.has_value()) {
        return;
    }
    if (kind == FAN_EVENT_INFO_TYPE_FID) {
        event.target = read->identity;
    } else if (isUsableName(read->name)) {
        event.folder = read->identity;
        event.name = read->name;
    }
}

} // namespace

std::optional<InotifyEvent> takeInotifyEvent(Bytes& bytes) {
    const auto header = readAt<InotifyHeader>(bytes);
    if (!header.has_value() || bytes.size() - sizeof(InotifyHeader) < header->length) {
        bytes = {};
        return std::nullopt;
    }
    const std::string_view name = nameIn(bytes.subspan(sizeof(InotifyHeader), header->length));
    bytes = bytes.subspan(sizeof(InotifyHeader) + header->length);
    return InotifyEvent{header->watch, header->mask, header->cookie, isUsableName(name) ? name : std::string_view()};
}

std::optional<FanotifyEvent> takeFanotifyEvent(Bytes& bytes) {
    const auto header = readAt<fanotify_event_metadata>(bytes);
    if (!header.has_value() || header->vers != FANOTIFY_METADATA_VERSION || header->event_len > bytes.size() ||
        header->metadata_len < sizeof(fanotify_event_metadata) || header->metadata_len > header->event_len) {
        bytes = {};
        return std::nullopt;
    }
    FanotifyEvent event{header->mask, {}, {}, {}};
    Bytes records = bytes.subspan(header->metadata_len, header->event_len - header->metadata_len);
    while (const auto info = readAt<fanotify_event_info_header>(records)) {
        if (info->len < sizeof(fanotify_event_info_header) || info->len > records.size()) {
            break;
        }
        if (info->info_type == FAN_EVENT_INFO_TYPE_FID || info->info_type == FAN_EVENT_INFO_TYPE_DFID ||
            info->info_type == FAN_EVENT_INFO_TYPE_DFID_NAME) {
            takeRecord(info->info_type, records.first(info->len), event);
        }
        records = records.subspan(info->len);
    }
    bytes = bytes.subspan(header->event_len);
    return event;
}

} // namespace qk::platform::parse
