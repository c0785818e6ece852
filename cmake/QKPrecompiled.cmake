# SPDX-License-Identifier: Apache-2.0
# Headers that are read once for a whole build: for the library and the tools, and for the tests. They are headers of
# others and the values, which all else is made of. A build that does without, release, holds the files of the library
# and the tools to their own includes.

set(qk_precompiled_library
  <algorithm> <array> <charconv> <chrono> <functional> <map> <memory> <mutex> <optional> <string> <string_view> <utility>
  <variant> <vector>
  "${PROJECT_SOURCE_DIR}/QKFoundation/platform/values/NSDictionary.h"
  "${PROJECT_SOURCE_DIR}/QKFoundation/platform/values/Value.h")
set(qk_precompiled_tests
  <gmock/gmock.h> <gtest/gtest.h> <filesystem> <thread> ${qk_precompiled_library})

# qk_precompile(<target> library|tests)
# Every target of a kind shares what the first one asked for. Sources with flags of their own that change how a header is
# read have the property SKIP_PRECOMPILE_HEADERS.
function(qk_precompile target kind)
  if(NOT QK_PRECOMPILE)
    return()
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Behind precompiled headers GCC 12 takes the joining of short strings for a copy out of bounds. The library keeps
    # the warning and does without; it gains little.
    if(kind STREQUAL "library")
      return()
    endif()
    target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
  endif()
  set(headers qk_precompiled_${kind})
  if(NOT TARGET ${headers}_headers)
    set(source "${PROJECT_BINARY_DIR}/${headers}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "")
    add_library(${headers}_headers OBJECT EXCLUDE_FROM_ALL "${source}")
    qk_set_language_properties(${headers}_headers)
    target_link_libraries(${headers}_headers PRIVATE qk_build_flags)
    if(kind STREQUAL "library")
      target_compile_options(${headers}_headers PRIVATE ${qk_coverage_flags})
    else()
      target_link_libraries(${headers}_headers PRIVATE GTest::gmock GTest::gtest)
      # As programs are compiled, not as libraries are.
      set_target_properties(${headers}_headers PROPERTIES POSITION_INDEPENDENT_CODE OFF)
      target_compile_options(${headers}_headers PRIVATE -fPIE)
    endif()
    target_precompile_headers(${headers}_headers PRIVATE ${${headers}})
  endif()
  target_precompile_headers(${target} REUSE_FROM ${headers}_headers)
endfunction()
