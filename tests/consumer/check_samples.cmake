# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# cmake -D PAGE=… -D EXAMPLE=… -P check_samples.cmake
#
# Each block of code in PAGE stands in a file of EXAMPLE, which is built and run. Blocks without a
# language are not looked at.
file(GLOB paths "${EXAMPLE}/*")
foreach(path IN LISTS paths)
    file(READ "${path}" text)
    string(APPEND code "${text}")
endforeach()
file(READ "${PAGE}" page)
# Semicolons and brackets would take the list of blocks apart.
foreach(text code page)
    string(REPLACE ";" "<semicolon>" ${text} "${${text}}")
    string(REPLACE "[" "<open>" ${text} "${${text}}")
    string(REPLACE "]" "<close>" ${text} "${${text}}")
endforeach()
string(REGEX MATCHALL "```(cpp|qml|cmake)\n[^`]+```" blocks "${page}")
if(NOT blocks)
    message(FATAL_ERROR "${PAGE} has no samples")
endif()
foreach(block IN LISTS blocks)
    string(REGEX REPLACE "^```[a-z]+\n|```$" "" sample "${block}")
    string(FIND "${code}" "${sample}" position)
    if(position EQUAL -1)
        string(REPLACE "<semicolon>" ";" sample "${sample}")
        message(SEND_ERROR "No file of ${EXAMPLE} holds this sample of ${PAGE}:\n${sample}")
    endif()
endforeach()
