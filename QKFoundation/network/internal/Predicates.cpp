// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/Predicates.h"

#include "QKFoundation/platform/values/NSString.h"

#include <memory>

namespace qk {
namespace {

// Never destroyed: other threads may still ask while the process ends.
const std::shared_ptr<const NSPredicate>& keptPredicate(const NSString& format) {
    return *new std::shared_ptr<const NSPredicate>(NSPredicate::predicateWithFormat(format));
}

} // namespace

const NSPredicate& internal::enabledPredicate() {
    static const auto& predicate = keptPredicate("enabled = YES");
    return *predicate;
}

const NSPredicate& internal::activePredicate() {
    static const auto& predicate = keptPredicate("linkActive = YES");
    return *predicate;
}

const NSPredicate& internal::activeBuiltinPredicate() {
    static const auto& predicate = keptPredicate("linkActive = YES AND builtin = YES");
    return *predicate;
}

} // namespace qk
