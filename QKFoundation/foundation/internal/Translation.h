// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/NSBundle.h"
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/platform/values/Value.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <span>

namespace qk::internal {

/// What the translation operations work on: a bundle and a language that are set once each. The process has one.
/// Threads: any, at the same time; the look-ups take no lock.
class Translator {
public:
    void setBundle(const std::shared_ptr<NSBundle>& bundle);
    void setLanguage(const std::optional<NSString>& language);

    [[nodiscard]] std::shared_ptr<NSBundle> bundleForLanguage(const std::optional<NSString>& language) const;
    [[nodiscard]] std::optional<NSString> TLN(const NSString& key) const;
    [[nodiscard]] std::optional<NSString> stringByReplacingPlaceholdersInStringWithId(const NSString& key) const;
    [[nodiscard]] std::optional<NSString> initWithFormatId(const NSString& key,
                                                           std::span<const std::optional<Value>> arguments) const;

private:
    // Each value is written once, inside its guard; the pointer to it is what the look-ups read.
    std::once_flag bundleGuard_;
    std::shared_ptr<NSBundle> bundle_;
    std::atomic<const NSBundle*> currentBundle_{nullptr};

    std::once_flag languageGuard_;
    NSString language_;
    std::atomic<const NSString*> currentLanguage_{nullptr};

    const NSString english_ = "en";
};

/// The process's own. It is never destroyed.
[[nodiscard]] Translator& processTranslator();

[[nodiscard]] std::optional<NSString> languageString(const platform::Services& services);

} // namespace qk::internal
