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

set(ZEFUI_SANITIZE "" CACHE STRING "Sanitizers to build everything with, e.g. address,undefined")
option(ZEFUI_COVERAGE "Instrument for gcov" OFF)

if(ZEFUI_SANITIZE)
    add_compile_options(-fsanitize=${ZEFUI_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${ZEFUI_SANITIZE})
endif()
if(ZEFUI_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

# zefui_compile_options(<target>...): this project's warnings and Qt restrictions, private to the target
function(zefui_compile_options)
    foreach(target IN LISTS ARGN)
        target_compile_definitions(${target} PRIVATE
            QT_NO_CAST_FROM_ASCII
            QT_NO_CAST_TO_ASCII
            QT_NO_CAST_FROM_BYTEARRAY
            QT_NO_URL_CAST_FROM_STRING
            QT_NO_FOREACH
            QT_NO_KEYWORDS
            QT_USE_QSTRINGBUILDER
            QT_DISABLE_DEPRECATED_BEFORE=0x060400)
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
