// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKWeakDictionary.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& QKWeakDictionary::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKWeakDictionary>("QKWeakDictionary", NSObject::describedClass())
            .property("dictionary", [](const QKWeakDictionary& self) { return self.dictionary_.copy(); })
            .method("objectForKeyedSubscript:", &QKWeakDictionary::objectForKeyedSubscript)
            .method("setObject:forKeyedSubscript:", &QKWeakDictionary::setObject)
            .build();
    return description;
}

const ClassDescription& QKWeakDictionary::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKWeakDictionary> QKWeakDictionary::init() {
    return std::shared_ptr<QKWeakDictionary>(new QKWeakDictionary);
}

std::shared_ptr<NSObject> QKWeakDictionary::objectForKeyedSubscript(const NSString& key) const {
    const Value* value = dictionary_.objectForKey(key);
    const auto container = value != nullptr ? value->asObject<QKWeakContainer>() : nullptr;
    return container != nullptr ? container->content() : nullptr;
}

void QKWeakDictionary::setObject(const std::shared_ptr<NSObject>& object, const NSString& forKeyedSubscript) {
    const std::shared_ptr<QKWeakContainer> container = QKWeakContainer::init();
    container->setContent(object);
    dictionary_.setObject(container, forKeyedSubscript);
}

} // namespace qk
