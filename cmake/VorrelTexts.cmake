# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# Translated texts, the same way for both Qt versions: lrelease compiles the files of
# translations/, and a resource carries them.
include(VorrelResource)
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
    endforeach()

    vorrel_resource(${target} NAME ${arg_PREFIX}_texts PREFIX /${arg_PREFIX}/texts
        FILES ${compiled})
endfunction()
