// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/recent_items/MetadataItemSet.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& MetadataItemSet::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<MetadataItemSet>("MetadataItemSet", NSObject::describedClass())
            .property("count", &MetadataItemSet::count)
            .property("allObjects", &MetadataItemSet::allObjects)
            .method("addObject:", &MetadataItemSet::addObject)
            .method("removeAllObjects", &MetadataItemSet::removeAllObjects)
            .method("containsObject:", &MetadataItemSet::containsObject)
            .build();
    return description;
}

const ClassDescription& MetadataItemSet::classDescription() const {
    return describedClass();
}

std::shared_ptr<MetadataItemSet> MetadataItemSet::set() {
    return std::shared_ptr<MetadataItemSet>(new MetadataItemSet);
}

void MetadataItemSet::addObject(const std::shared_ptr<NSMetadataItem>& item) {
    if (item != nullptr && members_.insert(Value(item)).second) {
        items_.push_back(item);
    }
}

void MetadataItemSet::removeAllObjects() {
    members_.clear();
    items_.clear();
}

bool MetadataItemSet::containsObject(const std::shared_ptr<NSMetadataItem>& item) const {
    return item != nullptr && members_.contains(Value(item));
}

} // namespace qk
