// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/NetworkKeyfile.h"

#include "QKFoundation/platform/linux/parse/Assignments.h"
#include "QKFoundation/platform/linux/parse/ResolvConf.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace qk::platform::parse {
namespace {

std::string_view valueOf(const Assignments& values, std::string_view name) {
    const auto found = values.find(name);
    return found != values.end() ? std::string_view(found->second) : std::string_view();
}

// Absolute paths between colons or blanks: versions of networkd differ.
std::vector<std::string> paths(std::string_view text) {
    std::string separated(text);
    std::ranges::replace(separated, ':', ' ');
    std::vector<std::string> result;
    for (const std::string_view word : words(separated)) {
        if (word.starts_with('/')) {
            result.emplace_back(word);
        }
    }
    return result;
}

std::optional<bool> boolean(std::string_view text) {
    static constexpr std::array<std::string_view, 6> kTrue{"yes", "true", "1", "on", "y", "t"};
    static constexpr std::array<std::string_view, 6> kFalse{"no", "false", "0", "off", "n", "f"};
    if (std::ranges::find(kTrue, text) != kTrue.end()) {
        return true;
    }
    return std::ranges::find(kFalse, text) != kFalse.end() ? std::optional(false) : std::nullopt;
}

struct Families {
    bool ipv4;
    bool ipv6;
};

// DHCP= and LinkLocalAddressing=; nothing for a word that means nothing, which networkd ignores.
std::optional<Families> families(std::string_view text) {
    if (text == "ipv4" || text == "v4") {
        return Families{true, false};
    }
    if (text == "ipv6" || text == "v6") {
        return Families{false, true};
    }
    if (text == "both") {
        return Families{true, true};
    }
    const std::optional<bool> all = text == "none" ? std::optional(false) : boolean(text);
    return all.has_value() ? std::optional(Families{*all, *all}) : std::nullopt;
}

void takeAddress(std::string_view value, NetworkSettings& settings) {
    const std::string_view address = value.substr(0, value.find('/'));
    if (serverAddress(address).has_value()) {
        (address.find(':') != std::string_view::npos ? settings.hasAddress6 : settings.hasAddress4) = true;
    }
}

void takeNetworkSetting(std::string_view key, std::string_view value, NetworkSettings& settings) {
    if (key == "Address" && value.empty()) {
        settings.hasAddress4 = settings.hasAddress6 = false; // forgets what stood before it
    } else if (key == "Address") {
        takeAddress(value, settings);
    } else if (const auto both = families(value); key == "DHCP" && both.has_value()) {
        settings.dhcp4 = both->ipv4;
        settings.dhcp6 = both->ipv6;
    } else if (key == "LinkLocalAddressing" && both.has_value()) {
        settings.linkLocal4 = both->ipv4;
    } else if (key == "IPv6AcceptRA") {
        settings.acceptsRouterAdvertisements = boolean(value);
    }
}

constexpr bool isComment(std::string_view line) {
    return line.starts_with('#') || line.starts_with(';');
}

} // namespace

std::optional<NetworkdLink> networkdLink(std::string_view state) {
    const Assignments values = assignments(state);
    const std::string_view administrative = valueOf(values, "ADMIN_STATE");
    NetworkdLink result;
    result.networkFile = valueOf(values, "NETWORK_FILE");
    if (administrative.empty() || administrative == "unmanaged" || !result.networkFile.starts_with('/')) {
        return std::nullopt;
    }
    result.dropIns = paths(valueOf(values, "NETWORK_FILE_DROPINS"));
    for (const std::string_view server : words(valueOf(values, "DNS"))) {
        if (std::optional<std::string> address = serverAddressWithPort(server); address.has_value()) {
            result.nameServers.push_back(*std::move(address));
        }
    }
    for (const std::string_view domain : words(valueOf(values, "DOMAINS"))) {
        result.domains.emplace_back(domain);
    }
    return result;
}

void applyNetworkFile(std::string_view text, NetworkSettings& settings) {
    std::string_view section;
    std::string joined; // of a line that goes on in the next one
    const auto takeLine = [&](std::string_view line) {
        const std::string_view content = trimmed(line);
        if (content.starts_with('[') && content.ends_with(']')) {
            section = content == "[Network]" ? "Network" : content == "[Address]" ? "Address" : "";
            return;
        }
        const auto assignment = splitAt(content, '=');
        if (!assignment.has_value()) {
            return;
        }
        if (section == "Network") {
            takeNetworkSetting(assignment->first, assignment->second, settings);
        } else if (section == "Address" && assignment->first == "Address") {
            takeAddress(assignment->second, settings);
        }
    };
    forEachLine(text, [&](std::string_view line) {
        if (isComment(trimmed(line))) {
            return true; // in between the parts of a line as well
        }
        if (line.ends_with('\\')) {
            joined.append(line.substr(0, line.size() - 1)).append(" ");
            return true;
        }
        takeLine(joined.append(line));
        joined.clear();
        return true;
    });
    takeLine(joined);
}

} // namespace qk::platform::parse
