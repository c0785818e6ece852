// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/NSBundle.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/platform/services/internal/BundleContents.h"

#include <utility>

namespace qk {

NSBundle::NSBundle(std::unique_ptr<internal::BundleContents> contents) : contents_(std::move(contents)) {}

NSBundle::~NSBundle() = default;

const ClassDescription& NSBundle::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSBundle>("NSBundle", NSObject::describedClass())
            .property("bundlePath", &NSBundle::bundlePath)
            .property("infoDictionary", &NSBundle::infoDictionary)
            .method("objectForInfoDictionaryKey:", &NSBundle::objectForInfoDictionaryKey)
            .method("pathForResource:ofType:", &NSBundle::pathForResource)
            .method("localizedStringForKey:value:table:", &NSBundle::localizedStringForKey)
            .build();
    return description;
}

const ClassDescription& NSBundle::classDescription() const {
    return describedClass();
}

std::shared_ptr<NSBundle> NSBundle::bundleWithPath(const NSString& path) {
    return bundleWithPath(path, *platform::services());
}

std::shared_ptr<NSBundle> NSBundle::bundleWithPath(const NSString& path, const platform::Services& services) {
    return internal::BundleContents::open(path, services.fileManager, services.propertyLists, services.locale);
}

std::shared_ptr<NSBundle> NSBundle::mainBundle() {
    return mainBundle(*platform::services());
}

std::shared_ptr<NSBundle> NSBundle::mainBundle(const platform::Services& services) {
    return services.facts->mainBundle.get([&]() -> std::shared_ptr<NSBundle> {
        const NSString path = services.processInfo->mainBundlePath();
        return path.isEmpty() ? nullptr : bundleWithPath(path, services);
    });
}

const NSDictionary& NSBundle::infoDictionary() const {
    return contents_->infoDictionary();
}

std::optional<Value> NSBundle::objectForInfoDictionaryKey(const NSString& key) const {
    if (const auto* text = contents_->localizedInfo().find(key)) {
        return text->text;
    }
    const Value* const value = contents_->infoDictionary().objectForKey(key);
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

const NSString& NSBundle::bundlePath() const noexcept {
    return contents_->path();
}

std::optional<NSString> NSBundle::pathForResource(const NSString& name, const NSString& ofType) const {
    return contents_->pathForResource(name, ofType);
}

std::shared_ptr<NSBundle> NSBundle::bundleForLanguage(const NSString& name) const {
    return contents_->languageFolder(name);
}

NSString NSBundle::localizedStringForKey(const std::optional<NSString>& key, const std::optional<NSString>& value,
                                         const std::optional<NSString>& table) const {
    if (!key.has_value()) {
        return value.value_or(NSString());
    }
    const bool isDefault = !table.has_value() || table->isEmpty();
    const auto* const found = (isDefault ? contents_->defaultTable() : contents_->table(*table)).find(*key);
    if (found != nullptr) {
        return found->text;
    }
    return value.has_value() && !value->isEmpty() ? *value : *key;
}

} // namespace qk
