# The checker for forms as a test.
#
# zefui_add_lint_test(<test>
#                     FORMS <form.ui>...
#                     [STYLE_SHEETS <folder or file>...]
#                     [TRANSLATIONS <folder or file>...]
#                     [VALUES <file.json>...]
#                     [DELEGATES <header or file.json>...]
#                     [DISABLE <rule>...])
#
# Adds a test that runs zefui-lint and fails when it has findings or cannot read a file. Paths are
# relative to the current source folder, and so are the paths of the findings.

include_guard(GLOBAL)

function(zefui_add_lint_test test)
    set(options FORMS STYLE_SHEETS TRANSLATIONS VALUES DELEGATES DISABLE)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "${options}")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "zefui_add_lint_test: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT arg_FORMS)
        message(FATAL_ERROR "zefui_add_lint_test: no FORMS for ${test}")
    endif()

    set(arguments "")
    foreach(pair IN ITEMS STYLE_SHEETS:css TRANSLATIONS:translations VALUES:values DELEGATES:delegate DISABLE:disable)
        string(REPLACE ":" ";" pair "${pair}")
        list(GET pair 0 keyword)
        list(GET pair 1 option)
        foreach(value IN LISTS arg_${keyword})
            list(APPEND arguments --${option} "${value}")
        endforeach()
    endforeach()

    _zefui_find_lint(program)
    add_test(NAME ${test}
        COMMAND "${program}" ${arguments} -- ${arg_FORMS}
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
endfunction()

# The program of this build or of the installed package; in a cross build one that runs here.
function(_zefui_find_lint result)
    if(TARGET zefui-lint AND (NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR))
        set(${result} zefui-lint PARENT_SCOPE)
        return()
    endif()
    if(NOT CMAKE_CROSSCOMPILING)
        set(own HINTS "${ZEFUI_DIR}/../../../bin" "${ZEFUI_DIR}/../../../../bin")
    endif()
    find_program(ZEFUI_LINT NAMES zefui-lint ${own} NO_CMAKE_FIND_ROOT_PATH DOC "The checker for forms")
    if(NOT ZEFUI_LINT)
        message(FATAL_ERROR
            "zefui_add_lint_test: zefui-lint is missing. Install the library's tools, or set ZEFUI_LINT to it.")
    endif()
    set(${result} "${ZEFUI_LINT}" PARENT_SCOPE)
endfunction()
