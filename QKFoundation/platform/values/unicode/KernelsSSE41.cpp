// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/VectorKernels.h"

namespace qk::unicode {

constinit const Kernels kSSE41Kernels = vectorKernels("sse4.1");

} // namespace qk::unicode
