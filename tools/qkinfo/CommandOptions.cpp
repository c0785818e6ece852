// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/CommandOptions.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>

namespace qk::info {

namespace {

std::optional<std::chrono::milliseconds> intervalOf(const std::string& text) {
    constexpr double kShortest = 0.1;
    constexpr double kLongest = 3600;
    constexpr double kMillisecondsOfSecond = 1000;
    double seconds = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
    // Written so that a value that is not a number fails as well.
    if (error != std::errc() || rest != end || !(seconds >= kShortest && seconds <= kLongest)) {
        return std::nullopt;
    }
    return std::chrono::milliseconds(std::llround(seconds * kMillisecondsOfSecond));
}

std::string checkInterval(const std::string& text) {
    return intervalOf(text).has_value() ? "" : "\"" + text + "\" is not a number from 0.1 to 3600";
}

std::optional<std::uint64_t> countOf(const std::string& text) {
    std::uint64_t count = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, count);
    return error == std::errc() && rest == end && count > 0 ? std::optional(count) : std::nullopt;
}

CLI::Option* addTimeout(CLI::App& command, std::optional<std::chrono::milliseconds>& timeout,
                        const std::string& description) {
    return command
        .add_option_function<std::string>(
            "--timeout", [&timeout](const std::string& text) { timeout = intervalOf(text); }, description)
        ->type_name("S")
        ->take_last()
        ->check(checkInterval);
}

} // namespace

std::string checkUTF8(const std::string& text) {
    return NSString::fromUTF8(text).has_value() ? "" : "\"" + text + "\" is not UTF-8";
}

void addWatchOptions(CLI::App& command, WatchOptions& options) {
    command
        .add_option_function<std::string>(
            "--interval", [&options](const std::string& text) { options.interval = intervalOf(text).value(); },
            "Seconds between samples, 0.1 to 3600 (default 1)")
        ->type_name("S")
        ->take_last()
        ->check(checkInterval);
    command
        .add_option_function<std::string>(
            "--count", [&options](const std::string& text) { options.count = countOf(text); },
            "End after so many samples")
        ->type_name("N")
        ->take_last()
        ->check([](const std::string& text) {
            return countOf(text).has_value() ? "" : "\"" + text + "\" is not a whole number from 1";
        });
}

void addNotifyOptions(CLI::App& command, NotifyOptions& options) {
    CLI::Option* wait = command.add_flag("--wait", options.waits, "Wait until another program does");
    addTimeout(command, options.timeout, "Seconds to wait at most, 0.1 to 3600")->needs(wait);
    command.add_option("NAME", options.name, "The name of the notification")
        ->type_name("")
        ->required()
        ->check(checkUTF8);
}

void addNetworkOptions(CLI::App& command, NetworkOptions& options) {
    command.add_flag("--active", options.active, "Only interfaces whose link is up");
    command.add_flag("--builtin", options.builtin, "Only interfaces that are built in");
}

void addRecentOptions(CLI::App& command, RecentOptions& options) {
    command.add_flag("--follow", options.follows, "Go on showing the list as it changes");
    command.add_option("--home", options.home, "Another home folder than the user's")->type_name("DIR")->take_last();
}

void addObserveOptions(CLI::App& command, ObserveOptions& options) {
    command.footer("Several of --created, --modified and --removed ask for files of which all\n"
                   "of that is told at once, within half a second. After the time of --timeout the\n"
                   "first changes that are all left out end it; while nothing happens, it goes on.\n"
                   "An interrupt ends it with the exit status 0.");
    command.add_option("PATH", options.paths, "The folders to watch, with all below them")->type_name("")->required();
    command.add_option("--name", options.names, "Only files with this in their names; repeatable")
        ->type_name("N")
        ->allow_extra_args(false)
        ->check([](const std::string& text) { return text.empty() ? "an empty name is no part of any" : ""; });
    const auto addKind = [&](const char* name, std::int64_t type, const char* description) {
        return command.add_flag_callback(
            name, [&options, type] { options.itemType = type; }, description);
    };
    CLI::Option* const folders = addKind("--folders", FileSystemObserverItemTypeDirectory, "Only folders");
    addKind("--files", FileSystemObserverItemTypeFile, "Only files, no folders and no links")->excludes(folders);
    const auto addChange = [&](const char* name, std::int64_t change, const char* description) {
        command.add_flag_callback(
            name, [&options, change] { options.changes |= change; }, description);
    };
    addChange("--created", FileSystemObserverChangeCreated, "Only what has been made");
    addChange("--modified", FileSystemObserverChangeModified, "Only what has been written to");
    addChange("--removed", FileSystemObserverChangeRemoved, "Only what is gone");
    addTimeout(command, options.timeout, "After S seconds (0.1 to 3600), end at what is left out");
}

} // namespace qk::info
