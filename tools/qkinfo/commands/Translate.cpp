// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Translate.h"

#include "QKFoundation/foundation/NSString+Translation.h"
#include "QKFoundation/platform/services/NSBundle.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/PathText.h"

#include <stdexcept>

namespace qk::info {

namespace {

std::shared_ptr<NSBundle> bundleAt(const std::string& folder) {
    auto bundle = folder.empty() ? nullptr : NSBundle::bundleWithPath(absolutePathString(folder));
    if (bundle == nullptr) {
        throw std::runtime_error("there is no folder \"" + folder + "\"");
    }
    return bundle;
}

} // namespace

Translated translate(const TranslateOptions& options) {
    NSString_Translation::setBundleForTranslation(bundleAt(options.bundle));
    const std::optional<NSString> language = options.language.has_value() ? NSString::fromUTF8Lossy(*options.language)
                                                                          : NSString_Translation::languageString();
    NSString_Translation::setLanguageForTranslation(language);
    const NSString key = NSString::fromUTF8Lossy(options.key);
    std::vector<std::optional<Value>> arguments;
    for (const std::string& argument : options.arguments) {
        arguments.emplace_back(NSString::fromUTF8Lossy(argument));
    }
    const std::optional<NSString> text = NSString_Translation::initWithFormatId(key, arguments);
    if (!text.has_value()) {
        throw std::runtime_error("\"" + options.bundle + "\" has neither a folder \"" +
                                 wellFormedUTF8(language.value_or("en")) + ".lproj\" nor \"en.lproj\"");
    }
    return {key, language, *text};
}

Section sectionOf(const Translated& translated) {
    const auto content = [](const NSString& text) { return Content(wellFormedUTF8(text)); };
    const std::optional<Content> language =
        translated.language.has_value() ? std::optional(content(*translated.language)) : std::nullopt;
    return {"translate", "Translation",
            Facts{{"key", "Key", content(translated.key)},
                  {"language", "Language", language},
                  {"text", "Text", content(translated.text)}}};
}

} // namespace qk::info
