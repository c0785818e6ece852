// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/LaunchServices.h"
#include "QKFoundation/platform/services/UniformTypes.h"

#include <map>
#include <mutex>
#include <vector>

namespace qk::platform::memory {

/// A desktop on which nothing can be opened until it is told so. Threads: any, at the same time.
class QK_EXPORT MemoryLaunchServices final : public LaunchServices {
public:
    /// Every URL is answered with `status`.
    void setStatus(std::int32_t status);

    /// The URLs that were to be opened so far, in order, refused ones included.
    [[nodiscard]] std::vector<NSURL> openedURLs() const;

    [[nodiscard]] std::int32_t openURL(const NSURL& url) override;

private:
    mutable std::mutex mutex_;
    std::int32_t status_ = kLSApplicationNotFoundErr;
    std::vector<NSURL> opened_;
};

/// A system that knows the type identifiers it was told. Threads: any, at the same time.
class QK_EXPORT MemoryUniformTypes final : public UniformTypes {
public:
    /// `type` is declared, and conforms to these, step by step.
    void declareType(const NSString& type, const std::vector<NSString>& conformsTo);

    [[nodiscard]] bool typeConformsTo(const NSString& type, const NSString& conformsTo) const override;

private:
    mutable std::mutex mutex_;
    std::map<NSString, std::vector<NSString>> declared_; // identifiers in lower case
};

} // namespace qk::platform::memory
