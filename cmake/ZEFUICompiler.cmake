# What every target of this project is compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
# All programs and libraries of one build side by side: on Windows a program finds its DLLs only there.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

find_program(ZEFUI_CCACHE ccache)
if(ZEFUI_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ZEFUI_CCACHE})
endif()

if(CMAKE_CXX_CLANG_TIDY)
    # The nearest file of checks counts: what moc and rcc write is not ours to mend.
    file(WRITE ${PROJECT_BINARY_DIR}/.clang-tidy "Checks: '-*,bugprone-undelegated-constructor'\n")
endif()

set(ZEFUI_SANITIZE "" CACHE STRING "Sanitizers to build everything with, e.g. address,undefined")
option(ZEFUI_COVERAGE "Instrument for gcov" OFF)
set(ZEFUI_DISABLE_DEPRECATED_UP_TO 0x060400 CACHE STRING
    "What Qt calls deprecated up to this version is not there while compiling, e.g. 0x060800")

if(ZEFUI_SANITIZE)
    add_compile_options(-fsanitize=${ZEFUI_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${ZEFUI_SANITIZE})
endif()
if(ZEFUI_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

# For the export headers: what MSVC would warn of in every source that includes a public header.
set(ZEFUI_EXPORT_HEADER_CONTENT [[
#if defined(_MSC_VER)
// The private members of exported classes are Qt's and the standard library's templates, and some bases
// stay inside the DLL. No inline function touches them, so users need no interface to them (C4251, C4275).
#pragma warning(disable : 4251 4275)
#endif
]])

# The version resource that Windows shows for a DLL or a program
function(zefui_version_resource target)
    get_target_property(type ${target} TYPE)
    if(NOT WIN32 OR NOT type MATCHES "^(EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY)$")
        return()
    endif()
    set(file_type VFT_DLL)
    if(type STREQUAL "EXECUTABLE")
        set(file_type VFT_APP)
    endif()
    string(REPLACE "." "," version_numbers ${PROJECT_VERSION},0)
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/version.rc.in ${resource}.in @ONLY)
    file(GENERATE OUTPUT ${resource} INPUT ${resource}.in)
    target_sources(${target} PRIVATE ${resource})
endfunction()

# zefui_compile_options(<target>...): this project's warnings and Qt restrictions, private to the target
function(zefui_compile_options)
    # Qt 6.5 gave the macro a better name, and keeps the old one for older code only
    set(deprecated QT_DISABLE_DEPRECATED_BEFORE)
    if(Qt6_VERSION VERSION_GREATER_EQUAL 6.5)
        set(deprecated QT_DISABLE_DEPRECATED_UP_TO)
    endif()
    foreach(target IN LISTS ARGN)
        zefui_version_resource(${target})
        target_compile_definitions(${target} PRIVATE
            QT_NO_CAST_FROM_ASCII
            QT_NO_CAST_TO_ASCII
            QT_NO_CAST_FROM_BYTEARRAY
            QT_NO_URL_CAST_FROM_STRING
            QT_NO_FOREACH
            QT_NO_KEYWORDS
            QT_USE_QSTRINGBUILDER
            ${deprecated}=${ZEFUI_DISABLE_DEPRECATED_UP_TO})
        if(MSVC)
            target_compile_options(${target} PRIVATE /W4 /utf-8 /permissive-)
        else()
            target_compile_options(${target} PRIVATE
                -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
                -Wcast-align -Wformat=2 -Wnull-dereference)
            if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
                # g++ 12 sees null dereferences in Qt's own inline functions once it optimises
                target_compile_options(${target} PRIVATE -Wduplicated-cond -Wlogical-op -Wno-null-dereference)
            endif()
        endif()
    endforeach()
endfunction()
