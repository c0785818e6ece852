// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/parse/Assignments.h"

#include <cstdint>
#include <optional>
#include <string>

/// Facts about the operating system, each read afresh. Nothing where the system does not tell. Any thread.
namespace qk::platform::operatingsystem {

/// /etc/os-release, else /usr/lib/os-release. Nothing when neither can be read.
[[nodiscard]] std::optional<parse::Assignments> release(const LinuxRoot& root);

/// The value under `key`; nothing when it is missing or empty.
[[nodiscard]] std::optional<std::string> value(const parse::Assignments& assignments, std::string_view key);

/// What tells this build of the system from another: BUILD_ID of os-release, else the kernel's release.
[[nodiscard]] std::optional<std::string> build(const LinuxRoot& root);

/// The kernel's release, such as "6.1.0-30-amd64": /proc/sys/kernel/osrelease.
[[nodiscard]] std::optional<std::string> kernelRelease(const LinuxRoot& root);

/// /proc/version.
[[nodiscard]] std::optional<std::string> kernelVersion(const LinuxRoot& root);

/// "btime" of /proc/stat, seconds since 1970. It follows the clock when that is set.
[[nodiscard]] std::optional<std::int64_t> bootTime(const LinuxRoot& root);

/// The network node's name: /proc/sys/kernel/hostname. Nothing while none is set, which the kernel shows as "(none)".
[[nodiscard]] std::optional<std::string> nodeName(const LinuxRoot& root);

/// PRETTY_HOSTNAME of /etc/machine-info: the name that people gave the computer.
[[nodiscard]] std::optional<std::string> prettyHostName(const LinuxRoot& root);

} // namespace qk::platform::operatingsystem
