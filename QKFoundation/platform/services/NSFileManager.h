// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <memory>

namespace qk {

/// `NSFileManager`: an object through which files and standard folders are asked for. Every manager asks the machine
/// that is installed at the time of the call. Threads: any, at the same time.
class QK_EXPORT NSFileManager : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `defaultManager`. The one that everybody shares; it is never destroyed.
    [[nodiscard]] static const std::shared_ptr<NSFileManager>& defaultManager();

    /// `init`. A manager of one's own.
    [[nodiscard]] static std::shared_ptr<NSFileManager> init();

    /// `fileExistsAtPath:`. Whether `path` leads to a file or folder; a symbolic link that leads nowhere does not.
    [[nodiscard]] virtual bool fileExistsAtPath(const NSString& path) const;

protected:
    NSFileManager() = default;
};

} // namespace qk
