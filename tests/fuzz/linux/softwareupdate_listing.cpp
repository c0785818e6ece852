// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKOSUpdateParser.h"

#include "tests/fuzz/linux/Require.h"
#include "tools/softwareupdate/Listing.h"
#include "tools/softwareupdate/PackageManagerOutput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What package managers print, through the listing and its parser: every update that can be listed arrives, and
/// nothing else.
namespace {

using qk::fuzz::require;
using namespace qk::softwareupdate;

void checkListing(PendingUpdates updates, std::string_view rebootRequired) {
    markRestarts(updates, rebootRequired);
    const auto text = qk::NSString::fromUTF8(listing(updates));
    if (!text.has_value()) {
        return; // names that are not UTF-8
    }
    const auto parser = qk::QKOSUpdateParser::initWithString(qk::Value(*text));
    require(parser->startParsing());
    const auto listable = std::ranges::count_if(
        updates, [](const PendingUpdate& update) { return isListable(update.name) && isListable(update.version); });
    require(parser->parsedObjects()->count() == static_cast<std::size_t>(listable));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    PendingUpdates updates = aptUpdates(text);
    addAptSizes(updates, text, text);
    checkListing(std::move(updates), text);
    checkListing(dnfUpdates(text), text);
    if (auto update = packageKitUpdate(text); update.has_value()) {
        checkListing({*std::move(update)}, text);
    }
    return 0;
}
