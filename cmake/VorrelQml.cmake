# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# One way to make a QML module from C++ types that works alike on Qt 5.15 and Qt 6: moc writes a
# JSON description of each header, qmltyperegistrar turns them into a registration source and a
# .qmltypes file.

# The tools are not imported targets on Qt 5, and on Qt 6 they live outside the path.
get_target_property(vorrelMoc ${VORREL_QT}::moc IMPORTED_LOCATION)
get_filename_component(vorrelQtTools "${vorrelMoc}" DIRECTORY)
find_program(VORREL_QMLTYPEREGISTRAR qmltyperegistrar
    HINTS "${vorrelQtTools}" "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBEXECS}" NO_DEFAULT_PATH REQUIRED)

get_target_property(vorrelQtCore ${VORREL_QT}::Core LOCATION)
get_filename_component(vorrelQtLibraries "${vorrelQtCore}" DIRECTORY)
set(VORREL_QT_METATYPES)
foreach(module core network gui qml qmlmodels quick positioning)
    file(GLOB found
        "${vorrelQtLibraries}/metatypes/qt${QT_VERSION_MAJOR}${module}_*metatypes.json"
        "${vorrelQtLibraries}/metatypes/qt${QT_VERSION_MAJOR}${module}_metatypes.json")
    list(APPEND VORREL_QT_METATYPES ${found})
endforeach()
list(REMOVE_DUPLICATES VORREL_QT_METATYPES)

# vorrel_qml_types(VorrelDataCore URI vorrel.data.Core VERSION 1.0 OUTPUT_DIRECTORY dir)
#
# Adds qml_register_types_<uri>() for every QML header of the target and writes
# dir/plugins.qmltypes.
function(vorrel_qml_types target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI;VERSION;OUTPUT_DIRECTORY" "")
    get_target_property(headers ${target} VORREL_QML_HEADERS)
    set(work "${CMAKE_CURRENT_BINARY_DIR}/${target}_qml")
    file(MAKE_DIRECTORY "${work}" "${arg_OUTPUT_DIRECTORY}")
    set(includes "$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>")
    set(jsonFiles)
    set(folders)
    foreach(header IN LISTS headers)
        get_filename_component(name "${header}" NAME_WE)
        get_filename_component(folder "${header}" DIRECTORY)
        list(APPEND folders "${folder}")
        set(json "${work}/moc_${name}.cpp.json")
        add_custom_command(OUTPUT "${json}"
            COMMAND ${vorrelMoc} --output-json -o "${work}/moc_${name}.cpp"
                "$<$<BOOL:${includes}>:-I$<JOIN:${includes},;-I>>" "${header}"
            DEPENDS "${header}"
            COMMAND_EXPAND_LISTS VERBATIM)
        list(APPEND jsonFiles "${json}")
    endforeach()
    list(REMOVE_DUPLICATES folders)

    set(collected "${work}/metatypes.json")
    add_custom_command(OUTPUT "${collected}"
        COMMAND ${vorrelMoc} --collect-json -o "${collected}" ${jsonFiles}
        DEPENDS ${jsonFiles} VERBATIM)

    string(REPLACE "." ";" version "${arg_VERSION}")
    list(GET version 0 major)
    list(GET version 1 minor)
    string(REPLACE "." "_" function "qml_register_types_${arg_URI}")
    set(registration "${work}/${function}.cpp")
    string(REPLACE ";" "," foreignTypes "${VORREL_QT_METATYPES}")
    add_custom_command(OUTPUT "${registration}" "${arg_OUTPUT_DIRECTORY}/plugins.qmltypes"
        COMMAND ${VORREL_QMLTYPEREGISTRAR}
            --generate-qmltypes=${arg_OUTPUT_DIRECTORY}/plugins.qmltypes
            --import-name=${arg_URI} --major-version=${major} --minor-version=${minor}
            --foreign-types=${foreignTypes} -o "${registration}" "${collected}"
        DEPENDS "${collected}" VERBATIM)
    target_sources(${target} PRIVATE "${registration}")
    # The generated source names headers without their folders.
    set_source_files_properties("${registration}" PROPERTIES
        INCLUDE_DIRECTORIES "${folders}" SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
endfunction()
