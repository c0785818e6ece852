// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Journal.h"

// The place in the source that the library would add says nothing about what the user did.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

#include <sys/uio.h>

#include <array>

namespace qk::platform {

void sendToJournal(const std::string& breadcrumb) {
    std::array<std::string, 3> fields = {"MESSAGE=" + breadcrumb, "PRIORITY=6",
                                         "MESSAGE_ID=6f0d0c7f5c3e4d2e9a6b1c8d7e5f4a3b"};
    std::array<iovec, fields.size()> parts{};
    for (std::size_t index = 0; index < fields.size(); ++index) {
        parts[index] = {fields[index].data(), fields[index].size()};
    }
    static_cast<void>(sd_journal_sendv(parts.data(), static_cast<int>(parts.size())));
}

} // namespace qk::platform
