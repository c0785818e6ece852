// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/MetadataIndex.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <utility>

namespace qk {

NSMetadataItem::NSMetadataItem(NSDictionary attributes) : attributes_(std::move(attributes)) {}

std::shared_ptr<NSMetadataItem> NSMetadataItem::initWithAttributes(NSDictionary attributes) {
    return std::shared_ptr<NSMetadataItem>(new NSMetadataItem(std::move(attributes)));
}

std::optional<Value> NSMetadataItem::valueForAttribute(const NSString& name) const {
    const Value* value = attributes_.objectForKey(name);
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

const ClassDescription& NSMetadataItem::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSMetadataItem>("NSMetadataItem", NSObject::describedClass())
            .method("valueForAttribute:", &NSMetadataItem::valueForAttribute)
            .build();
    return description;
}

const ClassDescription& NSMetadataItem::classDescription() const {
    return describedClass();
}

} // namespace qk
