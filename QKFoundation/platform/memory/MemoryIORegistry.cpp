// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryIORegistry.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace qk::platform::memory {
namespace {

using EntryRef = std::shared_ptr<const MemoryRegistryEntry>;

bool matches(const MemoryRegistryEntry& entry, const IOMatching& matching) {
    if (matching.kind == IOMatching::Kind::ServiceClass) {
        return std::find(entry.classes.begin(), entry.classes.end(), matching.text) != entry.classes.end();
    }
    const auto* name = entry.properties.get<NSString>("BSD Name");
    return name != nullptr && *name == matching.text;
}

} // namespace

struct MemoryIORegistry::State {
    mutable std::mutex mutex;
    std::vector<EntryRef> entries;
    std::map<io_object_t, EntryRef> handles;
    io_object_t lastHandle = IO_OBJECT_NULL;
    bool refusesMatching = false;
    kern_return_t matchingResult = KERN_SUCCESS;
    bool givesIterator = true;
    kern_return_t parentResult = KERN_SUCCESS;
    bool givesParent = true;

    // The mutex is held.
    io_object_t open(EntryRef entry) {
        handles.emplace(++lastHandle, std::move(entry));
        return lastHandle;
    }
};

class MemoryIORegistry::Iterator final : public IOIterator {
public:
    Iterator(std::shared_ptr<State> state, std::vector<EntryRef> entries)
        : state_(std::move(state)), entries_(std::move(entries)) {}

    [[nodiscard]] io_object_t next() override {
        if (position_ == entries_.size()) {
            return IO_OBJECT_NULL;
        }
        const std::scoped_lock lock(state_->mutex);
        return state_->open(entries_[position_++]);
    }

private:
    std::shared_ptr<State> state_;
    std::vector<EntryRef> entries_;
    std::size_t position_ = 0;
};

MemoryIORegistry::MemoryIORegistry() : state_(std::make_shared<State>()) {}

MemoryIORegistry::~MemoryIORegistry() = default;

void MemoryIORegistry::addEntry(const MemoryRegistryEntry& entry) {
    const std::scoped_lock lock(state_->mutex);
    state_->entries.push_back(std::make_shared<const MemoryRegistryEntry>(entry));
}

bool MemoryIORegistry::hasEntry(const NSString& bsdName) const {
    const std::scoped_lock lock(state_->mutex);
    return std::any_of(state_->entries.begin(), state_->entries.end(), [&](const EntryRef& entry) {
        return matches(*entry, {IOMatching::Kind::BSDName, bsdName});
    });
}

void MemoryIORegistry::refuseMatching(bool refuse) {
    const std::scoped_lock lock(state_->mutex);
    state_->refusesMatching = refuse;
}

void MemoryIORegistry::setMatchingResult(kern_return_t result, bool givesIterator) {
    const std::scoped_lock lock(state_->mutex);
    state_->matchingResult = result;
    state_->givesIterator = givesIterator;
}

void MemoryIORegistry::setParentResult(kern_return_t result, bool givesParent) {
    const std::scoped_lock lock(state_->mutex);
    state_->parentResult = result;
    state_->givesParent = givesParent;
}

std::size_t MemoryIORegistry::openHandles() const {
    const std::scoped_lock lock(state_->mutex);
    return state_->handles.size();
}

std::optional<IOMatching> MemoryIORegistry::bsdNameMatching(const NSString& name) const {
    const std::scoped_lock lock(state_->mutex);
    return state_->refusesMatching ? std::nullopt : std::optional(IOMatching{IOMatching::Kind::BSDName, name});
}

std::optional<IOMatching> MemoryIORegistry::serviceMatching(const NSString& className) const {
    const std::scoped_lock lock(state_->mutex);
    return state_->refusesMatching ? std::nullopt
                                   : std::optional(IOMatching{IOMatching::Kind::ServiceClass, className});
}

kern_return_t MemoryIORegistry::getMatchingServices(const IOMatching& matching,
                                                    std::unique_ptr<IOIterator>& iterator) const {
    const std::scoped_lock lock(state_->mutex);
    if (state_->givesIterator) {
        std::vector<EntryRef> found = state_->entries;
        std::erase_if(found, [&](const EntryRef& entry) { return !matches(*entry, matching); });
        iterator = std::make_unique<Iterator>(state_, std::move(found));
    }
    return state_->matchingResult;
}

std::optional<Value> MemoryIORegistry::entryProperty(io_registry_entry_t entry, const NSString& key) const {
    const std::scoped_lock lock(state_->mutex);
    const auto handle = state_->handles.find(entry);
    const Value* value = handle != state_->handles.end() ? handle->second->properties.objectForKey(key) : nullptr;
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

kern_return_t MemoryIORegistry::entryParent(io_registry_entry_t entry, const NSString& plane,
                                            io_registry_entry_t& parent) const {
    const std::scoped_lock lock(state_->mutex);
    const auto handle = state_->handles.find(entry);
    if (handle == state_->handles.end() || !handle->second->parent.has_value() || plane != kIOServicePlane) {
        return KERN_FAILURE;
    }
    if (state_->givesParent) {
        MemoryRegistryEntry above;
        above.classes.clear();
        above.properties = *handle->second->parent;
        parent = state_->open(std::make_shared<const MemoryRegistryEntry>(std::move(above)));
    }
    return state_->parentResult;
}

void MemoryIORegistry::objectRelease(io_object_t object) const {
    const std::scoped_lock lock(state_->mutex);
    state_->handles.erase(object);
}

} // namespace qk::platform::memory
