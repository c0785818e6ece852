# SPDX-License-Identifier: Apache-2.0
# The text codecs, for the target of platform/values: included from its CMakeLists.txt, so paths start there.
list(APPEND QK_UNICODE_SOURCES
    unicode/Kernels.cpp
    unicode/KernelsScalar.cpp
    unicode/Transcode.cpp)
