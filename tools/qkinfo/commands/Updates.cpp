// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Updates.h"

#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSNumber.h"
#include "QKFoundation/system_info/QKSystemInfo.h"

namespace qk::info {

namespace {

std::optional<Content> text(const NSDictionary& update, const NSString& key) {
    const NSString* value = update.get<NSString>(key);
    return value != nullptr ? textContent(*value) : std::nullopt;
}

std::optional<Content> flag(const NSDictionary& update, const NSString& key) {
    const NSNumber* value = update.get<NSNumber>(key);
    return value != nullptr ? std::optional<Content>(value->boolValue()) : std::nullopt;
}

Facts recordOf(const NSDictionary& update) {
    return {
        {"name", "Name", text(update, "name")},
        {"version", "Version", text(update, "version")},
        {"description", "Description", text(update, "description"), Audience::Programs},
        {"size", "Size", text(update, "size")},
        {"recommended", "Recommended", flag(update, "recommended")},
        {"restart", "Restart", flag(update, "restart")},
    };
}

} // namespace

std::optional<Body> updates(const Surroundings& /*surroundings*/) {
    const auto pending = QKSystemInfo::osUpdates();
    if (!pending.has_value()) {
        return std::nullopt;
    }
    List list{{}, "Up to date.", "update", "updates"};
    for (const Value& update : *pending) {
        if (const auto* entry = update.as<NSDictionary>()) {
            list.records.push_back(recordOf(*entry));
        }
    }
    return list;
}

} // namespace qk::info
