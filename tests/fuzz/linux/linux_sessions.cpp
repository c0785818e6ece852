// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Sessions.h"
#include "QKFoundation/platform/linux/parse/UserDirectories.h"

#include "tests/fuzz/linux/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What other programs write about sessions, users and their folders. Nothing of it leads out of the folder in which it
/// is looked up next.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qk::platform::parse;
    using qk::fuzz::require;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto session = activeSession(text); session.has_value()) {
        require(session->id.find_first_of("/.") == std::string::npos);
        require(session->id.find('\0') == std::string::npos);
    }
    static_cast<void>(isOfUser(text));
    if (const auto name = userName(text); name.has_value()) {
        require(!name->empty());
    }
    if (const auto terminal = activeTerminal(text); terminal.has_value()) {
        require(terminal->starts_with("tty") && terminal->find_first_of("/.\n") == std::string::npos);
    }
    const auto folder = userDirectory(text, "XDG_DOWNLOAD_DIR", "/home/anna");
    require(!folder.has_value() || (folder->starts_with('/') && (folder->size() == 1 || !folder->ends_with('/'))));
    return 0;
}
