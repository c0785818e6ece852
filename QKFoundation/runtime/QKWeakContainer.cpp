// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKWeakContainer.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& QKWeakContainer::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKWeakContainer>("QKWeakContainer", NSObject::describedClass())
            .property("content", &QKWeakContainer::content, &QKWeakContainer::setContent)
            .build();
    return description;
}

const ClassDescription& QKWeakContainer::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKWeakContainer> QKWeakContainer::init() {
    return std::shared_ptr<QKWeakContainer>(new QKWeakContainer);
}

} // namespace qk
