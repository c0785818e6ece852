// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxCrashReporter.h"

#include <dlfcn.h>

const char** qk::platform::LinuxCrashReporter::informationSlot() {
    return static_cast<const char**>(::dlsym(RTLD_DEFAULT, "__crashreporter_info__"));
}
