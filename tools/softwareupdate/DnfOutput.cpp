// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Text.h"

#include "tools/softwareupdate/PackageManagerOutput.h"

#include <algorithm>

namespace qk::softwareupdate {
namespace {

namespace parse = platform::parse;

std::vector<std::string_view> words(std::string_view line) {
    constexpr std::string_view kSpace = " \t\r";
    std::vector<std::string_view> result;
    for (std::size_t at = line.find_first_not_of(kSpace); at != std::string_view::npos;
         at = line.find_first_not_of(kSpace, at)) {
        const std::size_t end = std::min(line.find_first_of(kSpace, at), line.size());
        result.push_back(line.substr(at, end - at));
        at = end;
    }
    return result;
}

} // namespace

PendingUpdates dnfUpdates(std::string_view output) {
    constexpr std::size_t kColumns = 3;
    PendingUpdates updates;
    std::vector<std::string_view> columns;
    parse::forEachLine(output, [&](std::string_view line) {
        if (line.starts_with("Obsoleting")) {
            return false;
        }
        const std::vector<std::string_view> more = words(line);
        const bool continues = line.starts_with(' ') && !columns.empty();
        if (!continues) {
            columns.clear();
        }
        columns.insert(columns.end(), more.begin(), more.end());
        if (columns.size() < kColumns) {
            return true;
        }
        const std::size_t dot = columns[0].rfind('.');
        // A version begins with a digit; the other lines of three words are messages.
        const bool isVersion = columns[1].front() >= '0' && columns[1].front() <= '9';
        if (columns.size() == kColumns && dot != std::string_view::npos && dot != 0 && isVersion) {
            updates.push_back({std::string(columns[0].substr(0, dot)), std::string(columns[1]), std::nullopt, false});
        }
        columns.clear();
        return true;
    });
    return updates;
}

std::optional<PendingUpdate> packageKitUpdate(std::string_view packageID) {
    const std::size_t name = packageID.find(';');
    const std::size_t version = name == std::string_view::npos ? name : packageID.find(';', name + 1);
    if (version == std::string_view::npos || name == 0 || version == name + 1) {
        return std::nullopt;
    }
    return PendingUpdate{std::string(packageID.substr(0, name)),
                         std::string(packageID.substr(name + 1, version - name - 1)), std::nullopt, false};
}

} // namespace qk::softwareupdate
