// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Hardware.h"

#include "QKFoundation/system_info/QKHardwareFunctions.h"
#include "QKFoundation/system_info/QKHardwareInfo.h"

namespace qk::info {

std::optional<Body> hardware(const Surroundings& /*surroundings*/) {
    return Facts{
        {"model", "Model", textContent(QKHardwareInfo::model())},
        {"processor", "Processor", textContent(QKHardwareInfo::processorTypeName())},
        {"physical_processors", "Physical processors", numberContent<Count>(getNumberOfPhysicalProcessors())},
        {"logical_processors", "Logical processors", numberContent<Count>(getNumberOfLogicalProcessors())},
        {"max_frequency_mhz", "Maximum frequency", numberContent<Megahertz>(getMaximumFrequencyOfProcessors())},
        {"memory_bytes", "Memory", numberContent<Bytes>(getPhysicalMemorySize())},
        {"page_size_bytes", "Page size", numberContent<Bytes>(getPhysicalMemoryPageSize())},
        {"processor_64bit", "64-bit processor", isProcessor64bit()},
    };
}

} // namespace qk::info
