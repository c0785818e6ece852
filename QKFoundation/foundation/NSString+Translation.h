// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/NSBundle.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/Value.h"

#include <array>
#include <concepts>
#include <memory>
#include <optional>
#include <span>

/// `NSString(Translation)`: texts looked up by key in the folder of the chosen language, with English behind it.
///
/// The bundle of the texts and the language are set once per process, when the application starts. A text may have
/// placeholders "%1%", "%2%", ... for the arguments it is formatted with, numbered from 1 without gaps; everything else
/// in it is a format ("%%" is a percent sign).
/// Threads: every operation may be called anywhere. A look-up in a table that has been read takes no lock.
namespace qk::NSString_Translation {

/// `setBundleForTranslation:`. The bundle with a folder "en.lproj", "de.lproj", ... per language.
/// Deliberate: the first call of the process counts, also when it gives nothing; later ones are ignored without notice,
/// so that no part of a program can take the texts away from under another.
QK_EXPORT void setBundleForTranslation(const std::shared_ptr<NSBundle>& bundle);

/// `setLanguageForTranslation:`. The name of the language's folder without its extension: "en", "zhTW", "de", ...
/// Deliberate: the first call of the process counts, as with the bundle.
QK_EXPORT void setLanguageForTranslation(const std::optional<NSString>& language);

/// `bundleForLanguage:`. The folder of `language` in the bundle; null when there is none, when `language` is nothing,
/// and when no bundle was set. Names are compared exactly.
[[nodiscard]] QK_EXPORT std::shared_ptr<NSBundle> bundleForLanguage(const std::optional<NSString>& language);

/// `TLN:`. The text for `key` in the chosen language, else in "en", with its placeholders as they are. Without a chosen
/// language the bundle's own table comes first.
/// Returns `key` itself when no table has it; nothing when there is no table to ask: no bundle was set, or a language
/// was set and neither its folder nor "en" exists.
/// Deliberate: a text that equals its key counts as missing, so that "en" may say it better.
[[nodiscard]] QK_EXPORT std::optional<NSString> TLN(const NSString& key);

/// `TLC:`. The same as `TLN`.
[[nodiscard]] QK_EXPORT std::optional<NSString> TLC(const NSString& key);

/// `stringByReplacingWFormatPlaceholders`. `self` as a format: "%1%" becomes "%1$@", and so on up to the first number
/// that is not there. Takes time in proportion to the length, however many numbers there are.
/// Deliberate: the numbers are replaced one after the other, each in the text that the one before has left. So a
/// percent sign between two placeholders belongs to the one with the lower number ("%1%2%" gives "%1$@2%", "%2%1%"
/// gives "%2$@1$@"), and a preceding percent sign protects nothing ("%%1%" gives "%%1$@").
[[nodiscard]] QK_EXPORT NSString stringByReplacingWFormatPlaceholders(const NSString& self);

/// `stringByReplacingWFormatPlaceholdersInStringWithId:`. The text of `key` as a format; nothing as `TLC` gives it.
[[nodiscard]] QK_EXPORT std::optional<NSString> stringByReplacingWFormatPlaceholdersInStringWithId(const NSString& key);

/// `initWithFormatId:arguments:`. The text of `key` with its placeholders replaced by the arguments, as
/// `stringWithFormat` does it; nothing as `TLC` gives it.
[[nodiscard]] QK_EXPORT std::optional<NSString> initWithFormatId(const NSString& key,
                                                                 std::span<const std::optional<Value>> arguments);

/// `initWithFormatId:`. The same with the arguments themselves: strings and other values, or nothing.
template <typename... Arguments>
requires(std::convertible_to<const Arguments&, std::optional<Value>>&&...)
    [[nodiscard]] std::optional<NSString> initWithFormatId(const NSString& key, const Arguments&... arguments) {
    const std::array<std::optional<Value>, sizeof...(Arguments)> values{std::optional<Value>(arguments)...};
    return initWithFormatId(key, std::span<const std::optional<Value>>(values));
}

/// `stringWithFormatId:`. As `initWithFormatId`.
template <typename... Arguments>
requires(std::convertible_to<const Arguments&, std::optional<Value>>&&...)
    [[nodiscard]] std::optional<NSString> stringWithFormatId(const NSString& key, const Arguments&... arguments) {
    return initWithFormatId(key, arguments...);
}

/// `languageString`. The user's preferred language as the name of a folder: "zh-Hant" and "zh-Hant_TW" are "zhTW",
/// "zh-Hans" is "zhCN"; of everything else it is what stands before the first "-" ("en-US" is "en"), or all of it.
/// Nothing when the user prefers none.
/// Deliberate: the Chinese tags are compared exactly; "zh-Hant-TW" is "zh".
[[nodiscard]] QK_EXPORT std::optional<NSString> languageString();

} // namespace qk::NSString_Translation
