// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/SystemConfigurationSchema.h"

#include <string_view>

namespace qk::platform {
namespace {

NSString makeKey(const NSString& domain, std::u16string_view kind, const NSString& name,
                 const std::optional<NSString>& entity) {
    const std::u16string_view slash = entity.has_value() ? u"/" : std::u16string_view();
    const std::u16string_view tail = entity.has_value() ? entity->units() : std::u16string_view();
    return NSString::concatenated({domain.units(), kind, name.units(), slash, tail});
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
