// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How the name system is configured.
namespace qk::platform::parse {

/// What /etc/resolv.conf tells (resolv.conf(5)).
struct ResolvConf {
    std::vector<std::string> nameServers; ///< addresses; IPv6 ones with their scope where it is written: "fe80::1%eth0"
    std::vector<std::string> searchDomains; ///< of the last line "search" or "domain"

    [[nodiscard]] friend bool operator==(const ResolvConf&, const ResolvConf&) = default;
};

/// Lines whose keyword is not at their beginning, and name servers that are no address, are left out, as the C library
/// does it. The root domain "." is nothing to search in.
[[nodiscard]] ResolvConf resolvConf(std::string_view text);

/// Whether the only name servers are those that systemd-resolved itself offers on this machine (127.0.0.53 and .54).
[[nodiscard]] bool namesOnlyLocalStub(const ResolvConf& configuration);

/// The address of a name server as `text` writes it, with its scope: "192.0.2.1", "fe80::1%eth0". Nothing for what is
/// no address.
[[nodiscard]] std::optional<std::string> serverAddress(std::string_view text);

/// As `serverAddress`, of a text that may have a port and the server's name beside the address, which are left out:
/// "192.0.2.1:53#dns.example", "[fe80::1]:53%eth0".
[[nodiscard]] std::optional<std::string> serverAddressWithPort(std::string_view text);

/// The words of `text`, separated by blanks and tabs.
[[nodiscard]] std::vector<std::string_view> words(std::string_view text);

} // namespace qk::platform::parse
