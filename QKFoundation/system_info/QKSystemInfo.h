// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

namespace qk {

/// `QKSystemInfo`: names of the user, the computer and the operating system, and the updates that wait for it, read
/// afresh by every call. Threads: any, at the same time.
class QK_EXPORT QKSystemInfo {
public:
    QKSystemInfo() = delete;

    /// `username`. The log-in name of the process's real user; nothing for a user without a password entry.
    [[nodiscard]] static std::optional<NSString> username();

    /// `computerName`. The name that people gave this computer, else its name in the system's configuration; nothing
    /// when there is neither. Linux: PRETTY_HOSTNAME of /etc/machine-info, else `PrettyHostname` of
    /// org.freedesktop.hostname1, else the node name of uname.
    [[nodiscard]] static std::optional<NSString> computerName();

    /// `osManufacturer`. Deliberate: always "Apple", on every host; callers show what the system calls itself with
    /// `osProductName`.
    [[nodiscard]] static NSString osManufacturer();

    /// `osProductName`. What the operating system calls itself; nothing when it does not. An entry that is no text is
    /// given by its description. Linux: NAME of /etc/os-release, else /usr/lib/os-release.
    [[nodiscard]] static std::optional<NSString> osProductName();

    /// `osVersionDescription`. Product name, code name, long version and build in parentheses, separated by single
    /// blanks: "Debian GNU/Linux Cheetah 12.0.0 (6.1.0-26-amd64)". A product or code name that is nothing is left out
    /// with its blank; a build that is nothing is shown as "((null))".
    [[nodiscard]] static NSString osVersionDescription();

    /// `osUpdates`. The pending software updates, a dictionary each with the keys "name", "version", "description",
    /// "size" (texts), "restart" and "recommended" (booleans); empty when the system is up to date. Nothing when the
    /// update tool's listing cannot be read. Raises `NSInvalidArgumentException` when there is no update tool to
    /// launch. Linux: a program of this library stands in for it, which asks PackageKit, else apt or dnf. Blocks its
    /// caller until the tool has ended, which may take seconds.
    [[nodiscard]] static std::optional<NSArray> osUpdates();
};

} // namespace qk
