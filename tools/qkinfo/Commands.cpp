// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Commands.h"

#include "QKFoundation/platform/objects/NSException.h"

#include "tools/qkinfo/commands/Folders.h"
#include "tools/qkinfo/commands/Hardware.h"
#include "tools/qkinfo/commands/MemoryUse.h"
#include "tools/qkinfo/commands/Network.h"
#include "tools/qkinfo/commands/OperatingSystem.h"
#include "tools/qkinfo/commands/Owner.h"
#include "tools/qkinfo/commands/Processes.h"
#include "tools/qkinfo/commands/ProcessorLoad.h"
#include "tools/qkinfo/commands/Recent.h"
#include "tools/qkinfo/commands/Updates.h"
#include "tools/qkinfo/commands/Volumes.h"

#include <array>

namespace qk::info {

namespace {

constexpr std::array kCommands{
    Command{"os", "Operating system", "The system, this computer's name, when it was started", "", operatingSystem},
    Command{"hardware", "Hardware", "Model, processors and memory", "", hardware},
    Command{"cpu", "Processor load", "How busy the processors are", "", processorLoad},
    Command{"memory", "Memory", "What the memory is used for", "", memoryUse},
    Command{"volumes", "Volumes", "The machine's own storage and how full it is", "", volumes},
    Command{"processes", "Processes", "How many run, and which are stopped or defunct", "", processes},
    Command{"network", "Network", "The interfaces of the network, their links and addresses", "", network},
    Command{"owner", "Owner", "Who runs this program, and who is at the console", "", owner},
    Command{"folders", "Folders", "Where applications keep their data, caches and downloads", "", folders},
    Command{kRecentKey, kRecentTitle, "The files and folders that the user worked with last", "", recent, 20},
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
        Section section = sectionOf(command, surroundings);
        if (List* list = section.body.has_value() ? std::get_if<List>(&*section.body) : nullptr) {
            list->mostForPeople = command.mostInReport;
        }
        return section;
    } catch (const NSException&) {
        return Section{command.name, command.title, std::nullopt};
    }
}

} // namespace qk::info
