// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <memory>
#include <optional>

namespace qk {

namespace platform {
struct Services;
}

/// `NSBundle`: a folder of resources, with string tables ("Localizable.strings") and folders of languages in it.
///
/// A bundle is a folder with the resources in "Contents/Resources" or "Resources" of it, or in itself. What has been
/// read of it, also that something is missing, is kept for its life: a table is read once. Threads: any, at the same
/// time. A look-up in a table that has been read takes no lock.
class QK_EXPORT NSBundle : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `bundleWithPath:`. Null when there is no folder at `path`.
    [[nodiscard]] static std::shared_ptr<NSBundle> bundleWithPath(const NSString& path);
    [[nodiscard]] static std::shared_ptr<NSBundle> bundleWithPath(const NSString& path,
                                                                  const platform::Services& services);

    /// `bundlePath`.
    [[nodiscard]] virtual NSString bundlePath() const = 0;

    /// `pathForResource:ofType:`. The path of the resource `name` with the extension `type` ("" for none); nothing when
    /// there is none. Names are compared as the file system does.
    [[nodiscard]] virtual std::optional<NSString> pathForResource(const NSString& name,
                                                                  const NSString& ofType) const = 0;

    /// The bundle at the path of the folder `name` ".lproj" among the resources, the same object each time; null when
    /// there is none.
    [[nodiscard]] virtual std::shared_ptr<NSBundle> bundleForLanguage(const NSString& name) const = 0;

    /// `localizedStringForKey:value:table:`. The text of `key` in a table; without a table's name that is
    /// "Localizable". When the table has none, or is missing or damaged: `value`, or `key` when that is nothing or
    /// empty. Without a key: `value`, or "".
    [[nodiscard]] virtual NSString localizedStringForKey(const std::optional<NSString>& key,
                                                         const std::optional<NSString>& value,
                                                         const std::optional<NSString>& table) const = 0;
};

} // namespace qk
