// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Processes.h"

namespace qk::info {

Names inactiveNames(const QKHardwareProcessUsageData& processes) {
    Names names;
    for (const NSString& name : processes.inactiveProcesses) {
        if (const auto content = textContent(name)) {
            names.push_back(std::get<std::string>(*content));
        }
    }
    return names;
}

Facts processFacts(const QKHardwareProcessUsageData& processes) {
    return {
        {"processes", "Processes", Count{processes.numberOfProcesses}},
        {"inactive_processes", "Stopped or defunct", inactiveNames(processes)},
    };
}

std::optional<Body> processes(const Surroundings& /*surroundings*/) {
    const auto data = QKHardwareProcessUsage::collectProcessesUsageData();
    return data.has_value() ? std::optional<Body>(processFacts(*data)) : std::nullopt;
}

} // namespace qk::info
