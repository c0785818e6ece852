# SPDX-License-Identifier: Apache-2.0
# The text codecs, for the target of platform/values: included from its CMakeLists.txt, so paths start there.
list(APPEND QK_UNICODE_SOURCES
  unicode/Composer.cpp
  unicode/Kernels.cpp
  unicode/KernelsScalar.cpp
  unicode/Normalization.cpp
  unicode/NormalizationData.cpp
  unicode/Transcode.cpp)

# Tests go through every character that there is; with the sanitizers and no optimisation they would take minutes.
set(qk_unicode_optimisation)
if(QK_SANITIZE)
  set(qk_unicode_optimisation -O1)
endif()
set_source_files_properties(${QK_UNICODE_SOURCES} PROPERTIES COMPILE_OPTIONS "${qk_unicode_optimisation}")

# One file per level of the processor, each compiled for it and called only where Kernels.cpp finds it.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|amd64)$")
  list(APPEND QK_UNICODE_SOURCES unicode/KernelsAVX2.cpp unicode/KernelsAVX512.cpp unicode/KernelsSSE41.cpp
    unicode/ShortConstants.cpp)
  set_source_files_properties(unicode/KernelsSSE41.cpp PROPERTIES
    COMPILE_OPTIONS "${qk_unicode_optimisation};-msse4.1;-mpopcnt")
  set(qk_avx2_flags -mavx2 -mbmi -mbmi2 -mpopcnt)
  # GCC makes constants anew in every round of a loop, out of general registers; loading them takes half the time.
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-mtune-ctrl=^inter_unit_moves_to_vec QK_HAS_TUNE_CTRL)
  if(QK_HAS_TUNE_CTRL)
    list(APPEND qk_avx2_flags -mtune-ctrl=^inter_unit_moves_to_vec)
  endif()
  set_source_files_properties(unicode/KernelsAVX2.cpp PROPERTIES
    COMPILE_OPTIONS "${qk_unicode_optimisation};${qk_avx2_flags}")
  set(qk_avx512_flags
    -mavx512f -mavx512bw -mavx512dq -mavx512vl -mavx512vbmi -mavx512vbmi2 -mbmi -mbmi2 -mpopcnt -mlzcnt)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes the undefined register inside its own intrinsics for a variable of ours (its bug 105593).
    list(APPEND qk_avx512_flags -Wno-maybe-uninitialized)
  endif()
  set_source_files_properties(unicode/KernelsAVX512.cpp PROPERTIES
    COMPILE_OPTIONS "${qk_unicode_optimisation};${qk_avx512_flags}")
endif()
# Their options are not those of the precompiled headers.
set_source_files_properties(${QK_UNICODE_SOURCES} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
