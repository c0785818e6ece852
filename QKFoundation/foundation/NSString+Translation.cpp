// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Translation.h"
#include "QKFoundation/foundation/internal/Translation.h"
#include "QKFoundation/platform/services/internal/BundleContents.h"
#include "QKFoundation/platform/values/NSStringFormat.h"

#include <vector>

namespace qk {
namespace internal {

void Translator::setBundle(const std::shared_ptr<NSBundle>& bundle) {
    std::call_once(bundleGuard_, [&] {
        bundle_ = bundle;
        currentBundle_.store(bundle_.get(), std::memory_order_release);
    });
}

void Translator::setLanguage(const std::optional<NSString>& language) {
    std::call_once(languageGuard_, [&] {
        if (language.has_value()) {
            language_ = *language;
            currentLanguage_.store(&language_, std::memory_order_release);
        }
    });
}

std::shared_ptr<NSBundle> Translator::bundleForLanguage(const std::optional<NSString>& language) const {
    const NSBundle* const bundle = currentBundle_.load(std::memory_order_acquire);
    return bundle != nullptr && language.has_value() ? bundle->bundleForLanguage(*language) : nullptr;
}

std::optional<NSString> Translator::TLN(const NSString& key) const {
    const NSBundle* const bundle = currentBundle_.load(std::memory_order_acquire);
    if (bundle == nullptr) {
        return std::nullopt;
    }
    // Pointers instead of shared ones: the bundle keeps its folders, and counting costs more than finding.
    const NSBundle* searched = bundle;
    if (const NSString* const language = currentLanguage_.load(std::memory_order_acquire)) {
        searched = bundle->contents().languageFolder(*language).get();
        searched = searched != nullptr ? searched : bundle->contents().languageFolder(english_).get();
        if (searched == nullptr) {
            return std::nullopt;
        }
    }
    const auto* found = searched->contents().defaultTable().find(key);
    if (found != nullptr && !found->equalsKey) {
        return found->text;
    }
    const NSBundle* const english = bundle->contents().languageFolder(english_).get();
    const bool hasMore = english != nullptr && english != searched;
    found = hasMore ? english->contents().defaultTable().find(key) : nullptr;
    return found != nullptr ? found->text : key;
}

std::optional<NSString> Translator::stringByReplacingPlaceholdersInStringWithId(const NSString& key) const {
    const std::optional<NSString> text = TLN(key);
    return text.has_value() ? std::optional(NSString_Translation::stringByReplacingWFormatPlaceholders(*text))
                            : std::nullopt;
}

std::optional<NSString> Translator::initWithFormatId(const NSString& key,
                                                     std::span<const std::optional<Value>> arguments) const {
    const std::optional<NSString> format = stringByReplacingPlaceholdersInStringWithId(key);
    return format.has_value() ? std::optional(stringWithFormat(*format, arguments)) : std::nullopt;
}

Translator& processTranslator() {
    static Translator* const translator = new Translator; // other threads may still ask while the process ends
    return *translator;
}

std::optional<NSString> languageString(const platform::Services& services) {
    const std::vector<NSString> languages = services.locale->preferredLanguages();
    if (languages.empty()) {
        return std::nullopt;
    }
    const NSString& preferred = languages.front();
    if (preferred == "zh-Hant" || preferred == "zh-Hant_TW") {
        return "zhTW";
    }
    if (preferred == "zh-Hans") {
        return "zhCN";
    }
    return preferred.substringToIndex(preferred.find(u"-").value_or(preferred.length()));
}

} // namespace internal

namespace NSString_Translation {

void setBundleForTranslation(const std::shared_ptr<NSBundle>& bundle) {
    internal::processTranslator().setBundle(bundle);
}

void setLanguageForTranslation(const std::optional<NSString>& language) {
    internal::processTranslator().setLanguage(language);
}

std::shared_ptr<NSBundle> bundleForLanguage(const std::optional<NSString>& language) {
    return internal::processTranslator().bundleForLanguage(language);
}

std::optional<NSString> TLN(const NSString& key) {
    return internal::processTranslator().TLN(key);
}

std::optional<NSString> TLC(const NSString& key) {
    return TLN(key);
}

std::optional<NSString> stringByReplacingWFormatPlaceholdersInStringWithId(const NSString& key) {
    return internal::processTranslator().stringByReplacingPlaceholdersInStringWithId(key);
}

std::optional<NSString> initWithFormatId(const NSString& key, std::span<const std::optional<Value>> arguments) {
    return internal::processTranslator().initWithFormatId(key, arguments);
}

std::optional<NSString> languageString() {
    return internal::languageString(*platform::services());
}

} // namespace NSString_Translation
} // namespace qk
