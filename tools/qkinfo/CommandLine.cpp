// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/CommandLine.h"

#include "tools/qkinfo/DisplayText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

namespace qk::info {

namespace {

constexpr std::size_t kOptionColumn = 24;

constexpr const char* kDescription = "Tells what is known about this machine: operating system, hardware, updates.";

constexpr const char* kFooter = "A fact that the system does not tell is shown as \"not reported by this system\",\n"
                                "in JSON as null. Exit status: 0, or 2 with one line on standard error.";

constexpr std::string_view kReport = "report";

constexpr const char* kVersionLine = "qkinfo " QKINFO_VERSION;

/// The command line as the library for it sees it, and where it puts what it found.
class Grammar {
public:
    Grammar() : app_(kDescription, "qkinfo") {
        app_.get_formatter()->column_width(kOptionColumn);
        app_.get_formatter()->label("SUBCOMMAND", "COMMAND");
        app_.get_formatter()->label("OPTIONS", "OPTION...");
        app_.set_help_flag("-h,--help", "Print this help");
        app_.set_version_flag("--version", kVersionLine, "Print the version");
        app_.footer(kFooter);
        app_.require_subcommand(0, 1);
        CLI::App& report = addCommand(std::string(kReport), "All that is known, in sections");
        report.add_flag("--no-updates", noUpdates_, "Do not ask for updates, which can take seconds");
        for (const Command& command : commands()) {
            addCommand(std::string(command.name), std::string(command.summary));
        }
    }

    void parse(const std::vector<std::string>& arguments) {
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        app_.parse(reversed);
        if (app_.get_subcommands().empty()) {
            throw CLI::RequiredError("no command given", CLI::ExitCodes::RequiredError);
        }
    }

    [[nodiscard]] std::string help() {
        // Only the usage line asks; what is missing in `parse` has words of its own.
        app_.require_subcommand(1);
        return app_.help("", CLI::AppFormatMode::Normal);
    }

    /// What was left over when `parse` failed because of it.
    [[nodiscard]] std::vector<std::string> unexpected() const { return app_.remaining(true); }

    [[nodiscard]] Invocation invocation() const {
        const std::string chosen = app_.get_subcommands().front()->get_name();
        Invocation invocation{{}, chosen == kReport, json_, color_};
        for (const Command& command : commands()) {
            const bool skipped = noUpdates_ && command.name == "updates";
            if (command.name == chosen || (invocation.report && !skipped)) {
                invocation.commands.push_back(&command);
            }
        }
        return invocation;
    }

private:
    CLI::App& addCommand(const std::string& name, const std::string& summary) {
        static const std::map<std::string, ColorChoice> kChoices{
            {"auto", ColorChoice::Auto}, {"always", ColorChoice::Always}, {"never", ColorChoice::Never}};
        CLI::App& command = *app_.add_subcommand(name, summary);
        command.group("Commands");
        command.add_flag("--json", json_, "Print JSON");
        command
            .add_option_function<std::string>(
                "--color", [this](const std::string& choice) { color_ = kChoices.at(choice); },
                "Colour: auto (on a terminal), always or never")
            ->type_name("WHEN")
            ->take_last()
            ->check([](const std::string& choice) {
                return kChoices.contains(choice) ? "" : "\"" + choice + "\" is not auto, always or never";
            });
        command.footer("");
        return command;
    }

    CLI::App app_;
    bool json_ = false;
    bool noUpdates_ = false;
    ColorChoice color_ = ColorChoice::Auto;
};

UsageError usageError(const std::string& message) {
    return {displayLine(message) + " (see qkinfo --help)"};
}

UsageError unexpectedArgument(const std::vector<std::string>& arguments, const std::vector<std::string>& unexpected) {
    const auto isOption = [](const std::string& argument) { return argument.starts_with('-'); };
    const auto first = std::ranges::find_if_not(arguments, isOption);
    if (first != arguments.end() && *first != kReport && std::ranges::count(commands(), *first, &Command::name) == 0) {
        return usageError("there is no command \"" + *first + "\"");
    }
    return usageError("unexpected argument" + (unexpected.empty() ? "" : " \"" + unexpected.front() + "\""));
}

} // namespace

ParsedCommandLine parseCommandLine(const std::vector<std::string>& arguments) {
    Grammar grammar;
    try {
        grammar.parse(arguments);
        return grammar.invocation();
    } catch (const CLI::CallForHelp&) {
        return PlainText{grammar.help()};
    } catch (const CLI::CallForVersion&) {
        return PlainText{std::string(kVersionLine) + "\n"};
    } catch (const CLI::ExtrasError&) {
        return unexpectedArgument(arguments, grammar.unexpected());
    } catch (const CLI::ParseError& error) {
        return usageError(error.what());
    }
}

} // namespace qk::info
