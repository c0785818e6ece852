// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/OSXVersion.h"

#include "QKFoundation/system_info/NSProcessInfo+OSVersion.h"

#include <string>

namespace version = qk::NSProcessInfo_OSVersion;

bool OSXVersionIs(int64_t majorVersion, int64_t minorVersion) {
    return version::OSVersionIsEqualTo(majorVersion, minorVersion);
}

bool OSXVersionGreaterThan(int64_t majorVersion, int64_t minorVersion) {
    return version::OSVersionIsGreaterThan(majorVersion, minorVersion);
}

bool OSXVersionLessThan(int64_t majorVersion, int64_t minorVersion) {
    return version::OSVersionIsLessThan(majorVersion, minorVersion);
}

const char* OSVersion(void) {
    thread_local std::string text;
    text = version::OSVersionString().utf8Lossy();
    return text.c_str();
}

const char* OSVersionLong(void) {
    thread_local std::string text;
    text = version::OSVersionLongString().utf8Lossy();
    return text.c_str();
}
