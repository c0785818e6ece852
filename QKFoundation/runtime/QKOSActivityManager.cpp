// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKOSActivityManager.h"

#include "QKFoundation/runtime/internal/Activities.h"
#include "QKFoundation/system_info/internal/OSVersion.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace qk {
namespace {

// By action number, from 1. The numbering is what programs were compiled against: new actions go to the end.
constexpr auto kBreadcrumbs = std::to_array<std::u16string_view>({
    u"Common: Exit Pelagor",
    u"Common: Show main window",
    u"Common: Show preferences",
    u"Partnerlist: Action chat",
    u"Partnerlist: Action file transfer",
    u"Partnerlist: Action send file",
    u"Partnerlist: Action wake on lan",
    u"Partnerlist: Action remote control quick access",
    u"Partnerlist: Action remote support",
    u"Partnerlist: Action remote control",
    u"Partnerlist: Action remote control windows authentication",
    u"Partnerlist: Action presentation",
    u"Partnerlist: Action video call",
    u"Partnerlist: Action select machine",
    u"Partnerlist: Action service case compose mail",
    u"Partnerlist: Action service case close",
    u"Partnerlist: Action service case invite",
    u"Partnerlist: Action service case take over",
    u"MRU: Connection string file transfer connection",
    u"MRU: Connection string remote control connection",
    u"Meeting: Abort join meeting",
    u"Meeting: Join meeting",
    u"Meeting: Show conference call controller",
    u"Meeting: Start spontaneous meeting",
    u"Partnerlist: Action audio call",
    u"Meeting: Start video chat",
    u"Meeting: Change organizer",
    u"Meeting: Change presenter",
    u"RC: Abort outgoing connection",
    u"RC: Connect file transfer",
    u"RC: Connect remote control",
    u"Session: Request connection for partnerlist item",
    u"Session: Session attended started",
    u"Session: Session hosted started",
    u"Session: Session incoming file transfer started",
    u"Session: Session incoming remote control started",
    u"Session: Session incoming started",
    u"Session: Session outgoing file transfer started",
    u"Session: Session outgoing remote control started",
    u"Session: Session outgoing started",
    u"Session: Session end",
    u"Session: Conference mode none",
    u"Session: Conference mode phone",
    u"Session: Conference mode VoIP",
    u"Desktop: Started from terminal server",
    u"Toolbar: Request direction change",
});

} // namespace

bool internal::hasActivityTracing(const platform::Services& services) {
    return versionIsGreaterThan(OSXVersion(services), 10, 9);
}

void internal::breadcrumbForAction(const platform::Services& services, std::int64_t action) {
    if (!hasActivityTracing(services) || action < 1 || action > std::ssize(kBreadcrumbs)) {
        return;
    }
    services.activityTracing->setBreadcrumb(NSString(kBreadcrumbs[static_cast<std::size_t>(action - 1)]));
}

bool QKOSActivityManager::hasActivityTracing() {
    return internal::hasActivityTracing(*platform::services());
}

void QKOSActivityManager::breadcrumbForAction(std::int64_t action) {
    internal::breadcrumbForAction(*platform::services(), action);
}

std::vector<NSString> QKOSActivityManager::breadcrumbs() {
    return platform::services()->activityTracing->breadcrumbs();
}

} // namespace qk
