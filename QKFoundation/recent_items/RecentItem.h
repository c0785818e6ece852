// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace qk {

namespace platform {
struct Services;
}

/// What a `RecentItem` is.
/// Deliberate: packages and roots of volumes are folders, and asked about as such first, so the last two do not occur.
inline constexpr std::uint64_t RecentItemTypeUnknown = 0;
inline constexpr std::uint64_t RecentItemTypeFile = 1;
inline constexpr std::uint64_t RecentItemTypeSymbolicLink = 2;
inline constexpr std::uint64_t RecentItemTypeDirectory = 3;
inline constexpr std::uint64_t RecentItemTypePackage = 4;
inline constexpr std::uint64_t RecentItemTypeVolume = 5;

/// `RecentItem`: an item of the file system as it was when this object was made: its kind, what the user may do with
/// it, its name and its dates. Items are equal when their paths are.
///
/// On Linux the dates follow the kernel's access date, which most file systems move once a day at most.
/// Threads: any, at the same time, as long as nobody sets anything.
class QK_EXPORT RecentItem final : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `recentItemWithPath:`. As the initialiser.
    [[nodiscard]] static std::shared_ptr<RecentItem> recentItemWithPath(const std::optional<NSString>& path);

    /// `initWithPath:`. Reads what there is about `path`. Never null: for a path that does not exist, or none, the kind
    /// is unknown, nothing may be done and there are no dates.
    [[nodiscard]] static std::shared_ptr<RecentItem> initWithPath(const std::optional<NSString>& path);
    /// The same on a machine of one's own.
    [[nodiscard]] static std::shared_ptr<RecentItem>
    initWithPath(const std::shared_ptr<const platform::Services>& services, const std::optional<NSString>& path);

    /// `isEqual:`. Whether the other is a `RecentItem` of the same path, in every character, or both have none.
    [[nodiscard]] bool isEqual(const Value& other) const override;

    /// `hash`. That of the path; 0 without one.
    [[nodiscard]] std::size_t hash() const override;

    /// `description`. Class and address, then in parentheses the date of the latest interaction, a blank and the path;
    /// "(null)" for what is not there.
    [[nodiscard]] NSString description() const override;

    /// `typeForURL:`. What is at the file URL, as it is now: one of the constants above. A link is not followed.
    [[nodiscard]] std::uint64_t typeForURL(const NSURL& url) const;

    /// `evaluateLatestInteractionDate`. The content's access date when the modification date is earlier, else that one.
    /// Without a modification date there is none.
    [[nodiscard]] std::optional<NSDate> evaluateLatestInteractionDate() const;

    /// `boolValueForURL:key:`. The resource value; false when there is none.
    [[nodiscard]] bool boolValueForURL(const NSURL& url, const NSString& key) const;

    /// `dateValueForURL:key:`. The resource value; nothing when there is none.
    [[nodiscard]] std::optional<NSDate> dateValueForURL(const NSURL& url, const NSString& key) const;

    /// `type`. One of the constants above.
    [[nodiscard]] std::uint64_t type() const noexcept { return type_; }
    void setType(std::uint64_t type) noexcept { type_ = type; }

    /// `readable`, `writeable` and `executeable`. What the user may do.
    [[nodiscard]] bool isReadable() const noexcept { return readable_; }
    void setReadable(bool readable) noexcept { readable_ = readable; }
    [[nodiscard]] bool isWriteable() const noexcept { return writeable_; }
    void setWriteable(bool writeable) noexcept { writeable_ = writeable; }
    [[nodiscard]] bool isExecuteable() const noexcept { return executeable_; }
    void setExecuteable(bool executeable) noexcept { executeable_ = executeable; }

    /// `displayName`. The last part of the path.
    [[nodiscard]] const std::optional<NSString>& displayName() const noexcept { return displayName_; }
    void setDisplayName(const std::optional<NSString>& name) { displayName_ = name; }

    /// `path`. As it was given.
    [[nodiscard]] const std::optional<NSString>& path() const noexcept { return path_; }
    void setPath(const std::optional<NSString>& path) { path_ = path; }

    /// `contentModificationDate`.
    /// Deliberate: in a new item this is when the content was accessed last, so that the list of recent items follows
    /// what was used rather than what was written; without that date there is none.
    [[nodiscard]] const std::optional<NSDate>& contentModificationDate() const noexcept {
        return contentModificationDate_;
    }
    void setContentModificationDate(const std::optional<NSDate>& date) { contentModificationDate_ = date; }

    /// `contentAccessDate`.
    /// Deliberate: nothing, unless a caller sets it.
    [[nodiscard]] const std::optional<NSDate>& contentAccessDate() const noexcept { return contentAccessDate_; }
    void setContentAccessDate(const std::optional<NSDate>& date) { contentAccessDate_ = date; }

    /// `latestInteractionDate`. What recent items are ordered by.
    [[nodiscard]] const std::optional<NSDate>& latestInteractionDate() const noexcept { return latestInteractionDate_; }
    void setLatestInteractionDate(const std::optional<NSDate>& date) { latestInteractionDate_ = date; }

private:
    explicit RecentItem(std::shared_ptr<const platform::Services> services) : services_(std::move(services)) {}

    const std::shared_ptr<const platform::Services> services_;
    std::uint64_t type_ = RecentItemTypeUnknown;
    bool readable_ = false;
    bool writeable_ = false;
    bool executeable_ = false;
    std::optional<NSString> displayName_;
    std::optional<NSString> path_;
    std::optional<NSDate> contentModificationDate_;
    std::optional<NSDate> contentAccessDate_;
    std::optional<NSDate> latestInteractionDate_;
};

} // namespace qk
