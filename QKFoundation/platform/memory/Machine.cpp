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
    services.fileManager = std::make_shared<MemoryFileManager>();
    services.hostStatistics = std::make_shared<MemoryHostStatistics>();
    services.processTable = std::make_shared<MemoryProcessTable>();
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
      services_(std::move(services)) {}

Machine::~Machine() = default;

ScopedMachine::ScopedMachine(const Machine& machine) : previous_(installServices(machine.services())) {}

ScopedMachine::~ScopedMachine() {
    installServices(std::move(previous_));
}

} // namespace qk::platform::memory
