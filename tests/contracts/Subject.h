// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// What the contracts of the services are held against: each adapter brings machines that should be told apart by
/// nothing in these tests.
namespace qk::tests {

/// Commands that do what their name says; where each program lies is the adapter's affair.
struct Commands {
    platform::TaskRequest printHello; ///< "hello" without a line end
    platform::TaskRequest printNothing;
    platform::TaskRequest printArguments; ///< each in brackets; the caller appends them
    platform::TaskRequest exitWith3;
    platform::TaskRequest dieOfSignal9;
    platform::TaskRequest missingProgram;
};

/// One adapter's answers to the same questions.
class Subject {
public:
    Subject() = default;
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    virtual ~Subject() = default;

    /// A machine that tells nothing about itself.
    [[nodiscard]] virtual platform::Services silent() = 0;

    /// A machine with these facts: model "Example Book 14 Gen 3", processor "Example 32-bit Processor @ 4.70GHz" which
    /// is not 64-bit capable, 3 cores, 5 threads, 5.2 GHz, 16252928 KiB of memory, "Example Linux" 22.04, build
    /// "20240131.2", started at 1795220992, kernel "Example version 6.5"; its people call it "Anna’s laptop", its store
    /// "laptop".
    ///
    /// Under load: of its processors 0 and 2 are online, with 1 tick as user, 2 as system, 3 idle and 4 nice, and ten
    /// times as many. Memory: 640 KiB free, 1280 wired, 1920 compressed, 2560 of files, 3200 anonymous, 77 pages
    /// swapped out. Processes: 1 "init", sleeping, from "/sbin/init"; 20 ") R (", stopped, from "/opt/a longer name";
    /// 300 "gone", a zombie.
    /// At its console is "anna", user 1000.
    /// Volumes: "/", an internal disk named "System"; "/media/stick", a removable one, named "stick"; "/net", on
    /// another machine.
    /// Its people read the German of Austria, traditional Chinese and English, in this order; it is set to the zone
    /// "Europe/Berlin", the only one it knows. It knows the type "public.png" and those above it, and opens every URL.
    [[nodiscard]] virtual platform::Services described() = 0;

    /// A machine that may have a network, whatever it looks like.
    [[nodiscard]] virtual platform::Services networked() = 0;

    /// An absolute path of an empty folder that may be written to.
    [[nodiscard]] virtual NSString emptyFolder() = 0;

    /// Puts a file with no particular content at a path below that folder.
    virtual void makeFile(const NSString& path) = 0;

    /// Puts a symbolic link at a path below that folder; the destination is a path relative to the link's folder.
    virtual void makeSymbolicLink(const NSString& path, const NSString& destination) = 0;

    [[nodiscard]] virtual Commands commands() = 0;

    /// A signal of this number arrives at the process that the silent machine has.
    virtual void deliverSignal(std::int32_t signal) = 0;
};

/// An adapter, by name, and how its subject is made.
struct Adapter {
    const char* name;
    std::unique_ptr<Subject> (*makeSubject)();
};

inline std::ostream& operator<<(std::ostream& stream, const Adapter& adapter) {
    return stream << adapter.name;
}

/// The adapters of this build.
[[nodiscard]] std::vector<Adapter> adapters();

} // namespace qk::tests
