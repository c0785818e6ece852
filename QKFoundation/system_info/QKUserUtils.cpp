// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKUserUtils.h"

#include "QKFoundation/system_info/internal/ProcessOwner.h"

const uint32_t QKUserUtils_UnknownUID = UINT32_MAX;

uint32_t getProcessOwnerUID(void) {
    return qk::internal::processOwnerUID(*qk::platform::services());
}

uint32_t getConsoleUID(void) {
    return qk::internal::consoleUID(*qk::platform::services());
}

bool isProcessOwnerRootUser(void) {
    return qk::internal::processOwnerUID(*qk::platform::services()) == 0;
}

bool isProcessOwnerConsoleUser(void) {
    return qk::internal::isProcessOwnerConsoleUser(*qk::platform::services());
}
