// SPDX-License-Identifier: Apache-2.0
// A host application that has the installed library and nothing else of this project.
#include "QKFoundation/QKFoundation.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

namespace {

int failures = 0;

void expect(bool holds, const char* what) {
    if (!holds) {
        std::cerr << "does not hold: " << what << '\n';
        ++failures;
    }
}

std::string shown(const std::optional<qk::NSString>& text) {
    return text ? text->utf8Lossy() : "(not reported)";
}

void describesTheMachine() {
    std::cout << "model      " << shown(qk::QKHardwareInfo::model()) << '\n'
              << "processor  " << shown(qk::QKHardwareInfo::processorTypeName()) << '\n'
              << "memory     " << getPhysicalMemorySize() << " bytes\n"
              << "user       " << shown(qk::QKSystemInfo::username()) << '\n'
              << "system     " << shown(qk::QKSystemInfo::osProductName()) << ' '
              << qk::NSProcessInfo_OSVersion::OSVersionString().utf8Lossy() << '\n';
    expect(qk::NSProcessInfo_OSVersion::OSVersionString() == qk::NSString::fromUTF8(OSVersion()),
           "the function in C says what the category says");
}

void catchesWhatTheLibraryRaises() {
    const auto nowhere = qk::NSString::fromUTF8("/nonexistent/program").value();
    bool caught = false;
    try {
        static_cast<void>(qk::NSTask_SyncRunShell::runCommandAtPath(nowhere, {}));
    } catch (const qk::NSInvalidArgumentException& exception) {
        caught = !exception.reason().isEmpty();
    }
    expect(caught, "an exception crosses the border of the library with its kind and its reason");
}

void asksAMachineOfItsOwn() {
    namespace memory = qk::platform::memory;
    memory::Machine machine;
    machine.kernel.setSysctl("hw.model", "Imagined 3");
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{8} << 30);
    {
        const memory::ScopedMachine installed(machine);
        expect(qk::QKHardwareInfo::model() == qk::NSString::fromUTF8("Imagined 3"), "a described machine answers");
        expect(getPhysicalMemorySize() == std::uint64_t{8} << 30, "a described machine answers functions in C as well");
        expect(!qk::QKHardwareInfo::processorTypeName(), "what was not described is absent");
    }
}

} // namespace

int main() {
    try {
        describesTheMachine();
        catchesWhatTheLibraryRaises();
        asksAMachineOfItsOwn();
    } catch (const std::exception& exception) {
        std::cerr << "raised: " << exception.what() << '\n';
        return EXIT_FAILURE;
    }
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
