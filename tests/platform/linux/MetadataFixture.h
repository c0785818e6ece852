// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxMetadataIndex.h"
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"
#include "QKFoundation/platform/memory/MemoryClock.h"
#include "QKFoundation/platform/memory/MemoryDispatch.h"
#include "QKFoundation/platform/memory/MemoryFSEvents.h"
#include "QKFoundation/platform/memory/MemoryUsers.h"

#include "tests/platform/linux/FileDates.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qk::tests {

/// Real files below "scope" of a new folder, searched by the index while events and time come when they are told to.
class MetadataFixture {
public:
    static constexpr double kLatency = 0.5;

    MetadataFixture() { std::filesystem::create_directories(path("scope")); }

    [[nodiscard]] std::string path(std::string_view name) const { return root_ + "/" + std::string(name); }

    /// A file with that date of modification, and one of access that is as late.
    std::string write(std::string_view name, time_t modified) const {
        std::string file = folder_.write(name, "");
        setDates(file, modified, modified);
        return file;
    }
    void remove(std::string_view name) const { std::filesystem::remove_all(path(name)); }
    void move(std::string_view from, std::string_view to) const { std::filesystem::rename(path(from), path(to)); }

    /// Something is said to have happened.
    void emit(std::string_view name, platform::FSEventStreamEventFlags flags) const {
        events->emit(NSString::fromUTF8Lossy(path(name)), flags);
    }

    /// The newest `limit` of all files, "public.data", below the scope; what is delivered is put into `delivered`.
    void begin(std::size_t limit, const NSString& predicate = "kMDItemContentTypeTree == 'public.data'") {
        begin({.scopes = {NSString::fromUTF8Lossy(path("scope"))},
               .predicate = NSPredicate::predicateWithFormat(predicate),
               .sortDescriptors = {{platform::kMDItemContentModificationDate, false},
                                   {platform::kMDItemLastUsedDate, false}},
               .limit = limit});
    }
    void begin(const platform::MetadataSearch& search) {
        run = metadataIndex.begin(
            search, {.progress = [this](std::size_t count) { progress.push_back(count); },
                     .deliver = [this](const platform::MetadataResults& results) { delivered.push_back(results); }});
    }

    /// What is on other threads is done, and what comes of it is told.
    void settle() const {
        while (dispatch->drain() || dispatch->runBackground() != 0) {
        }
    }
    /// Time passes, a latency at a time, until all that was said to have happened has been told.
    void pass(int latencies = 3) const {
        settle();
        for (int count = 0; count < latencies; ++count) {
            dispatch->advance(kLatency);
            settle();
        }
    }

    /// The paths of the last results, from the fixture's folder on, with blanks between.
    [[nodiscard]] std::string last() const {
        if (delivered.empty()) {
            return "nothing was delivered";
        }
        std::string text;
        for (const auto& item : delivered.back()) {
            const auto value = item->valueForAttribute(platform::NSMetadataItemPathKey);
            text += (text.empty() ? "" : " ") + value->as<NSString>()->utf8Lossy().substr(root_.size() + 1);
        }
        return text;
    }

private:
    TemporaryFolder folder_;
    std::string root_ = std::filesystem::canonical(folder_.path()).string();
    std::shared_ptr<platform::memory::MemoryUsers> users_ = std::make_shared<platform::memory::MemoryUsers>();

public:
    std::shared_ptr<platform::memory::MemoryDispatch> dispatch =
        std::make_shared<platform::memory::MemoryDispatch>(std::make_shared<platform::memory::MemoryClock>());
    std::shared_ptr<platform::memory::MemoryFSEvents> events = std::make_shared<platform::memory::MemoryFSEvents>();
    platform::LinuxMetadataIndex metadataIndex{
        platform::LinuxRoot(), dispatch, events,
        std::make_shared<platform::LinuxUniformTypes>(platform::LinuxRoot(path("no-types"))),
        platform::StandardFolders(platform::LinuxRoot(), users_, [this](std::string_view name) {
            return name == "HOME"            ? std::optional(path("home"))
                   : name == "XDG_DATA_HOME" ? std::optional(path("data"))
                                             : std::nullopt;
        })};
    std::vector<std::size_t> progress;
    std::vector<platform::MetadataResults> delivered;
    std::unique_ptr<platform::MetadataSearchRun> run;
};

} // namespace qk::tests
