# Cross-building for 64-bit Windows with MinGW-w64, posix threads, against a Qt for Windows.
#
# ZEFUI_WINDOWS_QT, a cache or environment variable: the folder of that Qt (the one with bin, lib and
# plugins). The build's own moc, rcc, uic and lrelease come from the Qt of this machine, in QT_HOST_PATH.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT ZEFUI_WINDOWS_QT)
    set(ZEFUI_WINDOWS_QT "$ENV{ZEFUI_WINDOWS_QT}")
endif()
cmake_path(ABSOLUTE_PATH ZEFUI_WINDOWS_QT BASE_DIRECTORY ${CMAKE_SOURCE_DIR} NORMALIZE)
if(NOT EXISTS "${ZEFUI_WINDOWS_QT}/lib/cmake/Qt6/Qt6Config.cmake")
    message(FATAL_ERROR "ZEFUI_WINDOWS_QT must name the folder of a Qt 6 for Windows")
endif()
set(ZEFUI_WINDOWS_QT "${ZEFUI_WINDOWS_QT}" CACHE PATH "A Qt 6 for 64-bit Windows, built with MinGW-w64")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZEFUI_WINDOWS_QT)

set(CMAKE_FIND_ROOT_PATH "${ZEFUI_WINDOWS_QT}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
list(PREPEND CMAKE_PREFIX_PATH "${ZEFUI_WINDOWS_QT}")

set(QT_HOST_PATH /usr CACHE PATH "The Qt of this machine, with the build tools")
if(NOT QT_HOST_PATH_CMAKE_DIR)
    file(GLOB host_packages
        "${QT_HOST_PATH}/lib/cmake/Qt6/Qt6Config.cmake"
        "${QT_HOST_PATH}/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-*/cmake/Qt6/Qt6Config.cmake")
    if(host_packages)
        list(GET host_packages 0 host_package)
        cmake_path(GET host_package PARENT_PATH host_package)
        cmake_path(GET host_package PARENT_PATH host_package)
        set(QT_HOST_PATH_CMAKE_DIR "${host_package}" CACHE PATH "The CMake packages of this machine's Qt")
    endif()
endif()
# What rcc of this machine's Qt packs, the Qt for Windows must be able to unpack.
set(CMAKE_AUTORCC_OPTIONS --no-zstd)
# lrelease is a program for this machine; a Qt for Windows need not bring the package that finds it.
if(NOT EXISTS "${ZEFUI_WINDOWS_QT}/lib/cmake/Qt6LinguistTools")
    set(Qt6LinguistTools_DIR "${QT_HOST_PATH_CMAKE_DIR}/Qt6LinguistTools" CACHE PATH "")
endif()

# Tests run under Wine; the runner says which ones cannot start with this Qt.
set(CMAKE_CROSSCOMPILING_EMULATOR
    "${CMAKE_CURRENT_LIST_DIR}/../../tests/support/with-wine" --qt "${ZEFUI_WINDOWS_QT}")
