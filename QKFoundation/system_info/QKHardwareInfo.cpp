// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareInfo.h"

#include "QKFoundation/system_info/internal/HardwareFacts.h"
#include "QKFoundation/system_info/internal/SystemFacts.h"

#include <array>
#include <string>
#include <string_view>

namespace qk {
namespace {

using platform::kCtlKern;
using platform::kKernBootTime;
using platform::kKernVersion;
using platform::services;

std::optional<NSString> textOf(const internal::CText& text) {
    return text != nullptr ? NSString::fromUTF8(text.get()) : std::nullopt;
}

} // namespace

std::optional<NSString> internal::model(const platform::Services& services) {
    return textOf(getHardwareModel(services));
}

std::optional<NSString> internal::osRevision(const platform::Services& services) {
    return textOf(getOSRevision(services));
}

std::optional<NSString> internal::processorTypeName(const platform::Services& services) {
    return textOf(getProcessorTypeName(services));
}

std::optional<NSString> internal::kernelVersion(const platform::Services& services) {
    static constexpr std::array kName{kCtlKern, kKernVersion};
    std::size_t size = 0;
    if (services.kernel->sysctl(kName, nullptr, &size) != 0 || size == 0) {
        return std::nullopt;
    }
    std::string text(size, '\0');
    if (services.kernel->sysctl(kName, text.data(), &size) != 0) {
        return std::nullopt;
    }
    return NSString::fromUTF8(text.c_str()); // up to the zero byte that ends it
}

std::optional<NSDate> internal::bootDate(const platform::Services& services) {
    static constexpr std::array kName{kCtlKern, kKernBootTime};
    platform::TimeValue time{};
    std::size_t size = sizeof time;
    if (services.kernel->sysctl(kName, &time, &size) != 0) {
        return std::nullopt;
    }
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(time.seconds));
}

std::optional<NSString> QKHardwareInfo::model() {
    return internal::model(*services());
}

std::optional<NSString> QKHardwareInfo::osRevision() {
    return internal::osRevision(*services());
}

std::optional<NSString> QKHardwareInfo::processorTypeName() {
    return internal::processorTypeName(*services());
}

std::optional<NSString> QKHardwareInfo::kernelVersion() {
    return internal::kernelVersion(*services());
}

std::optional<NSDate> QKHardwareInfo::bootDate() {
    return internal::bootDate(*services());
}

} // namespace qk
