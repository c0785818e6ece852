// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <memory>
#include <optional>

namespace qk {

namespace platform {
struct Services;
}
namespace internal {
class BundleContents;
}

/// `NSBundle`: a folder of resources, with string tables ("Localizable.strings") and folders of languages in it.
///
/// The resources lie in "Contents/Resources" of the folder, in "Resources" of it, or in the folder itself: the first of
/// them that is there. What has been read of them, also that something is missing, is kept for the bundle's life: a
/// table is read once. Threads: any, at the same time. A look-up in a table that has been read takes no lock and
/// allocates nothing.
class QK_EXPORT NSBundle final : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `bundleWithPath:`. Null when there is no folder at `path`. The bundle goes on asking the machine that it was
    /// made on.
    [[nodiscard]] static std::shared_ptr<NSBundle> bundleWithPath(const NSString& path);
    [[nodiscard]] static std::shared_ptr<NSBundle> bundleWithPath(const NSString& path,
                                                                  const platform::Services& services);

    /// `mainBundle`. The bundle of the folder that the running program came in, the same object each time; null when
    /// that folder is not known or gone.
    [[nodiscard]] static std::shared_ptr<NSBundle> mainBundle();
    [[nodiscard]] static std::shared_ptr<NSBundle> mainBundle(const platform::Services& services);

    ~NSBundle() override;

    /// `bundlePath`. The path that the bundle was made with, without a trailing "/".
    [[nodiscard]] const NSString& bundlePath() const noexcept;

    /// `infoDictionary`. What "Info.plist" in "Contents", in "Resources" or in the folder itself holds, the first of
    /// them that can be read; empty when there is none.
    [[nodiscard]] const NSDictionary& infoDictionary() const;

    /// `objectForInfoDictionaryKey:`. The text of `key` in the table "InfoPlist" of the user's language, else the value
    /// of `infoDictionary`; nothing when there is neither. The language is the most preferred one that the bundle has a
    /// folder for.
    [[nodiscard]] std::optional<Value> objectForInfoDictionaryKey(const NSString& key) const;

    /// `pathForResource:ofType:`. The path of the resource `name` with the extension `ofType` ("" for none); nothing
    /// when there is none, and for an empty `name`. Names are compared as the file system does.
    [[nodiscard]] std::optional<NSString> pathForResource(const NSString& name, const NSString& ofType) const;

    /// The bundle at the path of the folder `name` ".lproj" among the resources, the same object each time; null when
    /// there is none. A name with "/" in it names no folder.
    [[nodiscard]] std::shared_ptr<NSBundle> bundleForLanguage(const NSString& name) const;

    /// `localizedStringForKey:value:table:`. The text of `key` in a table, also an empty one; without a table's name
    /// that is "Localizable". When the table has no text for it, or is missing or damaged: `value`, or `key` when that
    /// is nothing or empty. Without a key: `value`, or "".
    [[nodiscard]] NSString localizedStringForKey(const std::optional<NSString>& key,
                                                 const std::optional<NSString>& value,
                                                 const std::optional<NSString>& table) const;

    /// What has been read of the bundle: for the library's own sources.
    [[nodiscard]] const internal::BundleContents& contents() const noexcept { return *contents_; }

private:
    friend class internal::BundleContents; // makes the bundles of language folders

    explicit NSBundle(std::unique_ptr<internal::BundleContents> contents);

    std::unique_ptr<internal::BundleContents> contents_;
};

} // namespace qk
