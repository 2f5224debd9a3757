# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# Translated texts, the same way for both Qt versions: lrelease compiles the files of
# translations/, rcc puts them into a library.
get_target_property(vorrelQmake ${VORREL_QT}::qmake IMPORTED_LOCATION)
execute_process(COMMAND "${vorrelQmake}" -query QT_INSTALL_BINS
    OUTPUT_VARIABLE VORREL_QT_BINARIES OUTPUT_STRIP_TRAILING_WHITESPACE)
find_program(VORREL_LRELEASE lrelease HINTS "${VORREL_QT_BINARIES}" NO_DEFAULT_PATH REQUIRED)

# vorrel_texts(VorrelDataCore PREFIX vorrel LANGUAGES en de GENERATED "${folder}/regions")
#
# Adds translations/vorrel_en.ts and so on to the target, as the resource vorrel_texts:
# ":/vorrel/texts/vorrel_en.qm". Generated texts, regions_en.ts and so on, go into the same files.
function(vorrel_texts target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "PREFIX;GENERATED" "LANGUAGES")
    set(work "${CMAKE_CURRENT_BINARY_DIR}/${target}_texts")
    file(MAKE_DIRECTORY "${work}")
    set(compiled)
    set(entries)
    foreach(language IN LISTS arg_LANGUAGES)
        set(name "${arg_PREFIX}_${language}")
        set(sources "${PROJECT_SOURCE_DIR}/translations/${name}.ts")
        if(arg_GENERATED)
            list(APPEND sources "${arg_GENERATED}_${language}.ts")
        endif()
        add_custom_command(OUTPUT "${work}/${name}.qm"
            COMMAND ${VORREL_LRELEASE} -silent -idbased ${sources} -qm "${work}/${name}.qm"
            DEPENDS ${sources} VERBATIM)
        list(APPEND compiled "${work}/${name}.qm")
        string(APPEND entries "<file>${name}.qm</file>\n")
    endforeach()

    set(resource "${arg_PREFIX}_texts")
    file(CONFIGURE OUTPUT "${work}/${resource}.qrc" @ONLY CONTENT
        "<RCC><qresource prefix=\"/${arg_PREFIX}/texts\">\n${entries}</qresource></RCC>\n")
    set(embedded "${work}/qrc_${resource}.cpp")
    add_custom_command(OUTPUT "${embedded}"
        COMMAND ${VORREL_QT}::rcc --name ${resource} -o "${embedded}" "${work}/${resource}.qrc"
        DEPENDS "${work}/${resource}.qrc" ${compiled} VERBATIM)
    target_sources(${target} PRIVATE "${embedded}")
    set_source_files_properties("${embedded}" PROPERTIES
        SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
endfunction()
