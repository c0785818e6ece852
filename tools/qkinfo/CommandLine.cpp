// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/CommandLine.h"

#include "tools/qkinfo/CommandOptions.h"
#include "tools/qkinfo/DisplayText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <map>

namespace qk::info {

namespace {

constexpr std::size_t kOptionColumn = 24;

constexpr const char* kDescription = "Tells what is known about this machine: operating system, hardware, updates.";

constexpr const char* kFooter = "A fact that the system does not tell is shown as \"not reported by this system\",\n"
                                "in JSON as null. Exit status: 0, or 2 with one line on standard error.";

constexpr std::string_view kReport = "report";
constexpr std::string_view kWatch = "watch";
constexpr std::string_view kTranslate = "translate";
constexpr std::string_view kTypes = "types";
constexpr std::string_view kFormat = "format";
constexpr std::string_view kField = "field";
constexpr std::string_view kNotify = "notify";
constexpr std::string_view kNetwork = "network";
constexpr std::string_view kObserve = "observe";

// Whatever an argument of these looks like, it may be a text.
constexpr std::array kTakingTexts{kTranslate, kTypes, kFormat, kNotify, kRecentKey, kObserve};

constexpr const char* kVersionLine = "qkinfo " QKINFO_VERSION;

/// The library for the command line takes "[a,b]" for two values, and "--" for the end of a command that has what it
/// needs. It leaves what begins with a zero byte, as no argument does.
std::vector<std::string> marked(const std::vector<std::string>& arguments) {
    std::vector<std::string> result;
    bool isText = false; // behind "--"
    for (const std::string& argument : arguments) {
        if (!isText && argument == "--") {
            isText = true;
            continue;
        }
        const bool isMisread = argument.starts_with('[') || (isText && argument.starts_with('-'));
        result.push_back((isMisread ? std::string(1, '\0') : "") + argument);
        const std::size_t value = argument.find("=[");
        if (!isText && argument.starts_with("--") && value != std::string::npos && value == argument.find('=')) {
            result.back().insert(value + 1, 1, '\0');
        }
    }
    return result;
}

void unmark(std::string& argument) {
    if (argument.starts_with('\0')) {
        argument.erase(argument.begin());
    }
}

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
        report.add_flag("--no-recent", noRecent_, "Leave out what the user worked with");
        for (const Command& command : commands()) {
            addCommand(std::string(command.name), std::string(command.summary));
        }
        addNetworkOptions(*app_.get_subcommand(std::string(kNetwork)), network_);
        addRecentOptions(*app_.get_subcommand(std::string(kRecentKey)), recent_);
        addWatchOptions(addCommand(std::string(kWatch), "The machine under load, again and again"), watch_);
        addObserveOptions(addPlainCommand(std::string(kObserve), "Files that change, as they do"), observe_);
        addTranslate();
        addTypes();
        addFormat();
        addField();
        addNotify();
    }

    void parse(const std::vector<std::string>& arguments) {
        const bool takesTexts =
            !arguments.empty() && std::ranges::find(kTakingTexts, arguments.front()) != kTakingTexts.end();
        std::vector<std::string> reversed = takesTexts ? marked(arguments) : arguments;
        std::ranges::reverse(reversed);
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

    [[nodiscard]] ParsedCommandLine invocation() const {
        const std::string chosen = app_.get_subcommands().front()->get_name();
        if (chosen == kWatch) {
            return WatchInvocation{watch_, json_, color_};
        }
        if (chosen == kTranslate) {
            TranslateInvocation invocation{translate_, json_};
            unmark(invocation.options.key);
            unmark(invocation.options.bundle);
            if (invocation.options.language.has_value()) {
                unmark(*invocation.options.language);
            }
            std::ranges::for_each(invocation.options.arguments, unmark);
            return invocation;
        }
        if (chosen == kTypes) {
            TypesInvocation invocation{types_, json_, color_};
            std::ranges::for_each(invocation.options.names, unmark);
            return invocation;
        }
        if (chosen == kFormat) {
            FormatInvocation invocation{{fieldKindNamed(fieldKind_), texts_}, json_};
            std::ranges::for_each(invocation.options.texts, unmark);
            return invocation;
        }
        if (chosen == kField) {
            return FieldInvocation{fieldKindNamed(fieldKind_)};
        }
        if (chosen == kNotify) {
            NotifyInvocation invocation{notify_};
            unmark(invocation.options.name);
            return invocation;
        }
        if (chosen == kNetwork) {
            return NetworkInvocation{network_, json_, color_};
        }
        if (chosen == kRecentKey) {
            RecentInvocation invocation{recent_, json_, color_};
            if (invocation.options.home.has_value()) {
                unmark(*invocation.options.home);
            }
            return invocation;
        }
        if (chosen == kObserve) {
            ObserveInvocation invocation{observe_, json_};
            std::ranges::for_each(invocation.options.paths, unmark);
            std::ranges::for_each(invocation.options.names, unmark);
            return invocation;
        }
        Invocation invocation{{}, chosen == kReport, json_, color_};
        for (const Command& command : commands()) {
            const bool skipped = (noUpdates_ && command.name == "updates") || (noRecent_ && command.name == kRecentKey);
            if (command.name == chosen || (invocation.report && !skipped)) {
                invocation.commands.push_back(&command);
            }
        }
        return invocation;
    }

private:
    void addTranslate() {
        CLI::App& translate = addPlainCommand(std::string(kTranslate), "A text of an application's bundle, formatted");
        translate.add_option("--bundle", translate_.bundle, "The folder that holds the texts")
            ->type_name("DIR")
            ->required()
            ->take_last();
        translate
            .add_option("--language", translate_.language, "The language's folder (default: what the user prefers)")
            ->type_name("L")
            ->take_last();
        translate.add_option("KEY", translate_.key, "The key of the text")->type_name("")->required();
        translate.add_option("ARG", translate_.arguments, "What stands for %1%, %2%, ... in the text")->type_name("");
    }

    void addTypes() {
        CLI::App& types = addCommand(std::string(kTypes), "The types of files, by their extensions");
        types.add_option("NAME", types_.names, "An extension, or a file's name")->type_name("")->required();
    }

    void addFormat() {
        CLI::App& format = addPlainCommand(std::string(kFormat), "What a field of the application makes of a text");
        addFieldKind(format);
        format.add_option("TEXT", texts_, "What is pasted into the empty field")
            ->type_name("")
            ->required()
            ->check(checkUTF8);
    }

    void addField() {
        CLI::App& field = *app_.add_subcommand(std::string(kField), "A field of the application to type into");
        field.group("Commands");
        field.footer("");
        addFieldKind(field);
    }

    void addNotify() {
        CLI::App& notify = *app_.add_subcommand(std::string(kNotify), "Calls a name out to the user's programs");
        notify.group("Commands");
        notify.footer("Exit status: 0, 1 when the time is over, or 2 with one line on standard error.");
        addNotifyOptions(notify, notify_);
    }

    void addFieldKind(CLI::App& command) {
        std::string names;
        for (const FieldKind& kind : fieldKinds()) {
            const bool isLast = kind.name == fieldKinds().back().name;
            names.append(names.empty() ? "" : isLast ? " or " : ", ").append(kind.name);
        }
        command.add_option("KIND", fieldKind_, "The kind of field: " + names)
            ->type_name("")
            ->required()
            ->check([names](const std::string& name) {
                return fieldKindNamed(name) != nullptr ? "" : "\"" + name + "\" is not " + names;
            });
    }

    CLI::App& addPlainCommand(const std::string& name, const std::string& summary) {
        CLI::App& command = *app_.add_subcommand(name, summary);
        command.group("Commands");
        command.add_flag("--json", json_, "Print JSON");
        command.footer("");
        return command;
    }

    CLI::App& addCommand(const std::string& name, const std::string& summary) {
        static const std::map<std::string, ColorChoice> kChoices{
            {"auto", ColorChoice::Auto}, {"always", ColorChoice::Always}, {"never", ColorChoice::Never}};
        CLI::App& command = addPlainCommand(name, summary);
        command
            .add_option_function<std::string>(
                "--color", [this](const std::string& choice) { color_ = kChoices.at(choice); },
                "Colour: auto (on a terminal), always or never")
            ->type_name("WHEN")
            ->take_last()
            ->check([](const std::string& choice) {
                return kChoices.contains(choice) ? "" : "\"" + choice + "\" is not auto, always or never";
            });
        return command;
    }

    CLI::App app_;
    bool json_ = false;
    bool noUpdates_ = false;
    bool noRecent_ = false;
    NetworkOptions network_;
    RecentOptions recent_;
    ObserveOptions observe_;
    WatchOptions watch_;
    TranslateOptions translate_;
    TypesOptions types_;
    std::string fieldKind_;
    std::vector<std::string> texts_;
    NotifyOptions notify_;
    ColorChoice color_ = ColorChoice::Auto;
};

UsageError usageError(const std::string& message) {
    return {displayLine(message) + " (see qkinfo --help)"};
}

UsageError unexpectedArgument(const std::vector<std::string>& arguments, const std::vector<std::string>& unexpected) {
    const auto isOption = [](const std::string& argument) { return argument.starts_with('-'); };
    const auto first = std::ranges::find_if_not(arguments, isOption);
    const auto isCommand = [](const std::string& argument) {
        return argument == kReport || argument == kWatch || argument == kTranslate || argument == kTypes ||
               argument == kFormat || argument == kField || argument == kNotify || argument == kObserve ||
               std::ranges::count(commands(), argument, &Command::name) > 0;
    };
    if (first != arguments.end() && !isCommand(*first)) {
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
