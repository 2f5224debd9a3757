# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# Countries and languages come from the package iso-codes, which every distribution has: a program
# of ours turns its tables into texts and into a list of codes while the library is built.
find_path(VORREL_ISO_CODES_SHARE iso-codes/json/iso_3166-1.json
    PATHS /usr/local/share /usr/share NO_DEFAULT_PATH REQUIRED
    DOC "The folder in which iso-codes/ and locale/ of the package iso-codes lie")

# vorrel_regions(VorrelDataCore LANGUAGES en de)
#
# Gives the target <vorrel/data/countrycodes.inc>, and VORREL_REGION_TEXTS: the folder with
# regions_en.ts and so on, for vorrel_texts().
function(vorrel_regions target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LANGUAGES")
    set(work "${CMAKE_CURRENT_BINARY_DIR}/${target}_regions")
    file(MAKE_DIRECTORY "${work}")
    list(TRANSFORM arg_LANGUAGES REPLACE "(.+)" "${work}/regions_\\1.ts" OUTPUT_VARIABLE texts)
    add_executable(vorrel_regions "${PROJECT_SOURCE_DIR}/src/vorrel/data/documents/regions/main.cpp")
    target_link_libraries(vorrel_regions PRIVATE VorrelBuildOptions ${VORREL_QT}::Core)
    target_compile_features(vorrel_regions PRIVATE cxx_std_17)
    set(iso "${VORREL_ISO_CODES_SHARE}/iso-codes/json")
    add_custom_command(OUTPUT "${work}/countrycodes.inc" ${texts}
        COMMAND vorrel_regions "${VORREL_ISO_CODES_SHARE}" "${work}" ${arg_LANGUAGES}
        DEPENDS "${iso}/iso_3166-1.json" "${iso}/iso_639-2.json" "${iso}/iso_639-3.json" VERBATIM)
    add_custom_target(vorrel_region_codes DEPENDS "${work}/countrycodes.inc") # for lint
    target_sources(${target} PRIVATE "${work}/countrycodes.inc")
    target_include_directories(${target} PRIVATE "${work}")
    set(VORREL_REGION_TEXTS "${work}" PARENT_SCOPE)
endfunction()
