// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/VectorKernels.h"

namespace qk::unicode {

constinit const Kernels kAVX2Kernels = vectorKernels("avx2");

} // namespace qk::unicode
