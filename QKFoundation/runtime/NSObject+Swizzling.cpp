// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/NSObject+Swizzling.h"

namespace qk::NSObject_Swizzling {

void swizzleClassMethod(const ClassDescription& self, const NSString& selector, const NSString& with) {
    self.exchangeClassMethods(selector, with);
}

void swizzleInstanceMethod(const ClassDescription& self, const NSString& selector, const NSString& with) {
    self.exchangeMethods(selector, with);
}

} // namespace qk::NSObject_Swizzling
