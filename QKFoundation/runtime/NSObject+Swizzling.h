// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

/// `NSObject(Swizzling)`: exchanges what two selectors of a class lead to.
///
/// A method that the class inherits is exchanged where it is, for every class that inherits it. Nothing happens when
/// one of the two is missing. It shows in calls by selector; a C++ call of a member function is what it was. Threads:
/// any, also while methods are called: a call that has begun is not affected.
namespace qk::NSObject_Swizzling {

/// `swizzleClassMethod:with:`. Of two class methods.
QK_EXPORT void swizzleClassMethod(const ClassDescription& self, const NSString& selector, const NSString& with);

/// `swizzleInstanceMethod:with:`. Of two instance methods.
QK_EXPORT void swizzleInstanceMethod(const ClassDescription& self, const NSString& selector, const NSString& with);

} // namespace qk::NSObject_Swizzling
