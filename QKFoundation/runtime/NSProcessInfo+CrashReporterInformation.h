// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

/// `NSProcessInfo(CrashReporterInformation)`: a text of the process that a crash report includes.
///
/// It reaches a program that exports the slot "__crashreporter_info__", a pointer to a zero-terminated UTF-8 text; in
/// any other, nothing happens. Threads: any, at the same time.
namespace qk::NSProcessInfo_CrashReporterInformation {

/// `setCrashReporterInfoString:`. Publishes a copy of the text, up to its first zero character, in the place of the one
/// before. Nothing, "", a text that begins with a zero character, and one with a lone surrogate, which has no UTF-8
/// form, leave what is published.
QK_EXPORT void setCrashReporterInfoString(const std::optional<NSString>& string);

} // namespace qk::NSProcessInfo_CrashReporterInformation
