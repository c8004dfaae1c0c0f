# Forms, style sheets and translations of a service, under the resource names where the library looks.
#
# zefui_add_forms(<target>
#                 [FORMS <form.ui>...]
#                 [STYLE_SHEETS <objectName.css>...]
#                 [TRANSLATIONS <zefmain_locale.ts>...]
#                 [SOURCES <file>...])
#
# FORMS         become :/forms/<file>
# STYLE_SHEETS  become :/css/<file>
# TRANSLATIONS  are compiled by lrelease to :/i18n/zefmain_<locale>.qm
# SOURCES       further files in which <target>_update_translations looks for texts, for instance
#               sources that mark dictionary values with QT_TRANSLATE_NOOP("zefmain", …)
#
# The target <target>_update_translations brings the .ts files up to date by lupdate; it runs on request
# only. The function may be called several times for one target. File names that the library could
# never find are reported when CMake configures.

include_guard(GLOBAL)

define_property(TARGET PROPERTY ZEFUI_RESOURCE_NAMES
    BRIEF_DOCS "Resources that zefui_add_forms() gave the target, as <folder>/<file>")
define_property(TARGET PROPERTY ZEFUI_TRANSLATION_FILES
    BRIEF_DOCS "The .ts files of the target")
define_property(TARGET PROPERTY ZEFUI_TRANSLATION_SOURCES
    BRIEF_DOCS "The files whose texts the target's .ts files translate")

function(zefui_add_forms target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FORMS;STYLE_SHEETS;TRANSLATIONS;SOURCES")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "zefui_add_forms: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    _zefui_check_target(${target})
    if(NOT (arg_FORMS OR arg_STYLE_SHEETS OR arg_TRANSLATIONS))
        message(WARNING "zefui_add_forms: no FORMS, STYLE_SHEETS or TRANSLATIONS for ${target}")
    endif()

    _zefui_take_files(${target} forms "${arg_FORMS}" forms)
    _zefui_take_files(${target} css "${arg_STYLE_SHEETS}" style_sheets)
    _zefui_take_files(${target} i18n "${arg_TRANSLATIONS}" translations)
    _zefui_take_sources("${arg_SOURCES}" sources)

    _zefui_add_resources(${target} forms "${forms}")
    _zefui_add_resources(${target} css "${style_sheets}")
    set_property(TARGET ${target} APPEND PROPERTY ZEFUI_TRANSLATION_SOURCES ${forms} ${sources})
    if(translations)
        _zefui_add_translations(${target} "${translations}")
    endif()
endfunction()

function(_zefui_check_target target)
    if(NOT TARGET ${target})
        message(FATAL_ERROR "zefui_add_forms: there is no target ${target}")
    endif()
    get_target_property(aliased ${target} ALIASED_TARGET)
    get_target_property(imported ${target} IMPORTED)
    get_target_property(type ${target} TYPE)
    if(aliased OR imported OR NOT type MATCHES "^(EXECUTABLE|(STATIC|SHARED|MODULE|OBJECT)_LIBRARY)$")
        message(FATAL_ERROR
            "zefui_add_forms: ${target} is no executable or library of this project; "
            "name the target that is compiled")
    endif()
endfunction()

# The absolute paths of those files that can become resources in the folder; says what is wrong with
# the others.
function(_zefui_take_files target folder files result)
    set(taken "")
    get_property(names TARGET ${target} PROPERTY ZEFUI_RESOURCE_NAMES)
    foreach(file IN LISTS files)
        cmake_path(ABSOLUTE_PATH file NORMALIZE OUTPUT_VARIABLE path)
        cmake_path(GET path FILENAME name)
        _zefui_check_name(${folder} "${name}")
        if("${folder}/${name}" IN_LIST names)
            message(WARNING
                "zefui_add_forms: ${target} has two files named ${name}, but the library finds only one "
                "resource :/${folder}/${name}. ${path} is left out, rename it.")
            continue()
        endif()
        _zefui_is_file("${path}" is_file)
        if(NOT is_file)
            if(folder STREQUAL "i18n" AND NOT EXISTS "${path}")
                message(WARNING
                    "zefui_add_forms: ${path} does not exist yet. Build the target "
                    "${target}_update_translations to create it, then configure again.")
            else()
                message(SEND_ERROR "zefui_add_forms: ${path} is not a file")
                continue()
            endif()
        endif()
        list(APPEND names "${folder}/${name}")
        list(APPEND taken "${path}")
    endforeach()
    set_property(TARGET ${target} PROPERTY ZEFUI_RESOURCE_NAMES ${names})
    set(${result} "${taken}" PARENT_SCOPE)
endfunction()

function(_zefui_take_sources files result)
    set(taken "")
    foreach(file IN LISTS files)
        cmake_path(ABSOLUTE_PATH file NORMALIZE OUTPUT_VARIABLE path)
        list(APPEND taken "${path}")
    endforeach()
    set(${result} "${taken}" PARENT_SCOPE)
endfunction()

# A file that the build generates need not exist yet.
function(_zefui_is_file path result)
    get_source_file_property(generated "${path}" GENERATED)
    if(generated OR (EXISTS "${path}" AND NOT IS_DIRECTORY "${path}"))
        set(${result} TRUE PARENT_SCOPE)
    else()
        set(${result} FALSE PARENT_SCOPE)
    endif()
endfunction()

function(_zefui_check_name folder name)
    if(folder STREQUAL "forms")
        if(NOT name MATCHES "^.+\\.ui$")
            message(WARNING
                "zefui_add_forms: the library will never find the form ${name}: the name of a form file "
                "must be <form>.ui or win_<form>.ui, with the suffix in lower case.")
        endif()
    elseif(folder STREQUAL "css")
        if(NOT name MATCHES "^.+\\.css$")
            message(WARNING
                "zefui_add_forms: the library will never find the style sheet ${name}: the name of a "
                "style sheet must be <objectName>.css or win_<objectName>.css, with the suffix in lower "
                "case.")
        elseif(NOT name MATCHES "^[A-Za-z_][A-Za-z0-9_]*\\.css$")
            message(WARNING
                "zefui_add_forms: no widget will ever get the style sheet ${name}: what stands before "
                ".css must be an object name, made of letters, digits and underscores only.")
        endif()
    elseif(NOT name MATCHES "^zefmain_.+\\.ts$")
        message(WARNING
            "zefui_add_forms: the library will never find the translation ${name}: its name must be "
            "zefmain_<locale>.ts, for instance zefmain_de.ts.")
    endif()
endfunction()

function(_zefui_add_resources target folder files)
    if(NOT files)
        return()
    endif()
    foreach(file IN LISTS files)
        cmake_path(GET file FILENAME name)
        set_source_files_properties("${file}" PROPERTIES QT_RESOURCE_ALIAS "${name}")
    endforeach()
    # Resources of one program must not share a name, and a program may link several libraries with forms.
    get_property(count TARGET ${target} PROPERTY _ZEFUI_RESOURCE_COUNT)
    math(EXPR count "0${count} + 1")
    set_property(TARGET ${target} PROPERTY _ZEFUI_RESOURCE_COUNT ${count})
    string(MAKE_C_IDENTIFIER "${target}_zefui_${folder}_${count}" resource)
    qt6_add_resources(${target} ${resource} PREFIX "/${folder}" FILES ${files})
endfunction()

function(_zefui_add_translations target translations)
    set(compiled "")
    foreach(source IN LISTS translations)
        if(NOT EXISTS "${source}")
            continue()
        endif()
        _zefui_find_tool(lrelease ZEFUI_LRELEASE)
        cmake_path(GET source STEM LAST_ONLY stem)
        set(output "${CMAKE_CURRENT_BINARY_DIR}/${target}_i18n/${stem}.qm")
        file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/${target}_i18n")
        add_custom_command(
            OUTPUT "${output}"
            COMMAND "${ZEFUI_LRELEASE}" -silent "${source}" -qm "${output}"
            DEPENDS "${source}"
            COMMENT "Compiling ${stem}.qm for ${target}"
            VERBATIM)
        list(APPEND compiled "${output}")
    endforeach()
    _zefui_add_resources(${target} i18n "${compiled}")

    set_property(TARGET ${target} APPEND PROPERTY ZEFUI_TRANSLATION_FILES ${translations})
    if(NOT TARGET ${target}_update_translations)
        _zefui_add_update_target(${target})
    endif()
endfunction()

# The file lists are read when CMake generates: later calls for the same target add to them.
function(_zefui_add_update_target target)
    _zefui_find_tool(lupdate ZEFUI_LUPDATE)
    set(list_file "${CMAKE_CURRENT_BINARY_DIR}/${target}_i18n/sources.lst")
    file(GENERATE OUTPUT "${list_file}"
        CONTENT "$<JOIN:$<TARGET_PROPERTY:${target},ZEFUI_TRANSLATION_SOURCES>,\n>\n")
    add_custom_target(${target}_update_translations
        COMMAND "${ZEFUI_LUPDATE}" "@${list_file}"
                -ts "$<TARGET_PROPERTY:${target},ZEFUI_TRANSLATION_FILES>"
        COMMENT "Updating the translations of ${target}"
        COMMAND_EXPAND_LISTS
        VERBATIM)
endfunction()

# A Qt tool that runs on the machine that builds, also when the build is for another one.
function(_zefui_find_tool name variable)
    if(${variable})
        return()
    endif()
    if(NOT CMAKE_CROSSCOMPILING)
        find_package(Qt6 QUIET COMPONENTS LinguistTools)
        if(TARGET Qt6::${name})
            get_target_property(location Qt6::${name} LOCATION)
        endif()
    endif()
    if(location)
        set(${variable} "${location}" CACHE FILEPATH "Qt's ${name}")
    else()
        find_program(${variable} NAMES ${name}-qt6 ${name}6 ${name}
            HINTS ${QT_HOST_PATH}/bin ${QT_HOST_PATH}/lib/qt6/bin ENV QT_HOST_PATH
            PATHS /usr/lib/qt6/bin
            PATH_SUFFIXES bin lib/qt6/bin
            NO_CMAKE_FIND_ROOT_PATH
            DOC "Qt's ${name}")
    endif()
    if(NOT ${variable})
        message(FATAL_ERROR
            "zefui_add_forms: Qt's ${name} is missing. Install Qt's Linguist tools, or set ${variable} to "
            "it; in a cross build set QT_HOST_PATH to a Qt of the building machine.")
    endif()
endfunction()
