// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/RecentFollowing.h"

#include "QKFoundation/platform/services/Services.h"

#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/Output.h"
#include "tools/qkinfo/Quantities.h"
#include "tools/qkinfo/TerminalSession.h"
#include "tools/qkinfo/watch/WatchView.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace qk::info {

namespace {

// Another screen, without a cursor, whose lines do not go on in the next one; and back.
constexpr std::string_view kEnter = "\x1b[?1049h\x1b[?25l\x1b[?7l\x1b[2J";
constexpr std::string_view kLeave = "\x1b[0m\x1b[?7h\x1b[?25h\x1b[?1049l";

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

/// Recent items in place on the terminal at standard output. The last list stays behind at the end.
class RecentScreen {
public:
    RecentScreen(ColorChoice color, const Clock& clock)
        : color_(color), clock_(clock), session_({STDOUT_FILENO, kEnter, kLeave}) {}

    int run(const std::optional<NSString>& home) {
        int error = show();
        const RecentItemsWatch watch(home, [this](const auto& latest) {
            list_ = recentList(latest);
            time_ = clock_.moment();
            isNew_ = true;
        });
        const auto loop = platform::services()->dispatch->mainRunLoop();
        while (error == 0) {
            switch (session_.wait(loop->fileDescriptor())) {
            case TerminalEvent::Keys:
                if (session_.readKeys().find('q') != std::string::npos) {
                    return finish();
                }
                break;
            case TerminalEvent::Resized:
            case TerminalEvent::Back: error = show(); break;
            case TerminalEvent::Other:
                loop->drain();
                error = std::exchange(isNew_, false) ? show() : 0;
                break;
            case TerminalEvent::Timeout: break;
            }
        }
        return error;
    }

private:
    [[nodiscard]] TextStyle style() const {
        const Terminal terminal = terminalAt(STDOUT_FILENO);
        const char* const noColor = std::getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe): nothing changes it
        return {terminal.width, usesColor(color_, terminal, noColor), time_, PathStyle::Elided};
    }

    [[nodiscard]] int show() const {
        const std::size_t height = terminalAt(STDOUT_FILENO).height;
        return writeAll(STDOUT_FILENO, drawnInPlace(recentFrame(list_, time_, style(), height)));
    }

    int finish() {
        session_.forgetKeys();
        session_.leave();
        if (!list_.has_value()) {
            return 0;
        }
        return writeAll(STDOUT_FILENO, renderText(std::vector{Section{kRecentKey, kRecentTitle, *list_}}, style()));
    }

    ColorChoice color_;
    const Clock& clock_;
    TerminalSession session_;
    std::optional<List> list_;
    Moment time_{};
    bool isNew_ = false;
};

} // namespace

std::optional<std::string> RecentLog::add(const List& list, Moment time) {
    const std::vector sections{Section{kRecentKey, kRecentTitle, list}};
    std::string told = renderJson(sections);
    if (told == latest_) {
        return std::nullopt;
    }
    const bool isFirst = std::exchange(latest_, std::move(told)).empty();
    if (json_) {
        return renderJsonLine(time, sections);
    }
    const std::string title = std::string(kRecentTitle) + " at " + localTimeText(time);
    return (isFirst ? "" : "\n") + renderText(std::vector{Section{kRecentKey, title, list}}, style_);
}

std::vector<std::string> recentFrame(const std::optional<List>& list, Moment time, const TextStyle& style,
                                     std::size_t height) {
    std::string title(kRecentTitle);
    List shown{{}, "Looking for them.", "", ""};
    if (list.has_value()) {
        title += " at " + localTimeText(time);
        shown = *list;
    }
    title += ", q quits";
    std::vector<std::string> lines = linesOf(renderText(std::vector{Section{kRecentKey, title, shown}}, style));
    lines.resize(std::min(lines.size(), std::max<std::size_t>(height, 1)));
    return lines;
}

int followRecentItems(const RecentOptions& options, bool json, ColorChoice color, const Clock& clock) {
    const std::optional<NSString> home = homeOf(options);
    const Terminal terminal = terminalAt(STDOUT_FILENO);
    if (!json && terminal.takesSequences) {
        return RecentScreen(color, clock).run(home);
    }
    const auto loop = platform::services()->dispatch->mainRunLoop();
    const bool isColored = usesColor(color, terminal, nullptr);
    RecentLog log(json, {terminal.width, isColored, {}, terminal.isTerminal ? PathStyle::Elided : PathStyle::Whole});
    int error = 0;
    const RecentItemsWatch watch(home, [&](const auto& latest) {
        const auto text = log.add(recentList(latest), clock.moment());
        error = text.has_value() && error == 0 ? writeAll(STDOUT_FILENO, *text) : error;
        if (error != 0) {
            loop->stop();
        }
    });
    loop->run();
    return error;
}

} // namespace qk::info
