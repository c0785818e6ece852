// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace qk::platform {

/// Writes a breadcrumb to the system's journal: priority "info", MESSAGE_ID 6f0d0c7f5c3e4d2e9a6b1c8d7e5f4a3b. Nothing
/// happens where no journal listens at /run/systemd/journal/socket. Any thread.
void sendToJournal(const std::string& breadcrumb);

} // namespace qk::platform
