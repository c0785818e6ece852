// SPDX-License-Identifier: Apache-2.0
// Lists pending software updates for the library's update parser: softwareupdate -l
#include "QKFoundation/platform/linux/ReadBytes.h"

#include "tools/softwareupdate/Listing.h"
#include "tools/softwareupdate/PackageManagerOutput.h"
#include "tools/softwareupdate/UpdateSources.h"

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

namespace {

using qk::softwareupdate::PendingUpdates;

constexpr int kFailed = 1;
constexpr int kUsage = 2;

std::optional<PendingUpdates> pendingUpdates() {
    for (const auto source : {qk::softwareupdate::updatesOfPackageKit, qk::softwareupdate::updatesOfApt,
                              qk::softwareupdate::updatesOfDnf}) {
        if (std::optional<PendingUpdates> updates = source(); updates.has_value()) {
            return updates;
        }
    }
    return std::nullopt;
}

int list() {
    std::optional<PendingUpdates> updates = pendingUpdates();
    if (!updates.has_value()) {
        std::fputs("softwareupdate: neither PackageKit nor apt nor dnf can tell which updates are pending\n", stderr);
        return kFailed;
    }
    markRestarts(*updates, qk::platform::readBytes("/run/reboot-required.pkgs").value_or(std::string()));
    const std::string text = listing(*updates);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
        std::perror("softwareupdate");
        return kFailed;
    }
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    const std::string_view option = count == 2 ? arguments[1] : "";
    if (option != "-l" && option != "--list") {
        std::fputs("usage: softwareupdate -l\nLists the software updates that are pending.\n", stderr);
        return kUsage;
    }
    try {
        return list();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "softwareupdate: %s\n", failure.what());
        return kFailed;
    }
}
