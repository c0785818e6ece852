// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/Value.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qk::platform {

/// A handle of an entry of the registry; 0 is none. It is released once by whom it was given to.
using io_object_t = std::uint32_t;
using io_registry_entry_t = io_object_t;
inline constexpr io_object_t IO_OBJECT_NULL = 0;

/// The kernel's answer to a call: 0 for success, 5 for a failure without a better name.
using kern_return_t = std::int32_t;
inline constexpr kern_return_t KERN_SUCCESS = 0;
inline constexpr kern_return_t KERN_FAILURE = 5;

inline constexpr char kIOServicePlane[] = "IOService";
inline constexpr char kIONetworkInterfaceClass[] = "IONetworkInterface";

/// A matching dictionary: which entries are looked for.
struct IOMatching {
    enum class Kind : std::uint8_t {
        BSDName,     ///< any entry whose property "BSD Name" is `text`
        ServiceClass ///< the entries of the class `text` and of those that inherit from it
    };
    Kind kind;
    NSString text;
};

/// `io_iterator_t`. Gives the entries that matched, one after another. Threads: one at a time.
class QK_EXPORT IOIterator {
public:
    IOIterator() = default;
    IOIterator(const IOIterator&) = delete;
    IOIterator& operator=(const IOIterator&) = delete;
    virtual ~IOIterator();

    /// `IOIteratorNext`. The next entry, which the caller releases; `IO_OBJECT_NULL` after the last.
    [[nodiscard]] virtual io_object_t next() = 0;
};

/// The registry of the machine's devices. Threads: any, at the same time.
class QK_EXPORT IORegistry {
public:
    IORegistry() = default;
    IORegistry(const IORegistry&) = delete;
    IORegistry& operator=(const IORegistry&) = delete;
    virtual ~IORegistry();

    /// `IOBSDNameMatching` on the default port. Nothing when the dictionary cannot be made.
    [[nodiscard]] virtual std::optional<IOMatching> bsdNameMatching(const NSString& name) const = 0;

    /// `IOServiceMatching`. Nothing when the dictionary cannot be made.
    [[nodiscard]] virtual std::optional<IOMatching> serviceMatching(const NSString& className) const = 0;

    /// `IOServiceGetMatchingServices` on the default port. Sets `iterator` to the entries that match, in the registry's
    /// order, or leaves it as it is when there is nothing to go through.
    [[nodiscard]] virtual kern_return_t getMatchingServices(const IOMatching& matching,
                                                            std::unique_ptr<IOIterator>& iterator) const = 0;

    /// `IORegistryEntryCreateCFProperty`. The property of an entry; nothing when it has none of that key, or is gone.
    [[nodiscard]] virtual std::optional<Value> entryProperty(io_registry_entry_t entry, const NSString& key) const = 0;

    /// `IORegistryEntryGetParentEntry`. Sets `parent` to the entry above `entry` in `plane`, which the caller releases.
    /// Another result than `KERN_SUCCESS` when there is none.
    [[nodiscard]] virtual kern_return_t entryParent(io_registry_entry_t entry, const NSString& plane,
                                                    io_registry_entry_t& parent) const = 0;

    /// `IOObjectRelease`. Gives a handle back; 0 is nothing to give back.
    virtual void objectRelease(io_object_t object) const = 0;
};

} // namespace qk::platform
