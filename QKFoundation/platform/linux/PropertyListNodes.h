// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <plist/plist.h>

#include <locale.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

/// What writing needs of libplist: owners of what it hands out, and nodes of all numbers.
namespace qk::platform {

struct PropertyListPolicy {
    using Handle = plist_t;
    static constexpr plist_t none() noexcept { return nullptr; }
    static void close(plist_t node) noexcept { plist_free(node); }
};
/// A node that belongs to no other one, with everything below it.
using UniquePropertyList = UniqueHandle<PropertyListPolicy>;

struct FreeMemory {
    void operator()(void* memory) const noexcept { std::free(memory); }
};
/// Memory that was allocated for the caller.
using UniqueMemory = std::unique_ptr<void, FreeMemory>;

/// libplist reads and writes numbers by the rules of the thread's locale: where a comma stands for the point, 1.5 is 1.
/// While one of these lives they are the plain ones in this thread.
class PlainNumbers {
public:
    PlainNumbers() noexcept;
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;
    ~PlainNumbers() { ::uselocale(previous_); }

private:
    locale_t previous_;
};

/// `plist_from_xml` or `plist_from_bin`.
using Parse = void(const char*, std::uint32_t, plist_t*);

/// The list of `bytes`, which are known to be well-formed; none when there is no memory for it.
[[nodiscard]] UniquePropertyList parsed(std::string_view bytes, Parse* parse);

/// A node of the integer of these bits, of which the highest one is the sign when it `isSigned`.
[[nodiscard]] UniquePropertyList integerNode(std::uint64_t bits, bool isSigned);

} // namespace qk::platform
