# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# Installs the built TREE below WORK, builds PROJECT with the EXAMPLE against that, and runs both. The
# same project must not be able to use the package with the other Qt.
set(prefix "${WORK}/prefix")
file(REMOVE_RECURSE "${WORK}")
# Only the installed QML module counts.
unset(ENV{QML2_IMPORT_PATH})
unset(ENV{QML_IMPORT_PATH})

# run(COMMAND…): sets `output`; a failure ends the script.
function(run)
    execute_process(COMMAND ${ARGV}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGV " " command)
        message(FATAL_ERROR "${command}: ${result}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# configure(DIRECTORY QT): the command line that prepares PROJECT for this Qt.
macro(configure directory qt)
    set(command ${CMAKE_COMMAND} -G "${GENERATOR}" -S "${PROJECT}" -B "${WORK}/${directory}"
        -D EXAMPLE=${EXAMPLE}
        -D QT_VERSION_MAJOR=${qt}
        -D CMAKE_BUILD_TYPE=Debug
        -D CMAKE_MAKE_PROGRAM=${CMAKE_MAKE_PROGRAM}
        -D CMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
        -D CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}
        -D "CMAKE_PREFIX_PATH=${prefix};${PREFIX_PATH}")
    # A list in a list: the separator inside the prefix path must stay.
    string(REPLACE "${prefix};" "${prefix}\\;" command "${command}")
endmacro()

run(${CMAKE_COMMAND} --install "${TREE}" --prefix "${prefix}")

configure(build ${QT_VERSION_MAJOR})
run(${command})
run(${CMAKE_COMMAND} --build "${WORK}/build")
run("${WORK}/build/consumer")
run("${WORK}/build/own-documents/own-documents")
string(REGEX REPLACE "[ \n]+" " " output "${output}")
foreach(text "A long evening: 2 entries, 33 seconds" "\"references\": [ \"paper-lamp\", \"utrecht\" ]")
    string(FIND "${output}" "${text}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "No ${text} in\n${output}")
    endif()
endforeach()

math(EXPR otherQt "11 - ${QT_VERSION_MAJOR}")
configure(refused ${otherQt})
execute_process(COMMAND ${command} RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)
string(REGEX REPLACE "[ \n]+" " " output "${output}")
set(refusal "VorrelDataCore was built with Qt ${QT_VERSION_MAJOR}, but this project uses Qt ${otherQt}.")
string(FIND "${output}" "${refusal}" place)
if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "Not refused with \"${refusal}\": ${result}\n${output}")
endif()
