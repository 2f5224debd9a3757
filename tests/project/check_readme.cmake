# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# cmake -DSOURCE_DIR=… -P check_readme.cmake
#
# The samples in README.md are the examples, which are built and tested, without their licence
# lines. Anything else is a sample that may be wrong.
file(READ "${SOURCE_DIR}/README.md" readme)
foreach(sample "qml;examples/minimal-qml/main.qml" "cpp;examples/minimal-cpp/main.cpp"
        "cmake;examples/minimal-cpp/CMakeLists.txt")
    list(GET sample 0 language)
    list(GET sample 1 path)
    file(READ "${SOURCE_DIR}/${path}" code)
    string(REGEX REPLACE "^((//|#) SPDX-[^\n]*\n)+" "" code "${code}")
    string(FIND "${readme}" "```${language}\n${code}```\n" position)
    if(position EQUAL -1)
        message(SEND_ERROR "README.md does not show ${path} as it is")
    endif()
endforeach()
