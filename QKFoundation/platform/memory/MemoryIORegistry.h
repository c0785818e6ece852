// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/IORegistry.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace qk::platform::memory {

/// An entry of the registry.
struct MemoryRegistryEntry {
    std::vector<NSString> classes{kIONetworkInterfaceClass}; ///< its class and those that it inherits from
    NSDictionary properties;
    std::optional<NSDictionary> parent; ///< the properties of the entry above; nothing when there is none
};

/// A registry with the entries that it was told of, empty at first. Threads: any, at the same time.
class QK_EXPORT MemoryIORegistry final : public IORegistry {
public:
    MemoryIORegistry();
    ~MemoryIORegistry() override;

    /// The registry has `entry` behind the others; several may bear one BSD name.
    void addEntry(const MemoryRegistryEntry& entry);

    /// Whether there is an entry with that "BSD Name".
    [[nodiscard]] bool hasEntry(const NSString& bsdName) const;

    /// No matching dictionary can be made from now on.
    void refuseMatching(bool refuse);

    /// Searches answer `result` from now on, with an iterator or without.
    void setMatchingResult(kern_return_t result, bool givesIterator);

    /// Questions for a parent answer `result` from now on, with the parent or without.
    void setParentResult(kern_return_t result, bool givesParent);

    /// How many handles were given out and not yet back.
    [[nodiscard]] std::size_t openHandles() const;

    [[nodiscard]] std::optional<IOMatching> bsdNameMatching(const NSString& name) const override;
    [[nodiscard]] std::optional<IOMatching> serviceMatching(const NSString& className) const override;
    [[nodiscard]] kern_return_t getMatchingServices(const IOMatching& matching,
                                                    std::unique_ptr<IOIterator>& iterator) const override;
    [[nodiscard]] std::optional<Value> entryProperty(io_registry_entry_t entry, const NSString& key) const override;
    [[nodiscard]] kern_return_t entryParent(io_registry_entry_t entry, const NSString& plane,
                                            io_registry_entry_t& parent) const override;
    void objectRelease(io_object_t object) const override;

private:
    struct State;
    class Iterator;

    std::shared_ptr<State> state_; // iterators may outlive this object
};

} // namespace qk::platform::memory
