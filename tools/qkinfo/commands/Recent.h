// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/recent_items/RecentItemsObserver.h"

#include "tools/qkinfo/BackgroundWork.h"
#include "tools/qkinfo/Commands.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace qk::info {

/// Whose recent items, and how long.
struct RecentOptions {
    std::optional<std::string> home; ///< in the encoding that it came in; nothing for the user's own
    bool follows = false;            ///< whether changes are shown, too
};

/// The home folder that is asked for, in the form that events are told with; nothing for the user's own. Raises
/// `std::runtime_error` for one that cannot be read.
[[nodiscard]] std::optional<NSString> homeOf(const RecentOptions& options);

/// The recent items of a home folder for as long as this object lives: told by the main run loop, on the main thread.
/// Only what has changed since this is told.
class RecentItemsWatch {
public:
    using Changed = std::function<void(const RecentItemsObserver::Items& latest)>;

    /// Calls `changed` when the folders of `home` (nothing: the user's own) have been looked through for the first
    /// time, and when the list may have changed. Takes its time where the system has to be told of each folder.
    RecentItemsWatch(const std::optional<NSString>& home, Changed changed);
    RecentItemsWatch(const RecentItemsWatch&) = delete;
    RecentItemsWatch& operator=(const RecentItemsWatch&) = delete;
    ~RecentItemsWatch();

private:
    std::shared_ptr<RecentItemsObserver> observer_;
};

/// The items as they are told, in their order.
[[nodiscard]] List recentList(const RecentItemsObserver::Items& items);

/// The recent items once the folders have been looked through, with a moving line on a terminal at standard error
/// meanwhile. Main thread. Raises as `homeOf` does.
[[nodiscard]] Section recentSection(const RecentOptions& options);

/// The user's recent items. Nothing when looking for them takes too long. Main thread.
[[nodiscard]] std::optional<Body> recent(const Surroundings& surroundings);

/// What `RecentItemsWatch` is about, in the JSON and for people.
inline constexpr std::string_view kRecentKey = "recent";
inline constexpr std::string_view kRecentTitle = "Recent items";

} // namespace qk::info
