// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkProxies.h"

#include "QKFoundation/platform/linux/parse/Text.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSString.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

std::string lowerCase(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char unit) {
        return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
    });
    return result;
}

std::string upperCase(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char unit) {
        return unit >= 'a' && unit <= 'z' ? static_cast<char>(unit - 'a' + 'A') : unit;
    });
    return result;
}

std::optional<std::string> variable(const Variables& variables, const std::string& name) {
    std::optional<std::string> value = filledVariable(variables, name.c_str());
    // A web server hands its client's header "Proxy" to programs as HTTP_PROXY.
    return value.has_value() || name == "http_proxy" ? value : filledVariable(variables, upperCase(name).c_str());
}

struct Protocol {
    const char* variable;
    const char* prefix;
};
constexpr std::array kProtocols{Protocol{"http_proxy", "HTTP"}, Protocol{"https_proxy", "HTTPS"},
                                Protocol{"ftp_proxy", "FTP"}};

using Entries = std::vector<NSDictionary::Entry>;

void append(const NSString& prefix, const ProxyAddress& address, Entries& entries) {
    entries.emplace_back(prefix + "Enable", 1);
    entries.emplace_back(prefix + "Proxy", NSString::fromUTF8Lossy(address.host));
    if (address.port.has_value()) {
        entries.emplace_back(prefix + "Port", *address.port);
    }
}

NSArray exceptions(std::string_view list) {
    std::vector<Value> result;
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        if (const std::string_view entry = parse::trimmed(list.substr(0, comma)); !entry.empty()) {
            result.emplace_back(NSString::fromUTF8Lossy(entry));
        }
        list.remove_prefix(std::min(comma + 1, list.size()));
    }
    return NSArray(std::move(result));
}

} // namespace

std::optional<ProxyAddress> proxyAddress(std::string_view value) {
    ProxyAddress result;
    value = parse::trimmed(value);
    if (const std::size_t mark = value.find("://"); mark != std::string_view::npos) {
        result.scheme = lowerCase(value.substr(0, mark));
        value.remove_prefix(mark + 3);
    }
    value = value.substr(0, value.find_first_of("/?#"));
    value.remove_prefix(value.rfind('@') + 1); // nothing where there is no "@"
    std::string_view port;
    if (value.starts_with('[')) {
        const std::size_t end = value.find(']');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        port = value.substr(end + 1);
        value = value.substr(1, end - 1);
    } else if (const std::size_t colon = value.rfind(':'); colon != std::string_view::npos) {
        port = value.substr(colon);
        value = value.substr(0, colon);
    }
    if (value.empty()) {
        return std::nullopt;
    }
    if (port.starts_with(':')) {
        result.port = parse::number<std::uint16_t>(port.substr(1));
    }
    result.host = value;
    return result;
}

std::optional<NSDictionary> environmentProxies(const Variables& variables) {
    Entries entries;
    const auto named = [&variables](const char* name) {
        const std::optional<std::string> value = variable(variables, name);
        return value.has_value() ? proxyAddress(*value) : std::nullopt;
    };
    const std::optional<ProxyAddress> all = named("all_proxy");
    const bool isSOCKS = all.has_value() && all->scheme.starts_with("socks");
    for (const Protocol& protocol : kProtocols) {
        std::optional<ProxyAddress> address = named(protocol.variable);
        if (!address.has_value() && !isSOCKS) {
            address = all;
        }
        if (address.has_value()) {
            append(NSString::fromUTF8Lossy(protocol.prefix), *address, entries);
        }
    }
    if (isSOCKS) {
        append("SOCKS", *all, entries);
    }
    if (entries.empty()) {
        return std::nullopt;
    }
    if (const std::optional<std::string> list = variable(variables, "no_proxy"); list.has_value()) {
        entries.emplace_back("ExceptionsList", exceptions(*list));
    }
    return NSDictionary(std::move(entries));
}

} // namespace qk::platform
