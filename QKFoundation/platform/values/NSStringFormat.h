// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/Value.h"

#include <optional>
#include <span>

namespace qk {

/// `initWithFormat:arguments:`. `format` with "%@" replaced by the text of the next argument and "%n$@" by that of the
/// n-th, counted from 1 (any number of times); "%%" is a percent sign. The text of an argument is that of
/// `Value::description`, "(null)" for nothing; it is inserted as it is and not expanded again.
///
/// Whatever else follows a percent sign ("%d", "%3%", the end of the text), and a directive without an argument, is
/// kept as it stands; "%3%" as a whole, so that its second percent sign begins no directive. Arguments that no
/// directive asks for are left out. "%@" takes the arguments in order, whatever "%n$@" took. Time goes with the length
/// of the format and of the result. Any thread.
[[nodiscard]] QK_EXPORT NSString stringWithFormat(const NSString& format,
                                                  std::span<const std::optional<Value>> arguments);

} // namespace qk
