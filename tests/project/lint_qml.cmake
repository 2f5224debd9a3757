# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# cmake -DSOURCE_DIR=… -DQMLLINT=… -DQT_VERSION_MAJOR=… -DIMPORT_PATH=… -P lint_qml.cmake
#
# Runs qmllint over all QML files of the repository. Qt 5 only looks at the syntax. The values of a
# DataStruct have names that qmllint cannot know, and so files with "$." may use unknown properties.
set(files)
set(dynamicFiles)
foreach(folder examples src tests)
    file(GLOB_RECURSE found "${SOURCE_DIR}/${folder}/*.qml")
    list(APPEND files ${found})
endforeach()
if(NOT files)
    message(FATAL_ERROR "There are no QML files below ${SOURCE_DIR}")
endif()
foreach(file IN LISTS files)
    file(STRINGS "${file}" values REGEX "[$][.]")
    if(values)
        list(APPEND dynamicFiles "${file}")
    endif()
endforeach()
list(REMOVE_ITEM files ${dynamicFiles})
execute_process(COMMAND "${QMLLINT}" -I "${IMPORT_PATH}" ${files}
    RESULT_VARIABLE result ERROR_VARIABLE output)
# qmllint of Qt 6.4 does not know that a list property may be bound to another one.
string(REGEX REPLACE
    "[^\n]*Cannot assign binding of type QQmlListProperty<QObject> to QList<QObject \\*>\n[^\n]*\n[^\n]*\n"
    "" rest "${output}")
message("${rest}")
if(NOT rest MATCHES "Warning|Error" AND NOT output STREQUAL rest)
    set(result 0)
endif()
if(QT_VERSION_MAJOR EQUAL 6)
    set(options --type info)
endif()
execute_process(COMMAND "${QMLLINT}" ${options} -I "${IMPORT_PATH}" ${dynamicFiles}
    RESULT_VARIABLE dynamicResult)
if(result OR dynamicResult)
    message(FATAL_ERROR "qmllint is not content")
endif()
