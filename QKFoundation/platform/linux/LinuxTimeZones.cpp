// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxTimeZones.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <limits.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <string>

namespace qk::platform {
namespace {

constexpr std::string_view kFolder = "/usr/share/zoneinfo/";
constexpr std::string_view kMark = "/zoneinfo/";
constexpr std::size_t kLongestFile = std::size_t{1} << 20U; // the largest zone takes 4 kB

// Whether `name` leads to a place below the folder of zones.
bool staysBelow(std::string_view name) {
    if (name.empty() || name.starts_with('/') || name.find('\0') != std::string_view::npos) {
        return false;
    }
    while (!name.empty()) {
        const std::string_view part = name.substr(0, name.find('/'));
        if (part == "..") {
            return false;
        }
        name.remove_prefix(part.size() == name.size() ? part.size() : part.size() + 1);
    }
    return true;
}

// The name of the zone at a path such as "../usr/share/zoneinfo/Europe/Berlin"; "" when it is none.
std::string_view nameInPath(std::string_view path) {
    const std::size_t mark = path.rfind(kMark);
    return mark != std::string_view::npos ? path.substr(mark + kMark.size()) : std::string_view();
}

std::string linkTarget(const std::string& path) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    return {target.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

NSString text(std::string_view name) {
    return stringWithFileSystemRepresentation(name);
}

} // namespace

std::optional<NSTimeZone> LinuxTimeZones::timeZoneWithName(const NSString& name) const {
    const std::optional<std::string> bytes = fileSystemRepresentation(name);
    return bytes.has_value() ? zoneNamed(*bytes) : std::nullopt;
}

NSTimeZone LinuxTimeZones::systemTimeZone() const {
    const std::optional<std::string> variable = variables_("TZ");
    return (variable.has_value() ? zoneOfVariable(*variable) : zoneOfLocaltime()).value_or(NSTimeZone::UTC());
}

std::optional<NSTimeZone> LinuxTimeZones::zoneNamed(std::string_view name) const {
    if (name == "UTC") {
        return NSTimeZone::UTC();
    }
    return staysBelow(name) ? zoneOfFile(std::string(kFolder).append(name), name) : std::nullopt;
}

std::optional<NSTimeZone> LinuxTimeZones::zoneOfFile(std::string_view path, std::string_view name) const {
    const std::optional<std::string> bytes = readBytes(root_.path(path), kLongestFile);
    return bytes.has_value() ? NSTimeZone::timeZoneWithName(text(name), *bytes) : std::nullopt;
}

std::optional<NSTimeZone> LinuxTimeZones::zoneOfVariable(std::string_view value) const {
    value.remove_prefix(value.starts_with(':') ? 1 : 0);
    if (value == "/etc/localtime") {
        return zoneOfLocaltime();
    }
    if (value.starts_with('/')) {
        const std::string_view name = nameInPath(value);
        return zoneOfFile(value, name.empty() ? value : name);
    }
    std::optional<NSTimeZone> zone = zoneNamed(value);
    return zone.has_value() ? zone : NSTimeZone::timeZoneWithRule(text(value), value);
}

std::optional<NSTimeZone> LinuxTimeZones::zoneOfLocaltime() const {
    constexpr std::string_view kPath = "/etc/localtime";
    const std::string target = linkTarget(root_.path(kPath));
    // By the name first: the link's target is a path of the machine that is looked at.
    if (std::optional<NSTimeZone> zone = zoneNamed(nameInPath(target)); zone.has_value()) {
        return zone;
    }
    const std::string file = readBytes(root_.path("/etc/timezone"), kLongestFile).value_or("");
    const std::string_view name = parse::trimmed(std::string_view(file).substr(0, file.find('\n')));
    std::optional<NSTimeZone> zone = zoneOfFile(kPath, name.empty() ? "Local" : name);
    return zone.has_value() ? zone : zoneNamed(name);
}

} // namespace qk::platform
