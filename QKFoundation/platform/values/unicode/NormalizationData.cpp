// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/NormalizationData.h"

namespace qk::unicode::tables {

#include "QKFoundation/platform/values/unicode/NormalizationTables.inc"

} // namespace qk::unicode::tables
