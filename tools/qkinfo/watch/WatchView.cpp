// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/WatchView.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/Quantities.h"
#include "tools/qkinfo/watch/StyledLine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

namespace qk::info {

namespace {

constexpr std::size_t kPercentWidth = 6; // "100.0%"
constexpr std::size_t kDetailWidth = 28; // "user 100.0%, system 100.0%", "1023.9 GiB of 1023.9 GiB"
constexpr std::size_t kShortestBar = 20; // where a detail stands beside it
constexpr std::size_t kNarrowestBar = 3; // else there is none
constexpr std::size_t kShortestLabel = 7;
constexpr std::string_view kPartGap = ", ";
constexpr double kWhole = 100;
constexpr double kHighShare = 70;
constexpr double kCriticalShare = 90;

/// How much a line is worth. Those at the end are left out first.
enum class Rank { Vital, Processes, Volume, Title, Curve, Detail, Blank };

struct RankedLine {
    Rank rank;
    std::string text;
};

std::string_view shareColor(double share) {
    if (share >= kCriticalShare) {
        return color::kCritical;
    }
    return share >= kHighShare ? color::kHigh : color::kGood;
}

std::string secondsText(std::chrono::milliseconds duration) {
    std::array<char, 32> text{};
    constexpr double kMillisecondsOfSecond = 1000;
    const int length =
        std::snprintf(text.data(), text.size(), "%g s", static_cast<double>(duration.count()) / kMillisecondsOfSecond);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

class Frame {
public:
    Frame(const WatchHistory& history, const WatchStyle& style)
        : history_(history), sample_(history.latest()), style_(style) {}

    std::vector<RankedLine> lines() && {
        addTitle();
        addBlank();
        addBar(Rank::Vital, "CPU", processorPercent(sample_), processorDetail());
        addCurve(history_.processors());
        addBlank();
        addBar(Rank::Vital, "Memory", memoryPercent(sample_), memoryDetail());
        addCurve(history_.memory());
        addMemoryParts();
        if (!sample_.volumes.empty()) {
            addBlank();
        }
        for (const QKHardwareVolumeUsageData& volume : sample_.volumes) {
            const std::string name = wellFormedUTF8(volume.name);
            addBar(Rank::Volume, name.empty() ? "(no name)" : name, volumePercent(volume), volumeDetail(volume));
        }
        addBlank();
        addProcesses();
        return std::move(lines_);
    }

    [[nodiscard]] std::size_t labelWidth() const {
        constexpr std::size_t kWide = 60;
        constexpr std::size_t kMedium = 30;
        if (style_.width >= kWide) {
            return 14;
        }
        return style_.width >= kMedium ? 10 : kShortestLabel;
    }

private:
    [[nodiscard]] StyledLine line() const { return {style_.width, style_.color}; }

    void add(Rank rank, const StyledLine& line) { lines_.push_back({rank, line.text()}); }
    void addBlank() { lines_.push_back({Rank::Blank, ""}); }

    void addTitle() {
        StyledLine title = line();
        title.appendWhole(localTimeText(sample_.time), color::kTitle);
        if (title.text().empty()) {
            return;
        }
        const std::string interval = "every " + secondsText(style_.interval);
        const std::string keys = "q quits";
        for (const std::string& part : {interval, keys}) {
            if (title.room() >= part.size() + 2) {
                title.skip(2).append(part, color::kFaint);
            }
        }
        add(Rank::Title, title);
    }

    [[nodiscard]] bool hasDetailBeside() const {
        return style_.width >= labelWidth() + kShortestBar + 1 + kPercentWidth + 2 + kDetailWidth;
    }

    [[nodiscard]] std::size_t barWidth() const {
        const std::size_t taken = labelWidth() + 1 + kPercentWidth + (hasDetailBeside() ? 2 + kDetailWidth : 0);
        return style_.width >= taken + kNarrowestBar ? style_.width - taken : 0;
    }

    void addBar(Rank rank, std::string_view label, std::optional<double> share, const std::string& detail) {
        StyledLine bar = line();
        bar.appendCell(label, labelWidth() - 1, color::kLabel).skip(1);
        if (!share.has_value()) {
            bar.append(detail.empty() ? std::string_view("not reported") : std::string_view(detail), color::kFaint);
            add(rank, bar);
            return;
        }
        if (const std::size_t width = barWidth(); width > 0) {
            const double filled = std::round(std::clamp(*share, 0.0, kWhole) / kWhole * static_cast<double>(width));
            const auto full = static_cast<std::size_t>(filled);
            bar.append(repeated(style_.blocks ? "█" : "#", full), shareColor(*share));
            bar.append(repeated(style_.blocks ? "░" : "-", width - full), color::kFaint).skip(1);
        }
        const std::string percent = percentText({*share});
        bar.skip(percent.size() < kPercentWidth ? kPercentWidth - percent.size() : 0).appendWhole(percent);
        if (hasDetailBeside()) {
            bar.skip(2).appendWhole(detail);
        }
        add(rank, bar);
        if (!hasDetailBeside() && !detail.empty()) {
            addDetail(detail);
        }
    }

    void addDetail(const std::string& detail) {
        if (const StyledLine row = line().skip(labelWidth()).appendWhole(detail); !row.text().empty()) {
            add(Rank::Detail, row);
        }
    }

    void addCurve(const WatchHistory::Shares& shares) {
        static constexpr std::array<std::string_view, 8> kBlocks{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
        static constexpr std::array<std::string_view, 8> kSigns{"_", ".", ":", "-", "=", "+", "*", "#"};
        if (std::ranges::none_of(shares, [](const auto& share) { return share.has_value(); })) {
            return;
        }
        StyledLine curve = line().skip(labelWidth());
        const std::size_t shown = std::min(shares.size(), curve.room());
        for (auto share = shares.end() - static_cast<std::ptrdiff_t>(shown); share != shares.end(); ++share) {
            if (!share->has_value()) {
                curve.skip(1);
                continue;
            }
            constexpr double kSteps = 8;
            const double step = std::floor(std::clamp(**share, 0.0, kWhole) / kWhole * kSteps);
            const std::size_t index = std::min<std::size_t>(static_cast<std::size_t>(step), kBlocks.size() - 1);
            curve.append(style_.blocks ? kBlocks[index] : kSigns[index], shareColor(**share));
        }
        add(Rank::Curve, curve);
    }

    [[nodiscard]] std::string processorDetail() const {
        if (!processorPercent(sample_).has_value()) {
            return {};
        }
        const QKHardwareCPUUsageData& shares = sample_.processors->shares;
        return "user " + percentText({shares.userLoad}) + ", system " + percentText({shares.systemLoad});
    }

    [[nodiscard]] std::string memoryDetail() const {
        if (!sample_.memory.has_value()) {
            return {};
        }
        const std::string used = sizeText({sample_.memory->data.usedMemory});
        return sample_.memory->installed.number != 0 ? used + " of " + sizeText(sample_.memory->installed)
                                                     : used + " used";
    }

    void addMemoryParts() {
        if (!sample_.memory.has_value()) {
            return;
        }
        const QKHardwareRAMUsageData& data = sample_.memory->data;
        const std::array<std::string, 6> parts{"applications " + sizeText({data.appMemory}),
                                               "wired " + sizeText({data.wiredMemory}),
                                               "compressed " + sizeText({data.compressedMemory}),
                                               "cached files " + sizeText({data.chachedFiles}),
                                               "free " + sizeText({data.freeMemory}),
                                               "swapped out " + sizeText({data.swapUsed})};
        std::string row;
        for (const std::string& part : parts) {
            const bool first = row.empty();
            if (!first && labelWidth() + row.size() + kPartGap.size() + part.size() > style_.width) {
                addDetail(row);
                row = part;
            } else {
                row.append(first ? std::string_view() : kPartGap).append(part);
            }
        }
        addDetail(row);
    }

    static std::string volumeDetail(const QKHardwareVolumeUsageData& volume) {
        const auto used = usedBytes(volume);
        return used.has_value() ? sizeText(*used) + " of " + sizeText({volume.totalCapacity}) : std::string();
    }

    void addProcesses() {
        StyledLine row = line();
        row.appendCell(labelWidth() > kShortestLabel ? "Processes" : "Procs", labelWidth() - 1, color::kLabel).skip(1);
        if (!sample_.processes.has_value()) {
            row.append("not reported", color::kFaint);
            add(Rank::Processes, row);
            return;
        }
        const std::size_t inactive = sample_.processes->inactiveProcesses.size();
        row.append(std::to_string(sample_.processes->numberOfProcesses))
            .appendWhole(", " + std::to_string(inactive) + " inactive");
        add(Rank::Processes, row);
        if (const Names names = inactiveNames(*sample_.processes); !names.empty()) {
            add(Rank::Detail, line().skip(labelWidth()).appendShortened(namesText(names)));
        }
    }

    const WatchHistory& history_;
    const WatchSample& sample_;
    const WatchStyle& style_;
    std::vector<RankedLine> lines_;
};

// Leaves out the last one of the lines that are worth least, until the rest fits.
std::size_t dropLeastImportant(std::vector<RankedLine>& lines, std::size_t height) {
    std::size_t volumes = 0;
    while (lines.size() > height) {
        const auto least = std::ranges::max_element(lines.rbegin(), lines.rend(), {}, &RankedLine::rank);
        volumes += least->rank == Rank::Volume ? 1 : 0;
        lines.erase(std::prev(least.base()));
    }
    return volumes;
}

// A list that is cut says so, in its last line.
void sayHowManyMore(std::vector<RankedLine>& lines, std::size_t dropped, const WatchStyle& style, std::size_t indent) {
    const auto last = std::ranges::find(lines.rbegin(), lines.rend(), Rank::Volume, &RankedLine::rank);
    if (dropped > 0 && last != lines.rend()) {
        StyledLine line(style.width, style.color);
        last->text = line.skip(indent).append("and " + std::to_string(dropped + 1) + " more volumes").text();
    }
}

} // namespace

std::vector<std::string> watchFrame(const WatchHistory& history, const WatchStyle& style) {
    Frame frame(history, style);
    const std::size_t indent = frame.labelWidth();
    std::vector<RankedLine> lines = std::move(frame).lines();
    const std::size_t dropped = dropLeastImportant(lines, std::max<std::size_t>(style.height, 1));
    sayHowManyMore(lines, dropped, style, indent);
    std::vector<std::string> texts;
    texts.reserve(lines.size());
    for (RankedLine& line : lines) {
        texts.push_back(std::move(line.text));
    }
    return texts;
}

std::string drawnInPlace(const std::vector<std::string>& frame) {
    // Each line is erased before it is written: behind a line that ends in the last column, erasing would take that
    // column's character.
    std::string text = "\x1b[H";
    for (std::size_t index = 0; index < frame.size(); ++index) {
        const bool last = index + 1 == frame.size();
        text.append(last ? "\x1b[J" : "\x1b[K").append(frame[index]).append(last ? "" : "\r\n");
    }
    return text;
}

} // namespace qk::info
