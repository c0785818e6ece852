// SPDX-License-Identifier: Apache-2.0
// Laws of the list and of the flags, over random deliveries and events.
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/recent_items/RecentItemsObserver.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace qk;
using platform::FSEventStreamEventFlags;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

/// What the list is about: "/folder/name", and when it was used.
struct Entry {
    char folder = 'a';
    char name = 'x';
    std::optional<int> date;

    [[nodiscard]] std::string path() const { return {'/', folder, '/', name}; }
    friend bool operator==(const Entry& left, const Entry& right) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Entry& entry) {
        return stream << entry.path() << "@" << (entry.date.has_value() ? std::to_string(*entry.date) : "never");
    }
};

rc::Gen<std::vector<Entry>> anyEntries() {
    const auto date = rc::gen::map(rc::gen::inRange(-1, 5),
                                   [](int moment) { return moment >= 0 ? std::optional(moment) : std::nullopt; });
    return rc::gen::container<std::vector<Entry>>(rc::gen::build<Entry>(
        rc::gen::set(&Entry::folder, rc::gen::element('a', 'b', 'c')),
        rc::gen::set(&Entry::name, rc::gen::element('x', 'y', 'z')), rc::gen::set(&Entry::date, date)));
}

RecentItemsObserver::Items itemsOf(const std::vector<Entry>& entries) {
    RecentItemsObserver::Items items;
    for (const Entry& entry : entries) {
        items.push_back(RecentItem::recentItemWithPath(text(entry.path())));
        if (entry.date.has_value()) {
            items.back()->setLatestInteractionDate(NSDate::dateWithTimeIntervalSince1970(*entry.date));
        }
    }
    return items;
}

std::vector<Entry> entriesOf(const RecentItemsObserver::Items& items) {
    std::vector<Entry> entries;
    for (const auto& item : items) {
        const std::string path = item->path().value().utf8Lossy();
        const auto& date = item->latestInteractionDate();
        entries.push_back(
            {path[1], path[3],
             date.has_value() ? std::optional(static_cast<int>(date->timeIntervalSince1970())) : std::nullopt});
    }
    return entries;
}

/// The list as its rules say, on plain values.
void update(std::vector<Entry>& list, const Entry& entry) {
    const auto isSamePath = [](const Entry& one) {
        return [path = one.path()](const Entry& other) { return other.path() == path; };
    };
    if (std::ranges::none_of(list, isSamePath(entry))) {
        list.push_back(entry);
        return;
    }
    const auto existing = std::ranges::find(list, entry.name, &Entry::name);
    if (existing->date.has_value() && entry.date.has_value() && *existing->date < *entry.date) {
        std::erase_if(list, isSamePath(Entry(*existing)));
        list.push_back(entry);
    }
}

/// An observer that is shut down in the end.
class Observed {
public:
    [[nodiscard]] RecentItemsObserver& operator*() const { return *observer_; }
    ~Observed() { observer_->shutdown(); }
    Observed() = default;
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;

private:
    Machine machine_;
    ScopedMachine installed_{machine_};
    std::shared_ptr<RecentItemsObserver> observer_ = RecentItemsObserver::recentItemsObserver();
};

RC_GTEST_PROP(RecentItemsLaws, ListFollowsItsRules, ()) {
    const Observed observed;
    std::vector<Entry> expected;
    for (const auto& delivery : *rc::gen::container<std::vector<std::vector<Entry>>>(anyEntries())) {
        const auto items = itemsOf(delivery);
        (*observed).removeOutdatedItemsThatAreNotPresentInItems(items);
        (*observed).updateRecentItems(items);
        std::erase_if(expected, [&](const Entry& entry) {
            return std::ranges::none_of(delivery, [&](const Entry& each) { return each.path() == entry.path(); });
        });
        for (const Entry& entry : delivery) {
            update(expected, entry);
        }
        RC_ASSERT(entriesOf((*observed).recentItems()) == expected);
    }
}

RC_GTEST_PROP(RecentItemsLaws, WithNamesOfTheirOwnExactlyTheDeliveredPathsStay, ()) {
    const Observed observed;
    const auto names = *rc::gen::unique<std::vector<char>>(rc::gen::inRange('a', 'z'));
    for (int round = 0; round < 3; ++round) {
        std::vector<Entry> delivery;
        for (const char name : names) {
            delivery.push_back({'a', name, *rc::gen::inRange(0, 3)});
        }
        const auto items = itemsOf(delivery);
        (*observed).removeOutdatedItemsThatAreNotPresentInItems(items);
        (*observed).updateRecentItems(items);
        RC_ASSERT((*observed).recentItems().size() == names.size());
    }
}

RC_GTEST_PROP(RecentItemsLaws, LatestAreTheTwentyFirstOfAnOrder, ()) {
    const Observed observed;
    const auto all = *rc::gen::resize(60, anyEntries());
    (*observed).setRecentItems(itemsOf(all));
    std::vector<Entry> expected = all;
    std::ranges::stable_sort(expected, [](const Entry& left, const Entry& right) { return left.date > right.date; });
    expected.resize(std::min<std::size_t>(expected.size(), 20));
    RC_ASSERT(entriesOf((*observed).latestRecentItems()) == expected);
}

RC_GTEST_PROP(FileSystemObserverLaws, ChangesAreCounted, (std::int64_t options, FSEventStreamEventFlags flags)) {
    const Machine machine;
    const auto observer = FileSystemObserver::initWithFilesToLookFor(machine.services(), {}, 0, options, 0);
    const auto requested = static_cast<unsigned>(options & (2 | 4 | 8));
    const unsigned present =
        ((flags & 0x100U) != 0 ? 2U : 0U) | ((flags & 0x1000U) != 0 ? 4U : 0U) | ((flags & 0x200U) != 0 ? 8U : 0U);
    const bool expected = (options & 1) != 0 || std::popcount(requested) == std::popcount(requested & present);
    RC_ASSERT(observer->changeOptionsMatchingEventFlags(flags) == expected);
}

} // namespace
