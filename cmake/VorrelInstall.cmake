# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# The installed CMake package: find_package(VorrelDataCore) gives Vorrel::Util, Vorrel::Core and
# Vorrel::DataCore for the Qt that they were built with.
include(CMakePackageConfigHelpers)

set(packageDirectory "${CMAKE_INSTALL_LIBDIR}/cmake/VorrelDataCore")
configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/VorrelDataCoreConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/VorrelDataCoreConfig.cmake"
    INSTALL_DESTINATION "${packageDirectory}"
    PATH_VARS VORREL_INSTALL_QMLDIR
    NO_CHECK_REQUIRED_COMPONENTS_MACRO
)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/VorrelDataCoreConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion
)
install(FILES
    "${PROJECT_BINARY_DIR}/VorrelDataCoreConfig.cmake"
    "${PROJECT_BINARY_DIR}/VorrelDataCoreConfigVersion.cmake"
    "${PROJECT_SOURCE_DIR}/cmake/FindLZ4.cmake"
    DESTINATION "${packageDirectory}"
)
install(EXPORT VorrelDataCoreTargets NAMESPACE Vorrel:: DESTINATION "${packageDirectory}")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSES/MIT.txt"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright)
