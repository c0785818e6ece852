// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/QKDownloadPath.h"
#include "QKFoundation/runtime/MainThreadDispatch.h"
#include "QKFoundation/system_info/OSXVersion.h"
#include "QKFoundation/system_info/QKHardwareFunctions.h"
#include "QKFoundation/system_info/QKUserUtils.h"

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

static void expect(int holds, const char* what) {
    if (!holds) {
        fprintf(stderr, "does not hold: %s\n", what);
        ++failures;
    }
}

static void addOne(void* number) {
    ++*(int*)number;
}

int main(void) {
    char* model = getHardwareModel();
    char* processor = getProcessorTypeName();
    printf("model       %s\n", model != NULL ? model : "(none)");
    printf("processor   %s\n", processor != NULL ? processor : "(none)");
    printf("processors  %" PRIu32 " physical, %" PRIu32 " logical\n", getNumberOfPhysicalProcessors(),
           getNumberOfLogicalProcessors());
    printf("frequency   %" PRIu32 " MHz\n", getMaximumFrequencyOfProcessors());
    printf("memory      %" PRIu64 " bytes in pages of %" PRIu64 "\n", getPhysicalMemorySize(),
           getPhysicalMemoryPageSize());
    printf("64 bit      %s\n", isProcessor64bit() ? "yes" : "no");
    free(model);
    free(processor);

    char* end = NULL;
    const long major = strtol(OSVersion(), &end, 10);
    expect(*end == '.', "OSVersion starts with the major number and a point");
    const long minor = strtol(end + 1, &end, 10);
    expect(*end == '\0', "OSVersion ends after the minor number");
    printf("version     %s\n", OSVersionLong());
    expect(strncmp(OSVersionLong(), OSVersion(), strlen(OSVersion())) == 0,
           "OSVersionLong goes on where OSVersion ends");
    expect(OSXVersionIs(major, minor), "the version is itself");
    expect(!OSXVersionIs(major, minor + 1), "the version is not another");
    expect(OSXVersionGreaterThan(major, minor - 1), "the version is greater than the minor one before");
    expect(OSXVersionLessThan(major + 1, 0), "the version is less than the next major one");

    printf("owner       %" PRIu32 "%s\n", getProcessOwnerUID(), isProcessOwnerConsoleUser() ? ", at the console" : "");
    expect(isProcessOwnerRootUser() == (getProcessOwnerUID() == 0), "root is the user 0");
    expect(QKUserUtils_UnknownUID == UINT32_MAX, "an unknown user has all bits set");
    expect(isProcessOwnerConsoleUser() == (getProcessOwnerUID() == getConsoleUID()), "the console's user is asked for");
    printf("downloads   %s\n", qk_getDownloadPath());
    expect(qk_getDownloadPath()[0] == '/', "the folder for downloads is absolute");

    int calls = 0;
    dispatch_sync_mainthread_f(&calls, addOne);
    dispatch_async_mainthread_f(&calls, addOne);
    expect(calls == 2, "on the main thread both kinds of calls are made at once");
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
