// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Translation.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "benchmarks/translation/Register.h"

namespace qk::bench {
namespace {

NSDictionary tableOf(const Catalogue& catalogue) {
    std::vector<NSDictionary::Entry> entries;
    for (std::size_t index = 0; index < catalogue.keys.size(); ++index) {
        entries.emplace_back(NSString::fromUTF8Lossy(catalogue.keys[index]),
                             NSString::fromUTF8Lossy(catalogue.texts[index]));
    }
    return NSDictionary(std::move(entries));
}

std::vector<NSString> stringsOf(const std::vector<std::string>& texts) {
    std::vector<NSString> strings;
    for (const std::string& text : texts) {
        strings.push_back(NSString::fromUTF8Lossy(text));
    }
    return strings;
}

} // namespace

void registerOurs(const Catalogue& catalogue) {
    // With English as large as the language, so that a key that is missing is looked for in both.
    platform::memory::Machine machine;
    machine.fileManager.addPropertyList("/Bench.bundle/de.lproj/Localizable.strings", tableOf(catalogue));
    machine.fileManager.addPropertyList("/Bench.bundle/en.lproj/Localizable.strings", tableOf(catalogue));
    NSString_Translation::setBundleForTranslation(NSBundle::bundleWithPath("/Bench.bundle", *machine.services()));
    NSString_Translation::setLanguageForTranslation("de");

    static const std::vector<NSString> keys = stringsOf(catalogue.keys);
    static const std::vector<NSString> missing = stringsOf(catalogue.missing);
    const auto kept = [](const NSString& key) { return NSString_Translation::TLN(key); };
    const auto made = [](const std::string& key) { return NSString_Translation::TLN(NSString::fromUTF8Lossy(key)); };
    add("hit", "ours", keys, kept);
    add("miss", "ours", missing, kept);
    add("hit", "ours, key made each time", catalogue.keys, made);
    add("miss", "ours, key made each time", catalogue.missing, made);
}

} // namespace qk::bench
