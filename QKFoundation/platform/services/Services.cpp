// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/Services.h"

#include <mutex>
#include <utility>

namespace qk::platform {

Kernel::~Kernel() = default;
ProcessInfo::~ProcessInfo() = default;
Host::~Host() = default;
SystemConfiguration::~SystemConfiguration() = default;
TaskLauncher::~TaskLauncher() = default;
FileManager::~FileManager() = default;
HostStatistics::~HostStatistics() = default;
ProcessTable::~ProcessTable() = default;
Clock::~Clock() = default;
Locale::~Locale() = default;
TimeZones::~TimeZones() = default;
UniformTypes::~UniformTypes() = default;
LaunchServices::~LaunchServices() = default;
PropertyListSerialization::~PropertyListSerialization() = default;
CommonCrypto::~CommonCrypto() = default;
Users::~Users() = default;
RunLoopSource::~RunLoopSource() = default;
RunLoop::~RunLoop() = default;
Dispatch::~Dispatch() = default;
SignalSource::~SignalSource() = default;
SignalSources::~SignalSources() = default;
NotificationRegistration::~NotificationRegistration() = default;
DistributedNotificationCenter::~DistributedNotificationCenter() = default;
CrashReporter::~CrashReporter() = default;
ActivityTracing::~ActivityTracing() = default;
DynamicStore::~DynamicStore() = default;
NetworkPreferences::~NetworkPreferences() = default;
ConfigurationReading::~ConfigurationReading() = default;
IOIterator::~IOIterator() = default;
IORegistry::~IORegistry() = default;
FSEventStream::~FSEventStream() = default;
FSEvents::~FSEvents() = default;
MetadataSearchRun::~MetadataSearchRun() = default;
MetadataIndex::~MetadataIndex() = default;

namespace {

struct Slot {
    std::mutex mutex;
    std::shared_ptr<const Services> installed; // null: the host's own
    std::shared_ptr<const Services> host;      // made when first asked for
};

// Never destroyed: other threads may still ask while the process ends.
Slot& slot() {
    static Slot* const theSlot = new Slot;
    return *theSlot;
}

} // namespace

std::shared_ptr<const Services> services() {
    Slot& theSlot = slot();
    const std::scoped_lock lock(theSlot.mutex);
    if (theSlot.installed != nullptr) {
        return theSlot.installed;
    }
    if (theSlot.host == nullptr) {
        theSlot.host = makeHostServices();
    }
    return theSlot.host;
}

std::shared_ptr<const Services> installServices(std::shared_ptr<const Services> services) {
    Slot& theSlot = slot();
    const std::scoped_lock lock(theSlot.mutex);
    std::swap(theSlot.installed, services);
    return services;
}

} // namespace qk::platform
