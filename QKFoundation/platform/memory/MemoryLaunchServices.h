// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/LaunchServices.h"
#include "QKFoundation/platform/services/UniformTypes.h"

#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
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

    /// Files with that extension are of these types, the preferred one first.
    void setTypesForExtension(const NSString& extension, const std::vector<NSString>& types);

    /// People call `type` so, and so it was declared.
    void setDescription(const NSString& type, const NSString& description);
    void setDeclaration(const NSString& type, const NSDictionary& declaration);

    /// How often it was asked whether a type conforms to another one.
    [[nodiscard]] std::size_t conformanceRequests() const;

    [[nodiscard]] bool typeConformsTo(const NSString& type, const NSString& conformsTo) const override;
    [[nodiscard]] std::vector<NSString> typesForExtension(const NSString& extension) const override;
    [[nodiscard]] std::optional<NSString> descriptionOfType(const NSString& type) const override;
    [[nodiscard]] std::optional<NSDictionary> declarationOfType(const NSString& type) const override;

private:
    mutable std::mutex mutex_;
    std::map<NSString, std::vector<NSString>> declared_; // identifiers in lower case
    std::map<NSString, std::vector<NSString>> types_;    // by extension in lower case
    std::map<NSString, NSString> descriptions_;          // by identifier in lower case
    std::map<NSString, NSDictionary> declarations_;      // by identifier in lower case
    mutable std::size_t conformanceRequests_ = 0;
};

} // namespace qk::platform::memory
