// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Clock.h"
#include "tools/qkinfo/Facts.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

namespace qk::info {

/// What the commands look at beside the library.
struct Surroundings {
    std::filesystem::path root = "/"; ///< where the distribution's own files lie
    Clock* clock = &systemClock();    ///< lives as long as the program
};

/// A part of what can be told about this machine: a command of the program, and a section of its report.
struct Command {
    std::string_view name;    ///< on the command line and in the JSON
    std::string_view title;   ///< above the section
    std::string_view summary; ///< for the help text
    std::string_view busy;    ///< what is said while it takes its time; "" when it takes none, or says so itself

    /// Asks the machine, on the main thread unless it is `busy`. Nothing when it tells nothing of all this. Raises
    /// `NSException` when an operation fails.
    std::optional<Body> (*gather)(const Surroundings& surroundings);

    std::size_t mostInReport = 10; ///< of a list, for people
};

/// All of them, in the order of the report.
[[nodiscard]] std::span<const Command> commands() noexcept;

/// The section of `command`. Raises what its operations raise.
[[nodiscard]] Section sectionOf(const Command& command, const Surroundings& surroundings);

/// As `sectionOf`, but an operation that fails leaves a section without anything told: a report says the rest. Of a
/// long list its text shows the beginning.
[[nodiscard]] Section sectionForReport(const Command& command, const Surroundings& surroundings);

} // namespace qk::info
