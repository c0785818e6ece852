// SPDX-License-Identifier: Apache-2.0
// For builds without libsystemd: there is no journal.
#include "QKFoundation/platform/linux/Journal.h"

void qk::platform::sendToJournal(const std::string& /*breadcrumb*/) {}
