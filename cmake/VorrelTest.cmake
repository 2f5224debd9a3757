# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT

# vorrel_add_test(tst_tag [LABELS server tool] [SOURCES extra.cpp])
#
# One test program from <name>.cpp in the calling folder.
function(vorrel_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LABELS;SOURCES;LIBRARIES")
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE
        VorrelBuildOptions VorrelTestSupport ${arg_LIBRARIES} ${VORREL_QT}::Test)
    target_precompile_headers(${name} REUSE_FROM VorrelTestSupport)
    vorrel_register_test(${name} LABELS ${arg_LABELS} COMMAND ${name})
endfunction()

# vorrel_register_test(name [LABELS …] COMMAND …)
#
# A test with the settings that all share: no display, one locale, a time limit.
function(vorrel_register_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LABELS;COMMAND")
    add_test(NAME ${name} COMMAND ${arg_COMMAND})
    set(environment
        "QT_QPA_PLATFORM=offscreen"
        "QT_QUICK_BACKEND=software"
        "LC_ALL=C.UTF-8"
        "XDG_CACHE_HOME=${PROJECT_BINARY_DIR}/cache"
        "VORREL_SOURCE_DIR=${PROJECT_SOURCE_DIR}"
        "QML2_IMPORT_PATH=${PROJECT_BINARY_DIR}/qml"
        "UBSAN_OPTIONS=print_stacktrace=1"
    )
    if(QT_VERSION_MAJOR EQUAL 5)
        list(APPEND environment "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/lsan.supp")
    endif()
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 120
        LABELS "${arg_LABELS}"
        ENVIRONMENT "${environment}"
    )
endfunction()
