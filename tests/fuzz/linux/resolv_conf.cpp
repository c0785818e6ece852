// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkProxies.h"
#include "QKFoundation/platform/linux/parse/ResolvConf.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// /etc/resolv.conf, addresses of servers with all that may stand beside them, and of proxies. What was read, written
/// again, reads the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::platform;
    using qk::fuzz::require;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const parse::ResolvConf configuration = parse::resolvConf(text);
    std::string written;
    for (const std::string& server : configuration.nameServers) {
        require(parse::serverAddress(server) == server);
        written += "nameserver " + server + "\n";
    }
    std::string domains;
    for (const std::string& domain : configuration.searchDomains) {
        require(!domain.empty() && domain != ".");
        domains += " " + domain;
    }
    require(parse::resolvConf(written + "search" + domains + "\n") == configuration);
    static_cast<void>(parse::namesOnlyLocalStub(configuration));
    if (const auto address = parse::serverAddressWithPort(text); address.has_value()) {
        require(parse::serverAddress(*address) == address && parse::serverAddressWithPort(*address) == address);
    }
    if (const auto proxy = proxyAddress(text); proxy.has_value()) {
        require(!proxy->host.empty() && proxy->host.find('/') == std::string::npos);
    }
    return 0;
}
