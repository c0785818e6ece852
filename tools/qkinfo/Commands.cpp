// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Commands.h"

#include "QKFoundation/platform/objects/NSException.h"

#include "tools/qkinfo/commands/Hardware.h"
#include "tools/qkinfo/commands/OperatingSystem.h"
#include "tools/qkinfo/commands/Updates.h"

#include <array>

namespace qk::info {

namespace {

constexpr std::array kCommands{
    Command{"os", "Operating system", "The system, this computer's name, when it was started", "", operatingSystem},
    Command{"hardware", "Hardware", "Model, processors and memory", "", hardware},
    Command{"updates", "Updates", "Software updates that wait to be installed", "Asking for updates", updates},
};

} // namespace

std::span<const Command> commands() noexcept {
    return kCommands;
}

Section sectionOf(const Command& command, const Surroundings& surroundings) {
    return Section{command.name, command.title, command.gather(surroundings)};
}

Section sectionForReport(const Command& command, const Surroundings& surroundings) {
    try {
        return sectionOf(command, surroundings);
    } catch (const NSException&) {
        return Section{command.name, command.title, std::nullopt};
    }
}

} // namespace qk::info
