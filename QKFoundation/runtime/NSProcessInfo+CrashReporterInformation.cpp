// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/NSProcessInfo+CrashReporterInformation.h"
#include "QKFoundation/runtime/internal/CrashReporterInformation.h"

#include <cstring>
#include <string>
#include <utility>

namespace qk {

void internal::CrashReporterInformation::setString(const platform::Services& services,
                                                   const std::optional<NSString>& string) {
    std::call_once(isInitialised_, [&] { slot_ = services.crashReporter->informationSlot(); });
    const std::optional<std::string> text = string.has_value() ? string->utf8() : std::nullopt;
    const std::size_t length = text.has_value() ? std::strlen(text->c_str()) : 0; // to the first zero character
    if (length == 0 || slot_ == nullptr) {
        return;
    }
    const std::size_t size = length + 1;
    std::unique_ptr<char, Free> copy(static_cast<char*>(std::malloc(size)));
    if (copy == nullptr) {
        return;
    }
    std::memcpy(copy.get(), text->c_str(), size);
    const std::scoped_lock lock(mutex_);
    *slot_ = copy.get(); // a report that is written now finds the new text or the old one
    published_.swap(copy);
}

void NSProcessInfo_CrashReporterInformation::setCrashReporterInfoString(const std::optional<NSString>& string) {
    // Never destroyed: the slot refers to its text until the process has ended.
    static auto* const information = new internal::CrashReporterInformation;
    information->setString(*platform::services(), string);
}

} // namespace qk
