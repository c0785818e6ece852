// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ChildProcess.h"
#include "QKFoundation/platform/linux/ReadBytes.h"

#include "tools/softwareupdate/PackageManagerOutput.h"
#include "tools/softwareupdate/UpdateSources.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <string>
#include <utility>

namespace qk::softwareupdate {
namespace {

constexpr std::chrono::seconds kLimit{60};

// Texts that a program can read, and a search path that nobody has prepared.
std::vector<std::string> plainEnvironment() {
    return {"LC_ALL=C", "PATH=/usr/sbin:/usr/bin:/sbin:/bin", "HOME=/", "DEBIAN_FRONTEND=noninteractive"};
}

// How the program ended and what it printed; nothing when it is not there or takes too long.
std::optional<platform::ChildExit> outputOf(std::string path, std::vector<std::string> arguments) {
    platform::ChildRequest request;
    request.path = std::move(path);
    request.arguments = std::move(arguments);
    request.environment = plainEnvironment();
    request.input = platform::ChildStream::Discard;
    request.output = platform::ChildStream::Collect;
    request.error = platform::ChildStream::Discard;
    request.limit = kLimit;
    std::variant<int, platform::ChildExit> outcome = platform::runChild(request);
    auto* ended = std::get_if<platform::ChildExit>(&outcome);
    if (ended == nullptr || ended->signaled || ended->limitPassed) {
        return std::nullopt;
    }
    return std::move(*ended);
}

std::optional<platform::ChildExit> aptGet(const char* mode, const char* command) {
    // A package that lies in the archive folder has no address any more, so apt is shown an empty one.
    std::optional<platform::ChildExit> ended =
        outputOf("/usr/bin/apt-get", {"-qq", "-y", "-o", "Debug::NoLocking=true", "-o",
                                      "Dir::Cache::Archives=/nonexistent/", mode, command});
    return ended.has_value() && ended->status == 0 ? std::move(ended) : std::nullopt;
}

// Without them apt knows of no newer version, which is not the same as being up to date.
bool hasPackageLists() {
    const auto names = platform::readDirectory("/var/lib/apt/lists").value_or(std::vector<std::string>());
    return std::ranges::any_of(names, [](const std::string& name) { return name.find("_Packages") != name.npos; });
}

} // namespace

std::optional<PendingUpdates> updatesOfApt() {
    if (!hasPackageLists()) {
        return std::nullopt;
    }
    // The first command also finds updates that bring new packages along, as kernels do; it refuses where the second
    // one still finds a part.
    for (const char* command : {"dist-upgrade", "upgrade"}) {
        auto asked = std::async(std::launch::async, aptGet, "--print-uris", command);
        const std::optional<platform::ChildExit> simulation = aptGet("--simulate", command);
        const std::optional<platform::ChildExit> addresses = asked.get();
        if (simulation.has_value()) {
            PendingUpdates updates = aptUpdates(simulation->output.view());
            addAptSizes(updates, simulation->output.view(),
                        addresses.has_value() ? addresses->output.view() : std::string_view());
            return updates;
        }
    }
    return std::nullopt;
}

std::optional<PendingUpdates> updatesOfDnf() {
    constexpr int kUpdatesFound = 100;
    const std::optional<platform::ChildExit> ended = outputOf("/usr/bin/dnf", {"-q", "-C", "check-update"});
    if (!ended.has_value() || (ended->status != 0 && ended->status != kUpdatesFound)) {
        return std::nullopt;
    }
    return dnfUpdates(ended->output.view());
}

} // namespace qk::softwareupdate
