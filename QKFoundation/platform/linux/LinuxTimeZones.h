// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/TimeZones.h"

#include <string_view>
#include <utility>

namespace qk::platform {

/// The zones of /usr/share/zoneinfo; "UTC" is always known. Names that lead elsewhere ("..", a leading "/") are not.
///
/// The machine's own zone is that of the variable TZ: a name, a rule such as "CET-1CEST,M3.5.0,M10.5.0/3", or the path
/// of a zone file, each also behind ":"; an empty value, or one that means nothing, is UTC. Without TZ it is
/// /etc/localtime, under the name that the link leads to or else that /etc/timezone tells. Threads: any.
class LinuxTimeZones final : public TimeZones {
public:
    explicit LinuxTimeZones(LinuxRoot root = {}, Variables variables = processVariable)
        : root_(std::move(root)), variables_(std::move(variables)) {}

    [[nodiscard]] std::optional<NSTimeZone> timeZoneWithName(const NSString& name) const override;
    [[nodiscard]] NSTimeZone systemTimeZone() const override;

private:
    [[nodiscard]] std::optional<NSTimeZone> zoneNamed(std::string_view name) const;
    [[nodiscard]] std::optional<NSTimeZone> zoneOfFile(std::string_view path, std::string_view name) const;
    [[nodiscard]] std::optional<NSTimeZone> zoneOfVariable(std::string_view value) const;
    [[nodiscard]] std::optional<NSTimeZone> zoneOfLocaltime() const;

    LinuxRoot root_;
    Variables variables_;
};

} // namespace qk::platform
