// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Program.h"

#include "QKFoundation/platform/objects/NSException.h"

#include "tools/qkinfo/BackgroundWork.h"
#include "tools/qkinfo/CommandLine.h"
#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/Output.h"
#include "tools/qkinfo/TextRenderer.h"
#include "tools/qkinfo/commands/RecentFollowing.h"
#include "tools/qkinfo/field/Field.h"
#include "tools/qkinfo/field/FieldCells.h"
#include "tools/qkinfo/watch/Watch.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace qk::info {

namespace {

void say(const std::string& message) {
    // Where this cannot be written either, the exit status says it alone.
    static_cast<void>(writeAll(STDERR_FILENO, "qkinfo: " + displayLine(message) + "\n"));
}

int fail(const std::string& message) {
    say(message);
    return kFailure;
}

int outcomeOfPrinting(int error) {
    // A reader that has seen enough, such as `head`, is no failure.
    if (error == 0 || error == EPIPE) {
        return kSuccess;
    }
    return fail(std::string("cannot write to standard output: ") +
                std::strerror(error)); // NOLINT(concurrency-mt-unsafe)
}

int print(const std::string& text) {
    int error = writeAll(STDOUT_FILENO, text);
    // Some file systems tell only now that there was no room.
    if (error == 0 && close(STDOUT_FILENO) == -1 && errno != EINTR) {
        error = errno;
    }
    return outcomeOfPrinting(error);
}

std::vector<Section> gather(const Invocation& invocation, const Surroundings& surroundings) {
    std::vector<Section> sections;
    for (const Command* command : invocation.commands) {
        const auto work = [&] {
            sections.push_back(invocation.report ? sectionForReport(*command, surroundings)
                                                 : sectionOf(*command, surroundings));
        };
        if (command->busy.empty()) {
            work();
        } else {
            const int fd = terminalAt(STDERR_FILENO).takesSequences ? STDERR_FILENO : -1;
            runInBackground(work, {fd, std::string(command->busy)});
        }
    }
    return sections;
}

int printText(const std::vector<Section>& sections, ColorChoice color, const Surroundings& surroundings,
              PathStyle pathsInPipe = PathStyle::Wrapped) {
    const Terminal output = terminalAt(STDOUT_FILENO);
    const char* const noColor = std::getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe): the worker has ended
    return print(renderText(sections, {output.width, usesColor(color, output, noColor), surroundings.clock->moment(),
                                       output.isTerminal ? PathStyle::Elided : pathsInPipe}));
}

int answer(const Invocation& invocation, const Surroundings& surroundings) {
    const std::vector<Section> sections = gather(invocation, surroundings);
    if (invocation.json) {
        return print(renderJson(sections));
    }
    return printText(sections, invocation.color, surroundings);
}

int answer(const TypesInvocation& invocation, const Surroundings& surroundings) {
    if (invocation.json) {
        return print(renderJson(std::vector{typesSection(invocation.options)}));
    }
    return printText(typesSections(invocation.options), invocation.color, surroundings);
}

int answer(const TranslateInvocation& invocation) {
    const Translated translated = translate(invocation.options);
    if (invocation.json) {
        return print(renderJson(std::vector{sectionOf(translated)}));
    }
    return print(displayLines(wellFormedUTF8(translated.text)) + "\n");
}

int answer(const FormatInvocation& invocation) {
    const FieldKind& kind = *invocation.options.kind;
    const std::vector<FormattedText> texts = formatted(invocation.options);
    int status = print(invocation.json ? renderFormattedJson(kind, texts) : renderFormatted(texts));
    for (const std::string& message : refusals(kind, texts)) {
        status = fail(message);
    }
    return status;
}

int answer(const FieldInvocation& invocation) {
    const std::optional<NSString> text = runField(*invocation.kind);
    if (!text.has_value()) {
        return kSuccess;
    }
    // What was pasted must not steer the terminal; a program gets it as it is.
    const bool isShown = terminalAt(STDOUT_FILENO).isTerminal;
    return print((isShown ? shownInField(*text) : wellFormedUTF8(*text)) + "\n");
}

int answer(const NotifyInvocation& invocation) {
    const std::string& name = invocation.options.name;
    if (!invocation.options.waits) {
        postNotification(invocation.options);
        return kSuccess;
    }
    if (!waitForNotification(invocation.options, [&] { say("waiting for \"" + name + "\""); })) {
        say("\"" + name + "\" was not posted in time");
        return kTimeIsOver;
    }
    return print((terminalAt(STDOUT_FILENO).isTerminal ? displayLine(name) : name) + "\n");
}

int answer(const NetworkInvocation& invocation, const Surroundings& surroundings) {
    const std::vector sections{Section{"network", "Network", networkList(invocation.options)}};
    return invocation.json ? print(renderJson(sections)) : printText(sections, invocation.color, surroundings);
}

int answer(const RecentInvocation& invocation, const Surroundings& surroundings) {
    if (invocation.options.follows) {
        return outcomeOfPrinting(
            followRecentItems(invocation.options, invocation.json, invocation.color, *surroundings.clock));
    }
    const std::vector sections{recentSection(invocation.options)};
    return invocation.json ? print(renderJson(sections))
                           : printText(sections, invocation.color, surroundings, PathStyle::Whole);
}

int answer(const ObserveInvocation& invocation, const Surroundings& surroundings) {
    const std::vector<std::string>& paths = invocation.options.paths;
    const std::string watched =
        paths.size() == 1 ? "\"" + paths.front() + "\"" : std::to_string(paths.size()) + " paths";
    int error = 0;
    const auto show = [&](const Changes& changes) {
        const Moment time = surroundings.clock->moment();
        error = writeAll(STDOUT_FILENO, invocation.json ? changesJsonLine(changes, time) : changeLines(changes, time));
        return error == 0;
    };
    if (observe(
            invocation.options, [&] { say("watching " + watched); }, show) == ObserveEnd::TimedOut) {
        say("the time is over, and other things have changed");
    }
    return outcomeOfPrinting(error);
}

} // namespace

int runProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    try {
        const ParsedCommandLine parsed = parseCommandLine(arguments);
        if (const auto* error = std::get_if<UsageError>(&parsed)) {
            return fail(error->message);
        }
        if (const auto* plain = std::get_if<PlainText>(&parsed)) {
            return print(plain->text);
        }
        if (const auto* watching = std::get_if<WatchInvocation>(&parsed)) {
            return outcomeOfPrinting(watch(watching->options, watching->json, watching->color, *surroundings.clock));
        }
        if (const auto* translating = std::get_if<TranslateInvocation>(&parsed)) {
            return answer(*translating);
        }
        if (const auto* types = std::get_if<TypesInvocation>(&parsed)) {
            return answer(*types, surroundings);
        }
        if (const auto* formatting = std::get_if<FormatInvocation>(&parsed)) {
            return answer(*formatting);
        }
        if (const auto* field = std::get_if<FieldInvocation>(&parsed)) {
            return answer(*field);
        }
        if (const auto* notifying = std::get_if<NotifyInvocation>(&parsed)) {
            return answer(*notifying);
        }
        if (const auto* asking = std::get_if<NetworkInvocation>(&parsed)) {
            return answer(*asking, surroundings);
        }
        if (const auto* looking = std::get_if<RecentInvocation>(&parsed)) {
            return answer(*looking, surroundings);
        }
        if (const auto* observing = std::get_if<ObserveInvocation>(&parsed)) {
            return answer(*observing, surroundings);
        }
        return answer(std::get<Invocation>(parsed), surroundings);
    } catch (const NSException& exception) {
        return fail(wellFormedUTF8(exception.reason()));
    } catch (const std::exception& exception) {
        return fail(exception.what());
    }
}

} // namespace qk::info
