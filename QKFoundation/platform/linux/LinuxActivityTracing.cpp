// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxActivityTracing.h"

#include "QKFoundation/platform/linux/Journal.h"

namespace qk::platform {

void LinuxActivityTracing::setBreadcrumb(const NSString& text) {
    ring_.add(text);
    sendToJournal(text.utf8Lossy());
}

} // namespace qk::platform
