// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileAttributes.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/parse/Text.h"
#include "QKFoundation/platform/services/FileAttributeKeys.h"
#include "QKFoundation/platform/values/Value.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <map>
#include <string_view>

namespace qk::platform::fileattributes {
namespace {

constexpr std::string_view kNameSpace = "user.";
constexpr const char* kCreationDate = "user.qk.creation-date";
constexpr double kNanosecondsOfSecond = 1e9;

using Attributes = std::map<std::string, std::string>; // values by the kernel's name

// What `ask` tells of a length that may change between the two questions; nothing when it refuses.
template <typename Ask>
std::optional<std::string> readAll(Ask ask) {
    std::string bytes;
    for (;;) {
        const ssize_t length = ask(nullptr, 0);
        if (length < 0) {
            return std::nullopt;
        }
        bytes.resize(static_cast<std::size_t>(length));
        const ssize_t read = length > 0 ? ask(bytes.data(), bytes.size()) : 0;
        if (read >= 0) {
            bytes.resize(static_cast<std::size_t>(read));
            return bytes;
        }
        if (errno != ERANGE) {
            return std::nullopt;
        }
    }
}

std::optional<std::string> valueOf(const std::string& path, const char* name) {
    return readAll([&](char* buffer, std::size_t size) { return ::lgetxattr(path.c_str(), name, buffer, size); });
}

// Those that are shown. A file system without attributes has none.
Attributes extendedAttributes(const std::string& path) {
    const std::optional<std::string> list =
        readAll([&](char* buffer, std::size_t size) { return ::llistxattr(path.c_str(), buffer, size); });
    Attributes attributes;
    std::string_view names = list.has_value() ? std::string_view(*list) : std::string_view();
    while (!names.empty()) {
        const std::string name(names.substr(0, names.find('\0')));
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        if (!name.starts_with(kNameSpace) || name == kCreationDate) {
            continue;
        }
        if (std::optional<std::string> value = valueOf(path, name.c_str()); value.has_value()) {
            attributes.emplace(name, *std::move(value));
        }
    }
    return attributes;
}

std::optional<NSDate> creationDate(const std::string& path) {
    if (const std::optional<std::string> text = valueOf(path, kCreationDate); text.has_value()) {
        double seconds = 0;
        const char* const end = text->data() + text->size();
        const auto [rest, error] = std::from_chars(text->data(), end, seconds);
        if (error == std::errc() && rest == end && std::isfinite(seconds)) {
            return NSDate::dateWithTimeIntervalSince1970(seconds);
        }
    }
    struct statx status {};
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME, &status) != 0 ||
        (status.stx_mask & STATX_BTIME) == 0) {
        return std::nullopt;
    }
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(status.stx_btime.tv_sec) +
                                                 status.stx_btime.tv_nsec / kNanosecondsOfSecond);
}

bool setAttribute(const std::string& path, const std::string& name, std::string_view value) {
    return ::lsetxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0) == 0;
}

bool setCreationDate(const std::string& path, const NSDate& date) {
    if (!std::isfinite(date.timeIntervalSince1970())) {
        return false;
    }
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), date.timeIntervalSince1970());
    return setAttribute(path, kCreationDate, {text.data(), static_cast<std::size_t>(written.ptr - text.data())});
}

bool setExtendedAttributes(const std::string& path, const NSDictionary& wanted) {
    bool isDone = true;
    Attributes leftOver = extendedAttributes(path);
    for (const auto& [key, value] : wanted) {
        const auto* data = value.as<NSData>();
        const std::optional<std::string> bytes = fileSystemRepresentation(key);
        if (data == nullptr || !bytes.has_value()) {
            continue;
        }
        const std::string name = std::string(kNameSpace) + *bytes;
        const auto present = leftOver.find(name);
        const bool differs = present == leftOver.end() || present->second != data->view();
        if (present != leftOver.end()) {
            leftOver.erase(present);
        }
        isDone = (!differs || setAttribute(path, name, data->view())) && isDone;
    }
    for (const auto& [name, value] : leftOver) {
        isDone = (::lremovexattr(path.c_str(), name.c_str()) == 0 || errno == ENODATA) && isDone;
    }
    return isDone;
}

} // namespace

std::optional<NSDictionary> read(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    NSMutableDictionary result;
    if (const std::optional<NSDate> date = creationDate(path); date.has_value()) {
        result.setObject(*date, NSFileCreationDate);
    }
    NSMutableDictionary extended;
    for (const auto& [name, value] : extendedAttributes(path)) {
        extended.setObject(NSData(value), stringWithFileSystemRepresentation(name.substr(kNameSpace.size())));
    }
    if (extended.count() != 0) {
        result.setObject(extended.copy(), NSFileExtendedAttributes);
    }
    return result.copy();
}

bool write(const std::string& path, const NSDictionary& attributes) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return false;
    }
    const auto* extended = attributes.get<NSDictionary>(NSFileExtendedAttributes);
    const auto* date = attributes.get<NSDate>(NSFileCreationDate);
    const bool hasExtended = extended == nullptr || setExtendedAttributes(path, *extended);
    return (date == nullptr || setCreationDate(path, *date)) && hasExtended;
}

std::optional<std::size_t> extendedAttribute(const std::string& path, const std::string& name, void* value,
                                             std::size_t size) {
    const std::string whole = std::string(kNameSpace) + name;
    const ssize_t length = ::getxattr(path.c_str(), whole.c_str(), value, value != nullptr ? size : 0);
    // A buffer without room is a question for the length to the kernel.
    const bool fits = value == nullptr || length <= 0 || static_cast<std::size_t>(length) <= size;
    return length >= 0 && fits ? std::optional(static_cast<std::size_t>(length)) : std::nullopt;
}

} // namespace qk::platform::fileattributes
