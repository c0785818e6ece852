// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/Locale.h"

#include <utility>

namespace qk::platform {

/// The languages of the variable LANGUAGE, then the one of the locale for messages: the first of LC_ALL, LC_MESSAGES
/// and LANG that is set. Where none of them is, /etc/locale.conf and then /etc/default/locale are asked for the same
/// names (but LC_ALL). The locales "C" and "POSIX" prefer nothing, and with them LANGUAGE does not count. Threads: any.
class LinuxLocale final : public Locale {
public:
    explicit LinuxLocale(LinuxRoot root = {}, Variables variables = processVariable)
        : root_(std::move(root)), variables_(std::move(variables)) {}

    [[nodiscard]] std::vector<NSString> preferredLanguages() const override;

private:
    LinuxRoot root_;
    Variables variables_;
};

} // namespace qk::platform
