# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# Finds what the libraries need and gives every target of the project the same compiler settings.

# Qt 6 unless the caller asks for 5 with -DQT_VERSION_MAJOR=5.
if(QT_VERSION_MAJOR STREQUAL "5")
    find_package(QT NAMES Qt5 5.15 REQUIRED COMPONENTS Core)
elseif(QT_VERSION_MAJOR STREQUAL "6")
    find_package(QT NAMES Qt6 REQUIRED COMPONENTS Core)
else()
    find_package(QT NAMES Qt6 Qt5 REQUIRED COMPONENTS Core)
endif()
set(VORREL_QT Qt${QT_VERSION_MAJOR})
find_package(${VORREL_QT} REQUIRED COMPONENTS Core Concurrent Network Gui Qml Quick Positioning)
find_package(LZ4 REQUIRED)
find_package(ZLIB REQUIRED)
if(VORREL_BUILD_TESTS)
    find_package(${VORREL_QT} REQUIRED COMPONENTS Test QuickTest)
endif()

set(CMAKE_AUTOMOC ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(VORREL_INCLUDE_BINARY_DIR "${PROJECT_BINARY_DIR}/include")

# What only this build needs: warnings, sanitizers, and Qt without its convenience traps.
add_library(VorrelBuildOptions INTERFACE)
target_compile_options(VorrelBuildOptions INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${VORREL_WARNINGS_AS_ERRORS}>:-Werror>
    $<$<BOOL:${VORREL_SANITIZE}>:-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer>
)
target_link_options(VorrelBuildOptions INTERFACE
    $<$<BOOL:${VORREL_SANITIZE}>:-fsanitize=address,undefined>
)
target_compile_definitions(VorrelBuildOptions INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
    QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00
)

# vorrel_library(VorrelUtil EXPORT_NAME Util FOLDER vorrel/util)
#
# A library of the product: VORREL_UTIL_EXPORT comes from <vorrel/util/utilexport.h>.
function(vorrel_library target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXPORT_NAME;FOLDER" "")
    include(GenerateExportHeader)
    add_library(${target})
    add_library(Vorrel::${arg_EXPORT_NAME} ALIAS ${target})
    string(TOLOWER "${arg_EXPORT_NAME}" lower)
    string(TOUPPER "${arg_EXPORT_NAME}" upper)
    set(exportHeader "${VORREL_INCLUDE_BINARY_DIR}/${arg_FOLDER}/${lower}export.h")
    generate_export_header(${target}
        BASE_NAME VORREL_${upper} EXPORT_FILE_NAME "${exportHeader}")
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${arg_EXPORT_NAME}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"
        VERIFY_INTERFACE_HEADER_SETS ON
    )
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:VorrelBuildOptions>)
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/src")
    target_sources(${target} PUBLIC
        FILE_SET HEADERS
        BASE_DIRS "${PROJECT_SOURCE_DIR}/src" "${VORREL_INCLUDE_BINARY_DIR}"
        FILES "${exportHeader}"
    )
    install(TARGETS ${target} EXPORT VorrelDataCoreTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    )
endfunction()

# vorrel_sources(VorrelDataCore CLASSES document QML context HEADERS ids PRIVATE registry_p.h)
#
# The sources of the folder that calls it. CLASSES are pairs foo.h and foo.cpp whose header is
# public; QML are such pairs that hold a QML type; HEADERS are public headers without a source;
# SOURCES and PRIVATE are taken as they are and not installed.
function(vorrel_sources target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "CLASSES;QML;HEADERS;SOURCES;PRIVATE")
    set(headers)
    set(sources)
    foreach(name IN LISTS arg_CLASSES arg_QML)
        list(APPEND headers "${CMAKE_CURRENT_SOURCE_DIR}/${name}.h")
        list(APPEND sources "${CMAKE_CURRENT_SOURCE_DIR}/${name}.cpp")
    endforeach()
    foreach(name IN LISTS arg_HEADERS)
        list(APPEND headers "${CMAKE_CURRENT_SOURCE_DIR}/${name}.h")
    endforeach()
    foreach(name IN LISTS arg_SOURCES arg_PRIVATE)
        list(APPEND sources "${CMAKE_CURRENT_SOURCE_DIR}/${name}")
    endforeach()
    foreach(name IN LISTS arg_QML)
        set_property(TARGET ${target} APPEND PROPERTY
            VORREL_QML_HEADERS "${CMAKE_CURRENT_SOURCE_DIR}/${name}.h")
    endforeach()
    target_sources(${target} PRIVATE ${sources} PUBLIC FILE_SET HEADERS FILES ${headers})
endfunction()

# vorrel_umbrella_header(VorrelDataCore)
#
# Writes <VorrelDataCore>, which includes every public header of the target and of the libraries
# below it.
function(vorrel_umbrella_header target)
    set(text "// SPDX-FileCopyrightText: The VorrelDataCore authors\n// SPDX-License-Identifier: MIT\n#pragma once\n\n")
    foreach(library VorrelUtil VorrelCore ${target})
        get_target_property(headers ${library} HEADER_SET)
        foreach(header IN LISTS headers)
            cmake_path(IS_PREFIX VORREL_INCLUDE_BINARY_DIR "${header}" generated)
            if(NOT generated)
                cmake_path(RELATIVE_PATH header BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/src")
                string(APPEND text "#include <${header}>\n")
            endif()
        endforeach()
    endforeach()
    file(CONFIGURE OUTPUT "${VORREL_INCLUDE_BINARY_DIR}/${target}" CONTENT "${text}" @ONLY)
    target_sources(${target} PUBLIC FILE_SET HEADERS FILES "${VORREL_INCLUDE_BINARY_DIR}/${target}")
endfunction()
