// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Leases.h"
#include "QKFoundation/platform/linux/parse/NetworkKeyfile.h"
#include "QKFoundation/platform/linux/parse/ResolvConf.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What networkd writes about a link and a lease, and its settings. Applying the same settings again changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::platform::parse;
    using qk::fuzz::require;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto link = networkdLink(text); link.has_value()) {
        require(link->networkFile.starts_with('/'));
        for (const std::string& path : link->dropIns) {
            require(path.starts_with('/'));
        }
        for (const std::string& server : link->nameServers) {
            require(serverAddress(server) == server);
        }
    }
    NetworkSettings settings;
    applyNetworkFile(text, settings);
    NetworkSettings again = settings;
    applyNetworkFile(text, again);
    require(again == settings);
    for (const auto& [code, bytes] : networkdLease(text).options) {
        require(code != 0 && !bytes.empty());
    }
    return 0;
}
