// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <memory>
#include <vector>

/// What arrays and dictionaries share. Both nest without limit (a file from outside may hold a hundred thousand
/// levels), so nothing that walks them may call itself once a level.
namespace qk::internal {

/// `values` behind a pointer that takes nested collections apart without a call per level; null when there are none.
[[nodiscard]] std::shared_ptr<const std::vector<Value>> shareValues(std::vector<Value> values);

/// As `shareValues`, for the entries of a dictionary.
[[nodiscard]] std::shared_ptr<const std::vector<NSDictionary::Entry>>
shareEntries(std::vector<NSDictionary::Entry> entries);

/// Whether the two are equal, collections included at any depth.
[[nodiscard]] bool areEqual(const Value& left, const Value& right);

} // namespace qk::internal
