// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/OperatingSystem.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"

#include <sys/utsname.h>

#include <string_view>

namespace qk::platform::operatingsystem {
namespace {

std::optional<std::string> readText(const LinuxRoot& root, std::string_view path) {
    const std::optional<std::string> bytes = readBytes(root.path(path));
    return bytes.has_value() ? parse::singleText(*bytes) : std::nullopt;
}

// A container without /proc can still ask the kernel itself.
template <std::size_t N>
std::optional<std::string> askKernel(const LinuxRoot& root, char (utsname::*field)[N]) {
    utsname names{};
    if (!root.isHost() || ::uname(&names) != 0) {
        return std::nullopt;
    }
    return parse::singleText(std::string_view(names.*field, N));
}

} // namespace

std::optional<parse::Assignments> release(const LinuxRoot& root) {
    for (const std::string_view path : {"/etc/os-release", "/usr/lib/os-release"}) {
        if (const std::optional<std::string> bytes = readBytes(root.path(path)); bytes.has_value()) {
            return parse::assignments(*bytes);
        }
    }
    return std::nullopt;
}

std::optional<std::string> value(const parse::Assignments& assignments, std::string_view key) {
    const auto found = assignments.find(key);
    return found != assignments.end() && !found->second.empty() ? std::optional(found->second) : std::nullopt;
}

std::optional<std::string> build(const LinuxRoot& root) {
    if (const std::optional<parse::Assignments> assignments = release(root); assignments.has_value()) {
        if (std::optional<std::string> identifier = value(*assignments, "BUILD_ID"); identifier.has_value()) {
            return identifier;
        }
    }
    return kernelRelease(root);
}

std::optional<std::string> kernelRelease(const LinuxRoot& root) {
    std::optional<std::string> text = readText(root, "/proc/sys/kernel/osrelease");
    return text.has_value() ? text : askKernel(root, &utsname::release);
}

std::optional<std::string> kernelVersion(const LinuxRoot& root) {
    return readText(root, "/proc/version");
}

std::optional<std::int64_t> bootTime(const LinuxRoot& root) {
    const std::optional<std::string> bytes = readBytes(root.path("/proc/stat"));
    return bytes.has_value() ? parse::bootTime(*bytes) : std::nullopt;
}

std::optional<std::string> nodeName(const LinuxRoot& root) {
    std::optional<std::string> name = readText(root, "/proc/sys/kernel/hostname");
    if (!name.has_value()) {
        name = askKernel(root, &utsname::nodename);
    }
    return name == "(none)" ? std::nullopt : name;
}

std::optional<std::string> prettyHostName(const LinuxRoot& root) {
    const std::optional<std::string> bytes = readBytes(root.path("/etc/machine-info"));
    return bytes.has_value() ? value(parse::assignments(*bytes), "PRETTY_HOSTNAME") : std::nullopt;
}

} // namespace qk::platform::operatingsystem
