// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/NSFileManager.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/Services.h"

namespace qk {

const ClassDescription& NSFileManager::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSFileManager>("NSFileManager", NSObject::describedClass())
            .method("fileExistsAtPath:", &NSFileManager::fileExistsAtPath)
            .build();
    return description;
}

const ClassDescription& NSFileManager::classDescription() const {
    return describedClass();
}

const std::shared_ptr<NSFileManager>& NSFileManager::defaultManager() {
    static const auto* const theManager = new std::shared_ptr<NSFileManager>(init());
    return *theManager;
}

std::shared_ptr<NSFileManager> NSFileManager::init() {
    return std::shared_ptr<NSFileManager>(new NSFileManager);
}

bool NSFileManager::fileExistsAtPath(const NSString& path) const {
    return platform::services()->fileManager->fileExistsAtPath(path);
}

} // namespace qk
