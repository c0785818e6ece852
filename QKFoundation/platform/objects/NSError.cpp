// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSError.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include <utility>

namespace qk {

NSError::NSError(NSString domain, std::int64_t code, NSDictionary userInfo)
    : domain_(std::move(domain)), code_(code), userInfo_(std::move(userInfo)) {}

const ClassDescription& NSError::describedClass() {
    static const ClassDescription& description = ClassBuilder<NSError>("NSError", NSObject::describedClass())
                                                     .property("domain", &NSError::domain)
                                                     .property("code", &NSError::code)
                                                     .property("userInfo", &NSError::userInfo)
                                                     .property("localizedDescription", &NSError::localizedDescription)
                                                     .build();
    return description;
}

const ClassDescription& NSError::classDescription() const {
    return describedClass();
}

std::shared_ptr<NSError> NSError::errorWithDomain(const NSString& domain, std::int64_t code,
                                                  const NSDictionary& userInfo) {
    return std::shared_ptr<NSError>(new NSError(domain, code, userInfo));
}

NSString NSError::localizedDescription() const {
    if (const auto* text = userInfo_.get<NSString>(NSLocalizedDescriptionKey)) {
        return *text;
    }
    return "Error " + NSString::fromInteger(code_) + " of " + domain_;
}

bool NSError::isEqual(const Value& other) const {
    const auto error = other.asObject<NSError>();
    return error != nullptr && error->domain_ == domain_ && error->code_ == code_ && error->userInfo_ == userInfo_;
}

std::size_t NSError::hash() const {
    return domain_.hash() ^ NSNumber(code_).hash();
}

} // namespace qk
