// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSValueTransformer.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <map>
#include <mutex>
#include <utility>

namespace qk {
namespace {

struct Registry {
    std::mutex mutex;
    std::map<NSString, std::shared_ptr<NSValueTransformer>> transformers;
};

Registry& registry() {
    static Registry& instance = *new Registry; // never destroyed: threads may still ask while the program ends
    return instance;
}

} // namespace

const ClassDescription& NSValueTransformer::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSValueTransformer>("NSValueTransformer", NSObject::describedClass())
            .method("transformedValue:", &NSValueTransformer::transformedValue)
            .method("reverseTransformedValue:", &NSValueTransformer::reverseTransformedValue)
            .build();
    return description;
}

const ClassDescription& NSValueTransformer::classDescription() const {
    return describedClass();
}

void NSValueTransformer::setValueTransformer(std::shared_ptr<NSValueTransformer> transformer, const NSString& forName) {
    // The one that goes is let go of outside of the lock: its destructor is the host's and may ask the registry.
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    if (transformer != nullptr) {
        all.transformers[forName].swap(transformer);
    } else if (const auto found = all.transformers.find(forName); found != all.transformers.end()) {
        transformer = std::move(found->second);
        all.transformers.erase(found);
    }
}

std::shared_ptr<NSValueTransformer> NSValueTransformer::valueTransformerForName(const NSString& name) {
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    const auto found = all.transformers.find(name);
    return found != all.transformers.end() ? found->second : nullptr;
}

std::vector<NSString> NSValueTransformer::valueTransformerNames() {
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    std::vector<NSString> names;
    names.reserve(all.transformers.size());
    for (const auto& [name, transformer] : all.transformers) {
        names.push_back(name);
    }
    return names;
}

std::optional<Value> NSValueTransformer::transformedValue(const std::optional<Value>& value) const {
    return value;
}

std::optional<Value> NSValueTransformer::reverseTransformedValue(const std::optional<Value>& value) const {
    return transformedValue(value);
}

} // namespace qk
