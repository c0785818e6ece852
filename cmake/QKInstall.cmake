# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` puts where. Component Runtime is what a machine needs that runs programs over the library;
# Development adds what their developers need. Nothing that is installed knows where it was built or installed.
if(NOT QK_INSTALL)
  return()
endif()
include(CMakePackageConfigHelpers)

set(qk_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/QKFoundation")

install(TARGETS QKFoundation EXPORT QKFoundationTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime NAMELINK_COMPONENT Development
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT Development)
install(FILES QKFoundation/resources/Info.plist
  DESTINATION "${CMAKE_INSTALL_DATADIR}/qkfoundation" COMPONENT Runtime)
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Runtime)

install(EXPORT QKFoundationTargets NAMESPACE QKFoundation::
  DESTINATION "${qk_package_dir}" COMPONENT Development)
configure_package_config_file(cmake/QKFoundationConfig.cmake.in QKFoundationConfig.cmake
  INSTALL_DESTINATION "${qk_package_dir}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(QKFoundationConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/QKFoundationConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/QKFoundationConfigVersion.cmake"
  DESTINATION "${qk_package_dir}" COMPONENT Development)

# From lib/pkgconfig, or lib/<triplet>/pkgconfig, up to the prefix.
file(RELATIVE_PATH qk_pc_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" qk_pc_to_prefix "${qk_pc_to_prefix}")
configure_file(cmake/qkfoundation.pc.in qkfoundation.pc @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/qkfoundation.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT Development)
