# SPDX-License-Identifier: Apache-2.0
# The kinds of targets of this project. Every folder of the library is one floor: an OBJECT library that is compiled
# once and goes into the shared library and into the static library that the tests use.

include(QKPrecompiled)

# How every file of ours is compiled. Never installed, and nothing that uses the library sees it.
add_library(qk_build_flags INTERFACE)
target_compile_features(qk_build_flags INTERFACE cxx_std_20)
target_include_directories(qk_build_flags INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(qk_build_flags INTERFACE
  -Wall -Wextra -Wconversion -Wshadow $<$<BOOL:${QK_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # That compiler takes the standard library's own joining of strings for a copy onto itself, and at -O3 what a variant
  # does not hold for something that is used.
  target_compile_options(qk_build_flags INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict;-Wno-maybe-uninitialized>")
endif()
if(QK_PRECOMPILE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # So that ccache sees the precompiled headers alike when they are.
  target_compile_options(qk_build_flags INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:SHELL:-Xclang -fno-pch-timestamp>")
elseif(QK_PRECOMPILE)
  target_compile_options(qk_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
endif()
if(QK_SANITIZE STREQUAL "address")
  # The check of every call's object reads memory through a pipe: without descriptors it takes all objects for broken.
  set(qk_sanitize_flags
    -fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer)
elseif(QK_SANITIZE STREQUAL "thread")
  set(qk_sanitize_flags -fsanitize=thread -fno-omit-frame-pointer)
else()
  set(qk_sanitize_flags)
endif()
if(QK_BUILD_FUZZERS)
  set(qk_coverage_flags -fsanitize=fuzzer-no-link)
else()
  set(qk_coverage_flags)
endif()
target_compile_options(qk_build_flags INTERFACE ${qk_sanitize_flags})
target_link_options(qk_build_flags INTERFACE ${qk_sanitize_flags})

function(qk_set_language_properties target)
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF
    C_STANDARD 11 C_STANDARD_REQUIRED ON C_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden C_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# qk_add_folders(<folder>...): add_subdirectory for each.
macro(qk_add_folders)
  foreach(qk_folder ${ARGN})
    add_subdirectory(${qk_folder})
  endforeach()
endmacro()

# qk_floor(<target> SOURCES <file>... [DEPENDS <floor>...] [PRIVATE_LIBRARIES <library>...])
# DEPENDS names the floors whose headers this one includes. PRIVATE_LIBRARIES are linked into the shared library and do
# not show outside.
function(qk_floor target)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS;PRIVATE_LIBRARIES" ${ARGN})
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "qk_floor(${target}): not understood: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  add_library(${target} OBJECT ${arg_SOURCES})
  qk_set_language_properties(${target})
  target_link_libraries(${target} PRIVATE qk_build_flags ${arg_PRIVATE_LIBRARIES})
  target_compile_options(${target} PRIVATE ${qk_coverage_flags})
  qk_precompile(${target} library)
  set_property(TARGET ${target} PROPERTY QK_DEPENDS "${arg_DEPENDS}")
  set_property(GLOBAL APPEND PROPERTY QK_FLOORS ${target})
  set_property(GLOBAL APPEND PROPERTY QK_FLOOR_LIBRARIES ${arg_PRIVATE_LIBRARIES})
endfunction()

# qk_public_headers(<variable>): the umbrella header, what it includes, and the bridges to host loops, which it cannot
# include because each needs its loop. cmake/check-floors holds that list complete.
function(qk_public_headers variable)
  set(umbrella "${PROJECT_SOURCE_DIR}/QKFoundation/QKFoundation.h")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${umbrella}")
  file(STRINGS "${umbrella}" headers REGEX "^#include \"QKFoundation/")
  list(TRANSFORM headers REPLACE "^#include \"([^\"]+)\".*" "${PROJECT_SOURCE_DIR}/\\1")
  file(GLOB bridges CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/QKFoundation/platform/linux/*Bridge.h")
  set(${variable} "${umbrella}" ${headers} ${bridges} PARENT_SCOPE)
endfunction()

# The shared library QKFoundation and, from the same objects, the static library qk_testable, which also shows what the
# shared one hides.
function(qk_add_library)
  get_property(floors GLOBAL PROPERTY QK_FLOORS)
  get_property(libraries GLOBAL PROPERTY QK_FLOOR_LIBRARIES)
  list(REMOVE_DUPLICATES libraries)
  set(objects)
  foreach(floor IN LISTS floors)
    list(APPEND objects $<TARGET_OBJECTS:${floor}>)
    get_property(depends TARGET ${floor} PROPERTY QK_DEPENDS)
    foreach(dependency IN LISTS depends)
      if(NOT dependency IN_LIST floors)
        message(FATAL_ERROR "${floor} depends on ${dependency}, which is not a floor of this build")
      endif()
    endforeach()
  endforeach()

  add_library(QKFoundation SHARED ${objects})
  add_library(QKFoundation::QKFoundation ALIAS QKFoundation)
  set_target_properties(QKFoundation PROPERTIES
    LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  target_compile_features(QKFoundation INTERFACE cxx_std_20)
  qk_public_headers(headers)
  target_sources(QKFoundation PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${headers})
  target_link_libraries(QKFoundation PRIVATE $<BUILD_INTERFACE:qk_build_flags> ${libraries} Threads::Threads)
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT QK_SANITIZE AND NOT QK_BUILD_FUZZERS)
    set(map "${PROJECT_SOURCE_DIR}/cmake/exports.map")
    # Never unloaded: threads of the background queue may be in it when a host closes its handle.
    target_link_options(QKFoundation PRIVATE
      LINKER:--no-undefined LINKER:-z,relro LINKER:-z,now LINKER:-z,nodelete "LINKER:--version-script=${map}")
    set_property(TARGET QKFoundation APPEND PROPERTY LINK_DEPENDS "${map}")
  endif()

  add_library(qk_testable STATIC EXCLUDE_FROM_ALL ${objects})
  set_target_properties(qk_testable PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(qk_testable PUBLIC qk_build_flags ${libraries} Threads::Threads)
endfunction()

# qk_executable(<name> SOURCES <file>... [LIBRARIES <library>...])
# A program that is compiled with this project's flags.
function(qk_executable name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  qk_set_language_properties(${name})
  target_link_libraries(${name} PRIVATE qk_build_flags ${arg_LIBRARIES})
endfunction()

# qk_install_program(<target> [HELPER])
# Installs a program, a helper that only the library starts under libexec. It finds the library beside itself, wherever
# the tree is moved to.
function(qk_install_program target)
  cmake_parse_arguments(arg "HELPER" "" "" ${ARGN})
  set(folder "${CMAKE_INSTALL_BINDIR}")
  if(arg_HELPER)
    set(folder "${CMAKE_INSTALL_LIBEXECDIR}/qkfoundation")
  endif()
  file(RELATIVE_PATH to_library "/${folder}" "/${CMAKE_INSTALL_LIBDIR}")
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
  if(QK_INSTALL)
    install(TARGETS ${target} RUNTIME DESTINATION "${folder}" COMPONENT Runtime)
  endif()
endfunction()

# qk_test(<name> SOURCES <file>... [LIBRARIES <library>...] [LABELS <label>...] [ALONE])
# A GoogleTest program. The label "threads" puts it into the run under ThreadSanitizer (target thread_tests), the label
# "everywhere" into the builds without unit tests too: adapters, and what no sanitizer lets be. ALONE: no other test meanwhile.
function(qk_test name)
  cmake_parse_arguments(arg "ALONE" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  qk_executable(${name} SOURCES ${arg_SOURCES} LIBRARIES qk_testable ${arg_LIBRARIES} GTest::gtest_main GTest::gmock)
  if(TARGET rapidcheck_gtest)
    target_link_libraries(${name} PRIVATE rapidcheck_gtest rapidcheck_gmock)
  endif()
  target_compile_definitions(${name} PRIVATE QK_FIXTURES_DIR="${PROJECT_SOURCE_DIR}/tests/fixtures")
  if(QK_SANITIZE)
    string(TOUPPER "${QK_SANITIZE}" sanitizer)
    target_compile_definitions(${name} PRIVATE QK_SANITIZE_${sanitizer})
  endif()
  qk_precompile(${name} tests)
  set(properties TIMEOUT 300 RUN_SERIAL ${arg_ALONE})
  if(arg_LABELS)
    list(APPEND properties LABELS "${arg_LABELS}")
  endif()
  if("threads" IN_LIST arg_LABELS)
    if(NOT TARGET thread_tests)
      add_custom_target(thread_tests)
    endif()
    add_dependencies(thread_tests ${name})
  endif()
  if(QK_BUILD_UNIT_TESTS OR "everywhere" IN_LIST arg_LABELS)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES PROPERTIES ${properties})
  else()
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()
endfunction()

# qk_fuzz(<name> SOURCES <file>... [LIBRARIES <library>...])
# A libFuzzer program with the seeds of tests/fuzz/corpus/<name>. Its test runs a few seconds on a copy of the seeds.
function(qk_fuzz name)
  if(NOT QK_BUILD_FUZZERS)
    return()
  endif()
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  set(target fuzz_${name})
  qk_executable(${target} SOURCES ${arg_SOURCES} LIBRARIES qk_testable ${arg_LIBRARIES})
  target_compile_options(${target} PRIVATE ${qk_coverage_flags})
  target_link_options(${target} PRIVATE -fsanitize=fuzzer)
  add_test(NAME fuzz.${name}
    COMMAND "${PROJECT_SOURCE_DIR}/cmake/run-fuzzer" $<TARGET_FILE:${target}>
      "${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${name}" "${PROJECT_BINARY_DIR}/fuzz/${name}")
  set_tests_properties(fuzz.${name} PROPERTIES LABELS fuzz)
endfunction()

# qk_benchmark(<name> SOURCES <file>... [LIBRARIES <library>...])
# A Google Benchmark program over the static library.
function(qk_benchmark name)
  if(NOT QK_BUILD_BENCHMARKS)
    return()
  endif()
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  qk_executable(${name} SOURCES ${arg_SOURCES} LIBRARIES qk_testable ${arg_LIBRARIES} benchmark::benchmark)
endfunction()
