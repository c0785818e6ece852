// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSRecursiveLock.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

QKLocking::~QKLocking() = default;

const ProtocolDescription& QKLocking::describedProtocol() {
    static const ProtocolDescription& description =
        ProtocolBuilder("QKLocking").method("tryLock").method("unlock").build();
    return description;
}

const ClassDescription& NSRecursiveLock::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSRecursiveLock>("NSRecursiveLock", NSObject::describedClass())
            .property("name", &NSRecursiveLock::name, &NSRecursiveLock::setName)
            .method("lock", &NSRecursiveLock::lock)
            .method("tryLock", &NSRecursiveLock::tryLock)
            .method("unlock", &NSRecursiveLock::unlock)
            .protocol(QKLocking::describedProtocol())
            .build();
    return description;
}

const ClassDescription& NSRecursiveLock::classDescription() const {
    return describedClass();
}

std::shared_ptr<NSRecursiveLock> NSRecursiveLock::init() {
    return std::shared_ptr<NSRecursiveLock>(new NSRecursiveLock);
}

void NSRecursiveLock::lock() {
    mutex_.lock();
}

bool NSRecursiveLock::tryLock() {
    return mutex_.try_lock();
}

void NSRecursiveLock::unlock() {
    mutex_.unlock();
}

} // namespace qk
