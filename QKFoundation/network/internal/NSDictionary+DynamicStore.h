// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSDictionary.h"

/// `NSDictionary(DynamicStore)`: values of one type out of a dictionary of the dynamic store. What is missing or of
/// another type has a fixed answer. Threads: any.
namespace qk::NSDictionary_DynamicStore {

/// `boolValueForDynamicStoreKey:`. Whether the number is not 0, whatever its kind; false when it is no number, also for
/// texts such as "1".
[[nodiscard]] bool boolValueForDynamicStoreKey(const NSDictionary& self, const NSString& key);

/// `stringValueForDynamicStoreKey:`. The text; "" when it is none.
[[nodiscard]] NSString stringValueForDynamicStoreKey(const NSDictionary& self, const NSString& key);

/// `stringArrayValueForDynamicStoreKey:`. The array, whatever its elements are; an empty one when it is none.
[[nodiscard]] NSArray stringArrayValueForDynamicStoreKey(const NSDictionary& self, const NSString& key);

} // namespace qk::NSDictionary_DynamicStore
