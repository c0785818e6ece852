// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Text.h"

#include "tools/softwareupdate/PackageManagerOutput.h"

#include <map>
#include <string>
#include <utility>

namespace qk::softwareupdate {
namespace {

namespace parse = platform::parse;

struct Installation {
    std::string_view name; // with ":architecture" for a foreign one
    std::string_view version;
    std::string_view architecture;
};

// One line "Inst name [old] (new origin, origin [architecture]) [...]"; nothing for every other line.
std::optional<Installation> installation(std::string_view line) {
    constexpr std::string_view kStart = "Inst ";
    const std::size_t opening = line.find(" [");
    const std::size_t closing = line.find("] (", opening);
    if (!line.starts_with(kStart) || opening == std::string_view::npos || closing == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view name = line.substr(kStart.size(), opening - std::min(opening, kStart.size()));
    const std::string_view rest = line.substr(closing + 3);
    const std::string_view details = rest.substr(0, rest.find(')'));
    const std::string_view version = details.substr(0, details.find(' '));
    if (name.empty() || version.empty() || name.find(' ') != std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view architecture;
    if (const std::size_t bracket = details.rfind('['); bracket != std::string_view::npos && details.ends_with(']')) {
        architecture = details.substr(bracket + 1, details.size() - bracket - 2);
    }
    return Installation{name, version, architecture};
}

// In the names of package files ":" and the like are written as "%3a".
std::string decoded(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto code = text.front() == '%' && text.size() >= 3 ? parse::number<unsigned char>(text.substr(1, 2), 16)
                                                                  : std::nullopt;
        result += code.has_value() ? static_cast<char>(*code) : text.front();
        text.remove_prefix(code.has_value() ? 3 : 1);
    }
    return result;
}

std::string fileName(const Installation& package) {
    const std::string_view name = package.name.substr(0, package.name.find(':'));
    return std::string(name) + "_" + std::string(package.version) + "_" + std::string(package.architecture) + ".deb";
}

using Sizes = std::map<std::string, std::uint64_t, std::less<>>;

Sizes sizesByFileName(std::string_view addresses) {
    Sizes sizes;
    parse::forEachLine(addresses, [&sizes](std::string_view line) {
        const std::size_t quote = line.starts_with('\'') ? line.find("' ", 1) : std::string_view::npos;
        if (quote == std::string_view::npos) {
            return true;
        }
        const std::string_view rest = line.substr(quote + 2);
        const std::size_t blank = rest.find(' ');
        if (blank == std::string_view::npos) {
            return true;
        }
        const std::string_view behind = rest.substr(blank + 1);
        if (const auto bytes = parse::number<std::uint64_t>(behind.substr(0, behind.find(' '))); bytes.has_value()) {
            sizes.insert_or_assign(decoded(rest.substr(0, blank)), *bytes);
        }
        return true;
    });
    return sizes;
}

} // namespace

PendingUpdates aptUpdates(std::string_view simulation) {
    PendingUpdates updates;
    parse::forEachLine(simulation, [&updates](std::string_view line) {
        if (const std::optional<Installation> package = installation(line); package.has_value()) {
            updates.push_back({std::string(package->name), std::string(package->version), std::nullopt, false});
        }
        return true;
    });
    return updates;
}

void addAptSizes(PendingUpdates& updates, std::string_view simulation, std::string_view addresses) {
    const Sizes sizes = sizesByFileName(addresses);
    std::map<std::pair<std::string_view, std::string_view>, std::uint64_t> known;
    parse::forEachLine(simulation, [&](std::string_view line) {
        if (const std::optional<Installation> package = installation(line); package.has_value()) {
            if (const auto size = sizes.find(fileName(*package)); size != sizes.end()) {
                known.insert_or_assign({package->name, package->version}, size->second);
            }
        }
        return true;
    });
    for (PendingUpdate& update : updates) {
        if (const auto size = known.find({update.name, update.version}); size != known.end()) {
            update.size = size->second;
        }
    }
}

} // namespace qk::softwareupdate
