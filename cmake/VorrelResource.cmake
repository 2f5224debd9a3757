# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT

# vorrel_resource(VorrelDataCore NAME vorrel_texts PREFIX /vorrel/texts [BASE folder] FILES …)
#
# Embeds files into a library, the same way for both Qt versions: ":/vorrel/texts/vorrel_en.qm". With
# BASE they keep their paths below that folder.
function(vorrel_resource target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "NAME;PREFIX;BASE" "FILES")
    set(work "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources")
    set(entries)
    foreach(file IN LISTS arg_FILES)
        cmake_path(GET file FILENAME alias)
        if(arg_BASE)
            cmake_path(RELATIVE_PATH file BASE_DIRECTORY "${arg_BASE}" OUTPUT_VARIABLE alias)
        endif()
        string(APPEND entries "<file alias=\"${alias}\">${file}</file>\n")
    endforeach()
    file(CONFIGURE OUTPUT "${work}/${arg_NAME}.qrc" @ONLY CONTENT
        "<RCC><qresource prefix=\"${arg_PREFIX}\">\n${entries}</qresource></RCC>\n")
    set(embedded "${work}/qrc_${arg_NAME}.cpp")
    add_custom_command(OUTPUT "${embedded}"
        COMMAND ${VORREL_QT}::rcc --name ${arg_NAME} -o "${embedded}" "${work}/${arg_NAME}.qrc"
        DEPENDS "${work}/${arg_NAME}.qrc" ${arg_FILES} VERBATIM)
    target_sources(${target} PRIVATE "${embedded}")
    set_source_files_properties("${embedded}" PROPERTIES
        SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
endfunction()
