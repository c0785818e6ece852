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

// A hyphen ends the name of a listed update, so the listing has non-breaking ones in versions. People and package
// managers write them as usual.
std::optional<Content> version(const NSDictionary& update) {
    const NSString* value = update.get<NSString>("version");
    return value != nullptr ? textContent(value->stringByReplacingOccurrencesOfString("\u2011", "-")) : std::nullopt;
}

bool flag(const NSDictionary& update, const NSString& key) {
    const NSNumber* value = update.get<NSNumber>(key);
    return value != nullptr && value->boolValue();
}

std::string flagsText(bool recommended, bool restart) {
    if (!recommended && !restart) {
        return "-";
    }
    return std::string(recommended ? "recommended" : "") + (recommended && restart ? ", " : "") +
           (restart ? "restart" : "");
}

Facts recordOf(const NSDictionary& update) {
    const bool recommended = flag(update, "recommended");
    const bool restart = flag(update, "restart");
    return {
        {"name", "Name", text(update, "name")},
        {"version", "Version", version(update)},
        {"description", "Description", text(update, "description"), Audience::Programs},
        {"size", "Size", text(update, "size")},
        {"flags", "Flags", flagsText(recommended, restart), Audience::People},
        {"recommended", "Recommended", recommended, Audience::Programs},
        {"restart", "Restart", restart, Audience::Programs},
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
