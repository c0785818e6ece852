// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/ActivityTracing.h"
#include "QKFoundation/platform/services/Clock.h"
#include "QKFoundation/platform/services/CommonCrypto.h"
#include "QKFoundation/platform/services/CrashReporter.h"
#include "QKFoundation/platform/services/Dispatch.h"
#include "QKFoundation/platform/services/DistributedNotificationCenter.h"
#include "QKFoundation/platform/services/FSEvents.h"
#include "QKFoundation/platform/services/FactCache.h"
#include "QKFoundation/platform/services/FileManager.h"
#include "QKFoundation/platform/services/Host.h"
#include "QKFoundation/platform/services/HostStatistics.h"
#include "QKFoundation/platform/services/IORegistry.h"
#include "QKFoundation/platform/services/Kernel.h"
#include "QKFoundation/platform/services/LaunchServices.h"
#include "QKFoundation/platform/services/Locale.h"
#include "QKFoundation/platform/services/MetadataIndex.h"
#include "QKFoundation/platform/services/ProcessInfo.h"
#include "QKFoundation/platform/services/ProcessTable.h"
#include "QKFoundation/platform/services/PropertyListSerialization.h"
#include "QKFoundation/platform/services/SignalSources.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"
#include "QKFoundation/platform/services/TaskLauncher.h"
#include "QKFoundation/platform/services/TimeZones.h"
#include "QKFoundation/platform/services/UniformTypes.h"
#include "QKFoundation/platform/services/Users.h"

#include <memory>

namespace qk::platform {

/// The machine underneath: one implementation of every service. No pointer is null.
struct Services {
    std::shared_ptr<Kernel> kernel;
    std::shared_ptr<ProcessInfo> processInfo;
    std::shared_ptr<Host> host;
    std::shared_ptr<SystemConfiguration> systemConfiguration;
    std::shared_ptr<TaskLauncher> taskLauncher;
    std::shared_ptr<FileManager> fileManager;
    std::shared_ptr<HostStatistics> hostStatistics;
    std::shared_ptr<ProcessTable> processTable;
    std::shared_ptr<Clock> clock;
    std::shared_ptr<Locale> locale;
    std::shared_ptr<TimeZones> timeZones;
    std::shared_ptr<UniformTypes> uniformTypes;
    std::shared_ptr<LaunchServices> launchServices;
    std::shared_ptr<PropertyListSerialization> propertyLists;
    std::shared_ptr<CommonCrypto> crypto;
    std::shared_ptr<Users> users;
    std::shared_ptr<Dispatch> dispatch;
    std::shared_ptr<SignalSources> signalSources;
    std::shared_ptr<DistributedNotificationCenter> distributedNotifications;
    std::shared_ptr<CrashReporter> crashReporter;
    std::shared_ptr<ActivityTracing> activityTracing;
    std::shared_ptr<IORegistry> ioRegistry;
    std::shared_ptr<FSEvents> fsEvents;
    std::shared_ptr<MetadataIndex> metadataIndex;
    std::shared_ptr<FactCache> facts = std::make_shared<FactCache>();
};

/// The machine that operations ask now: the host's own unless another one was installed. The snapshot stays whole for
/// as long as it is held, whatever is installed meanwhile. Any thread.
[[nodiscard]] QK_EXPORT std::shared_ptr<const Services> services();

/// Installs `services` for the whole process and returns what was installed before; null stands for the host's own
/// machine. Any thread; operations that run already keep the machine that they began with. Tests use
/// `memory::ScopedMachine`.
QK_EXPORT std::shared_ptr<const Services> installServices(std::shared_ptr<const Services> services);

/// Composes the machine of this host. The build chooses the one implementation.
[[nodiscard]] std::shared_ptr<const Services> makeHostServices();

/// What computes and asks nothing of the machine, so that a machine described in code has it too: the formats and the
/// cryptography that the build has libraries for. No pointer is null. The implementation of `makeHostServices` has it.
struct Codecs {
    std::shared_ptr<PropertyListSerialization> propertyLists;
    std::shared_ptr<CommonCrypto> crypto;
};
[[nodiscard]] Codecs makeHostCodecs();

} // namespace qk::platform
