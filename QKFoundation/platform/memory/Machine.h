// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/memory/MemoryActivityTracing.h"
#include "QKFoundation/platform/memory/MemoryClock.h"
#include "QKFoundation/platform/memory/MemoryDispatch.h"
#include "QKFoundation/platform/memory/MemoryFSEvents.h"
#include "QKFoundation/platform/memory/MemoryFileManager.h"
#include "QKFoundation/platform/memory/MemoryHostStatistics.h"
#include "QKFoundation/platform/memory/MemoryKernel.h"
#include "QKFoundation/platform/memory/MemoryLaunchServices.h"
#include "QKFoundation/platform/memory/MemoryLocale.h"
#include "QKFoundation/platform/memory/MemoryMetadataIndex.h"
#include "QKFoundation/platform/memory/MemoryNames.h"
#include "QKFoundation/platform/memory/MemoryNetwork.h"
#include "QKFoundation/platform/memory/MemoryNotifications.h"
#include "QKFoundation/platform/memory/MemoryProcessTable.h"
#include "QKFoundation/platform/memory/MemorySignals.h"
#include "QKFoundation/platform/memory/MemoryTaskLauncher.h"
#include "QKFoundation/platform/memory/MemoryUsers.h"
#include "QKFoundation/platform/services/Services.h"

#include <memory>

namespace qk::platform::memory {

/// A machine described in code: every service answers what it was told, and nothing before that. Hosts test their own
/// code with it:
///
///     memory::Machine machine;
///     machine.kernel.setSysctl("hw.memsize", std::uint64_t{8} << 30);
///     const memory::ScopedMachine installed(machine);
///     EXPECT_EQ(getPhysicalMemorySize(), 8'589'934'592);
///
/// Property lists and cryptography compute rather than ask: the machine has those of the build.
///
/// It is deterministic: it looks at nothing of the real machine, starts no thread and reads no clock.
/// Threads: the services may be told and asked anywhere at the same time.
class QK_EXPORT Machine {
public:
    Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine();

    /// The services of this machine. They live as long as anyone holds them, also longer than the machine; what waits
    /// in its queues does not.
    [[nodiscard]] std::shared_ptr<const Services> services() const { return services_; }

    MemoryKernel& kernel;
    MemoryProcessInfo& processInfo;
    MemoryHost& host;
    MemorySystemConfiguration& systemConfiguration;
    MemoryTaskLauncher& taskLauncher;
    MemoryFileManager& fileManager;
    MemoryHostStatistics& hostStatistics;
    MemoryProcessTable& processTable;
    MemoryClock& clock;
    MemoryDispatch& dispatch;
    MemoryLocale& locale;
    MemoryTimeZones& timeZones;
    MemoryUniformTypes& uniformTypes;
    MemoryLaunchServices& launchServices;
    MemoryUsers& users;
    MemoryActivityTracing& activityTracing;
    MemorySignalSources& signalSources;
    MemoryDistributedNotifications& distributedNotifications;
    MemoryCrashReporter& crashReporter;
    MemoryIORegistry& ioRegistry;
    MemoryFSEvents& fsEvents;
    MemoryMetadataIndex& metadataIndex;

    /// Describes services of the network, each with its interface, in `systemConfiguration` and `ioRegistry`.
    MemoryNetwork network;

private:
    explicit Machine(std::shared_ptr<const Services> services);

    std::shared_ptr<const Services> services_;
};

/// Makes `machine` the machine that every operation of this process asks, for a scope. Scopes nest; they end in the
/// reverse order of their beginning.
class QK_EXPORT ScopedMachine {
public:
    explicit ScopedMachine(const Machine& machine);
    ScopedMachine(const ScopedMachine&) = delete;
    ScopedMachine& operator=(const ScopedMachine&) = delete;
    ~ScopedMachine();

private:
    std::shared_ptr<const Services> previous_;
};

} // namespace qk::platform::memory
