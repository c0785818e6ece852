// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include <utility>

namespace qk::platform::memory {
namespace {

std::shared_ptr<const Services> emptyMachine() {
    Services services;
    services.kernel = std::make_shared<MemoryKernel>();
    services.processInfo = std::make_shared<MemoryProcessInfo>();
    services.host = std::make_shared<MemoryHost>();
    services.systemConfiguration = std::make_shared<MemorySystemConfiguration>();
    services.taskLauncher = std::make_shared<MemoryTaskLauncher>();
    services.users = std::make_shared<MemoryUsers>();
    services.fileManager = std::make_shared<MemoryFileManager>(services.users);
    services.hostStatistics = std::make_shared<MemoryHostStatistics>();
    services.processTable = std::make_shared<MemoryProcessTable>();
    auto clock = std::make_shared<MemoryClock>();
    services.clock = clock;
    services.dispatch = std::make_shared<MemoryDispatch>(std::move(clock));
    services.locale = std::make_shared<MemoryLocale>();
    services.timeZones = std::make_shared<MemoryTimeZones>();
    services.uniformTypes = std::make_shared<MemoryUniformTypes>();
    services.launchServices = std::make_shared<MemoryLaunchServices>();
    services.activityTracing = std::make_shared<MemoryActivityTracing>();
    services.signalSources = std::make_shared<MemorySignalSources>(services.dispatch);
    services.distributedNotifications = std::make_shared<MemoryDistributedNotifications>(services.dispatch);
    services.crashReporter = std::make_shared<MemoryCrashReporter>();
    services.ioRegistry = std::make_shared<MemoryIORegistry>();
    services.fsEvents = std::make_shared<MemoryFSEvents>();
    services.metadataIndex = std::make_shared<MemoryMetadataIndex>(services.dispatch);
    const Codecs codecs = makeHostCodecs();
    services.propertyLists = codecs.propertyLists;
    services.crypto = codecs.crypto;
    return std::make_shared<const Services>(std::move(services));
}

} // namespace

Machine::Machine() : Machine(emptyMachine()) {}

Machine::Machine(std::shared_ptr<const Services> services)
    : kernel(static_cast<MemoryKernel&>(*services->kernel)),
      processInfo(static_cast<MemoryProcessInfo&>(*services->processInfo)),
      host(static_cast<MemoryHost&>(*services->host)),
      systemConfiguration(static_cast<MemorySystemConfiguration&>(*services->systemConfiguration)),
      taskLauncher(static_cast<MemoryTaskLauncher&>(*services->taskLauncher)),
      fileManager(static_cast<MemoryFileManager&>(*services->fileManager)),
      hostStatistics(static_cast<MemoryHostStatistics&>(*services->hostStatistics)),
      processTable(static_cast<MemoryProcessTable&>(*services->processTable)),
      clock(static_cast<MemoryClock&>(*services->clock)),
      dispatch(static_cast<MemoryDispatch&>(*services->dispatch)),
      locale(static_cast<MemoryLocale&>(*services->locale)),
      timeZones(static_cast<MemoryTimeZones&>(*services->timeZones)),
      uniformTypes(static_cast<MemoryUniformTypes&>(*services->uniformTypes)),
      launchServices(static_cast<MemoryLaunchServices&>(*services->launchServices)),
      users(static_cast<MemoryUsers&>(*services->users)),
      activityTracing(static_cast<MemoryActivityTracing&>(*services->activityTracing)),
      signalSources(static_cast<MemorySignalSources&>(*services->signalSources)),
      distributedNotifications(static_cast<MemoryDistributedNotifications&>(*services->distributedNotifications)),
      crashReporter(static_cast<MemoryCrashReporter&>(*services->crashReporter)),
      ioRegistry(static_cast<MemoryIORegistry&>(*services->ioRegistry)),
      fsEvents(static_cast<MemoryFSEvents&>(*services->fsEvents)),
      metadataIndex(static_cast<MemoryMetadataIndex&>(*services->metadataIndex)),
      network(systemConfiguration, ioRegistry),
      services_(std::move(services)) {}

// A task may hold the services, which hold the queues.
Machine::~Machine() {
    dispatch.discard();
}

ScopedMachine::ScopedMachine(const Machine& machine) : previous_(installServices(machine.services())) {}

ScopedMachine::~ScopedMachine() {
    installServices(std::move(previous_));
}

} // namespace qk::platform::memory
