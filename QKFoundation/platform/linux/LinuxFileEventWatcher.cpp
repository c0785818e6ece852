// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFileEventWatcher.h"

namespace qk::platform {

FSEventStreamEventFlags changesSince(const ItemDates& dates, std::int64_t since) {
    const std::int64_t from = since - kFileDateSlack;
    if (dates.changed < from) {
        return kFSEventStreamEventFlagNone;
    }
    return (dates.created >= from ? kFSEventStreamEventFlagItemCreated : kFSEventStreamEventFlagNone) |
           (dates.modified >= from ? kFSEventStreamEventFlagItemModified : kFSEventStreamEventFlagItemInodeMetaMod);
}

} // namespace qk::platform
