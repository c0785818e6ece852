// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListNodes.h"

#include <string>

namespace qk::platform {
namespace {

// Made once. Without memory for it the present one stays.
locale_t plainLocale() noexcept {
    static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

bool equalsUnsigned(plist_t node, std::uint64_t bits) {
    const UniquePropertyList other(plist_new_uint(bits));
    return plist_compare_node_value(node, other.get()) != 0;
}

UniquePropertyList parsedInteger(const std::string& digits) {
    return parsed("<plist version=\"1.0\"><integer>" + digits + "</integer></plist>", plist_from_xml);
}

// Whether a node that is made of an unsigned integer from 2^63 on is taken for a negative one, which depends on the
// library's version.
bool unsignedBecomesNegative() {
    static const bool becomes = equalsUnsigned(parsedInteger("-1").get(), ~std::uint64_t{0});
    return becomes;
}

} // namespace

PlainNumbers::PlainNumbers() noexcept : previous_(::uselocale(plainLocale())) {}

UniquePropertyList parsed(std::string_view bytes, Parse* parse) {
    plist_t root = nullptr;
    parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    return UniquePropertyList(root);
}

UniquePropertyList integerNode(std::uint64_t bits, bool isSigned) {
    if ((bits >> 63U) == 0 || unsignedBecomesNegative() == isSigned) {
        return UniquePropertyList(plist_new_uint(bits));
    }
    return parsedInteger(isSigned ? std::to_string(static_cast<std::int64_t>(bits)) : std::to_string(bits));
}

} // namespace qk::platform
