// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/ShortConstants.h"

namespace qk::unicode {

constinit const ShortConstants kShortConstants{};

} // namespace qk::unicode
