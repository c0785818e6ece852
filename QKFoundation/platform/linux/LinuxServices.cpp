// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxServices.h"

#include "QKFoundation/platform/linux/LinuxActivityTracing.h"
#include "QKFoundation/platform/linux/LinuxClock.h"
#include "QKFoundation/platform/linux/LinuxCrashReporter.h"
#include "QKFoundation/platform/linux/LinuxCrypto.h"
#include "QKFoundation/platform/linux/LinuxDispatch.h"
#include "QKFoundation/platform/linux/LinuxFSEvents.h"
#include "QKFoundation/platform/linux/LinuxFileManager.h"
#include "QKFoundation/platform/linux/LinuxHost.h"
#include "QKFoundation/platform/linux/LinuxHostStatistics.h"
#include "QKFoundation/platform/linux/LinuxIORegistry.h"
#include "QKFoundation/platform/linux/LinuxKernel.h"
#include "QKFoundation/platform/linux/LinuxLaunchServices.h"
#include "QKFoundation/platform/linux/LinuxLocale.h"
#include "QKFoundation/platform/linux/LinuxMetadataIndex.h"
#include "QKFoundation/platform/linux/LinuxNotifications.h"
#include "QKFoundation/platform/linux/LinuxProcessInfo.h"
#include "QKFoundation/platform/linux/LinuxProcessTable.h"
#include "QKFoundation/platform/linux/LinuxPropertyLists.h"
#include "QKFoundation/platform/linux/LinuxSignalSources.h"
#include "QKFoundation/platform/linux/LinuxSystemConfiguration.h"
#include "QKFoundation/platform/linux/LinuxTaskLauncher.h"
#include "QKFoundation/platform/linux/LinuxTimeZones.h"
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"
#include "QKFoundation/platform/linux/LinuxUsers.h"
#include "QKFoundation/platform/linux/NetworkReader.h"
#include "QKFoundation/platform/linux/StandardFolders.h"
#include "QKFoundation/platform/linux/UpdateTool.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

std::vector<ProgramSubstitute> substitutes() {
    std::vector<ProgramSubstitute> result;
    if (std::optional<std::string> tool = locateUpdateTool(); tool.has_value()) {
        result.push_back({kUpdateToolPath, *std::move(tool)});
    }
    return result;
}

// This process's environment tells about the running system, not about captured files.
std::optional<std::string> noVariable(const char* /*name*/) {
    return std::nullopt;
}

std::shared_ptr<LaunchServices> launchServices(const LinuxRoot& root, const std::shared_ptr<TaskLauncher>& launcher,
                                               const Variables& variables) {
    if (!root.isHost()) {
        return std::make_shared<NoLaunchServices>();
    }
    return std::make_shared<LinuxLaunchServices>(launcher, variables);
}

} // namespace

Services makeLinuxServices(const LinuxRoot& root) {
    Codecs codecs = makeHostCodecs();
    const auto users = std::make_shared<LinuxUsers>(root);
    const auto launcher = std::make_shared<LinuxTaskLauncher>(substitutes());
    const Variables variables = root.isHost() ? Variables(processVariable) : noVariable;
    const auto dispatch = std::make_shared<LinuxDispatch>();
    const auto network = std::make_shared<NetworkReader>(root);
    const auto uniformTypes = std::make_shared<LinuxUniformTypes>(root);
    const auto fsEvents = std::make_shared<LinuxFSEvents>();
    return {.kernel = std::make_shared<LinuxKernel>(root),
            .processInfo = std::make_shared<LinuxProcessInfo>(root),
            .host = std::make_shared<LinuxHost>(root),
            .systemConfiguration = std::make_shared<LinuxSystemConfiguration>(root, network),
            .taskLauncher = launcher,
            .fileManager = std::make_shared<LinuxFileManager>(root, StandardFolders(root, users, variables)),
            .hostStatistics = std::make_shared<LinuxHostStatistics>(root),
            .processTable = std::make_shared<LinuxProcessTable>(root),
            .clock = std::make_shared<LinuxClock>(),
            .locale = std::make_shared<LinuxLocale>(root, variables),
            .timeZones = std::make_shared<LinuxTimeZones>(root, variables),
            .uniformTypes = uniformTypes,
            .launchServices = launchServices(root, launcher, variables),
            .propertyLists = std::move(codecs.propertyLists),
            .crypto = std::move(codecs.crypto),
            .users = users,
            .dispatch = dispatch,
            .signalSources = std::make_shared<LinuxSignalSources>(dispatch),
            .distributedNotifications = makeLinuxNotifications(dispatch, variables),
            .crashReporter = std::make_shared<LinuxCrashReporter>(),
            .activityTracing = std::make_shared<LinuxActivityTracing>(),
            .ioRegistry = std::make_shared<LinuxIORegistry>(network),
            .fsEvents = fsEvents,
            .metadataIndex = std::make_shared<LinuxMetadataIndex>(root, dispatch, fsEvents, uniformTypes,
                                                                  StandardFolders(root, users, variables))};
}

std::shared_ptr<const Services> makeHostServices() {
    return std::make_shared<const Services>(makeLinuxServices());
}

Codecs makeHostCodecs() {
    return {std::make_shared<LinuxPropertyLists>(), std::make_shared<LinuxCrypto>()};
}

} // namespace qk::platform
