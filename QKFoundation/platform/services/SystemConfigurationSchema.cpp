// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/SystemConfigurationSchema.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

NSString makeKey(const NSString& domain, std::u16string_view kind, const NSString& name,
                 const std::optional<NSString>& entity) {
    const std::u16string_view tail = entity.has_value() ? entity->units() : std::u16string_view();
    const std::array<std::u16string_view, 5> pieces{domain.units(), kind, name.units(),
                                                    entity.has_value() ? u"/" : std::u16string_view(), tail};
    std::size_t length = 0;
    for (const std::u16string_view piece : pieces) {
        length += piece.size();
    }
    std::array<char16_t, 128> place; // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    std::u16string more;             // for a key that is longer than any that there is
    char16_t* const first = length <= place.size() ? place.data() : (more.resize(length), more.data());
    char16_t* end = first;
    for (const std::u16string_view piece : pieces) {
        end = std::copy(piece.begin(), piece.end(), end);
    }
    return NSString(std::u16string_view(first, length));
}

} // namespace

NSString SCDynamicStoreKeyCreateNetworkServiceEntity(const NSString& domain, const NSString& serviceID,
                                                     const std::optional<NSString>& entity) {
    return makeKey(domain, u"/Network/Service/", serviceID, entity);
}

NSString SCDynamicStoreKeyCreateNetworkInterfaceEntity(const NSString& domain, const NSString& interfaceName,
                                                       const std::optional<NSString>& entity) {
    return makeKey(domain, u"/Network/Interface/", interfaceName, entity);
}

NSString SCDynamicStoreKeyCreateNetworkGlobalEntity(const NSString& domain, const NSString& entity) {
    return makeKey(domain, u"/Network/Global/", entity, std::nullopt);
}

} // namespace qk::platform
