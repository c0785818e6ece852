// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/ResolvConf.h"

#include "QKFoundation/platform/linux/parse/Text.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace qk::platform::parse {
namespace {

constexpr std::string_view kBlanks = " \t\r";

bool isAddress(int family, std::string_view text) {
    in6_addr address{};
    // A zero byte would end the text before its end.
    return text.find('\0') == std::string_view::npos && ::inet_pton(family, std::string(text).c_str(), &address) == 1;
}

constexpr bool isOfScope(char unit) {
    return unit > ' ' && unit <= '~' && unit != '%' && unit != '/' && unit != '#';
}

// What stands behind `keyword` and at least one blank; nothing for another line.
std::optional<std::string_view> argumentOf(std::string_view line, std::string_view keyword) {
    if (!line.starts_with(keyword) || line.size() == keyword.size() ||
        kBlanks.find(line[keyword.size()]) == std::string_view::npos) {
        return std::nullopt;
    }
    return trimmed(line.substr(keyword.size()));
}

// An empty line of that kind changes nothing.
void takeDomains(std::string_view argument, ResolvConf& configuration) {
    const std::vector<std::string_view> domains = words(argument);
    if (domains.empty()) {
        return;
    }
    configuration.searchDomains.clear();
    for (const std::string_view domain : domains) {
        if (domain != ".") {
            configuration.searchDomains.emplace_back(domain);
        }
    }
}

} // namespace

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> result;
    for (;;) {
        const std::size_t begin = text.find_first_not_of(kBlanks);
        if (begin == std::string_view::npos) {
            return result;
        }
        const std::size_t end = std::min(text.find_first_of(kBlanks, begin), text.size());
        result.push_back(text.substr(begin, end - begin));
        text.remove_prefix(end);
    }
}

std::optional<std::string> serverAddress(std::string_view text) {
    const std::size_t percent = text.find('%');
    const std::string_view address = text.substr(0, percent);
    if (isAddress(AF_INET, address)) {
        return percent == std::string_view::npos ? std::optional(std::string(address)) : std::nullopt;
    }
    if (!isAddress(AF_INET6, address)) {
        return std::nullopt;
    }
    if (percent != std::string_view::npos) {
        const std::string_view scope = text.substr(percent + 1);
        if (scope.empty() || !std::ranges::all_of(scope, isOfScope)) {
            return std::nullopt;
        }
    }
    return std::string(text);
}

std::optional<std::string> serverAddressWithPort(std::string_view text) {
    text = text.substr(0, text.find('#'));
    const std::size_t percent = text.find('%');
    std::string_view scope = percent == std::string_view::npos ? std::string_view() : text.substr(percent);
    std::string_view address = text.substr(0, percent);
    std::string_view port;
    if (address.starts_with('[')) {
        const std::size_t end = address.find(']');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        port = address.substr(end + 1);
        address = address.substr(1, end - 1);
    } else if (std::ranges::count(address, ':') == 1) {
        port = address.substr(address.find(':'));
        address = address.substr(0, address.find(':'));
    }
    if (!port.empty() && (port.front() != ':' || !number<std::uint16_t>(port.substr(1)).has_value())) {
        return std::nullopt;
    }
    if (isAddress(AF_INET, address)) {
        scope = {}; // the way to an IPv4 server is no part of its address
    }
    return serverAddress(std::string(address) + std::string(scope));
}

ResolvConf resolvConf(std::string_view text) {
    ResolvConf result;
    forEachLine(text, [&result](std::string_view line) {
        if (const auto server = argumentOf(line, "nameserver"); server.has_value()) {
            const std::string_view first = server->substr(0, server->find_first_of(kBlanks));
            if (std::optional<std::string> address = serverAddress(first); address.has_value()) {
                result.nameServers.push_back(*std::move(address));
            }
        } else if (const auto search = argumentOf(line, "search"); search.has_value()) {
            takeDomains(*search, result);
        } else if (const auto domain = argumentOf(line, "domain"); domain.has_value()) {
            takeDomains(domain->substr(0, domain->find_first_of(kBlanks)), result);
        }
        return true;
    });
    return result;
}

bool namesOnlyLocalStub(const ResolvConf& configuration) {
    return !configuration.nameServers.empty() &&
           std::ranges::all_of(configuration.nameServers, [](const std::string& server) {
               return server == "127.0.0.53" || server == "127.0.0.54";
           });
}

} // namespace qk::platform::parse
