# How a test program is built and run.

find_program(ZEFUI_XVFB Xvfb)
find_program(ZEFUI_WINDOW_MANAGER openbox)
if(UNIX AND NOT (ZEFUI_XVFB AND ZEFUI_WINDOW_MANAGER))
    message(STATUS "Tests on xcb are left out: Xvfb or openbox is missing")
endif()
find_program(ZEFUI_SESSION_BUS dbus-run-session)
if(UNIX AND NOT ZEFUI_SESSION_BUS)
    message(STATUS "Tests with assistive technology are left out: dbus-run-session is missing")
endif()

set(ZEFUI_TEST_ENVIRONMENT
    QT_LOGGING_RULES=
    LANG=C.UTF-8
    LC_ALL=C.UTF-8
    LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0
    ASAN_OPTIONS=detect_stack_use_after_return=1
    UBSAN_OPTIONS=print_stacktrace=1)
if(CMAKE_CROSSCOMPILING)
    list(APPEND ZEFUI_TEST_ENVIRONMENT ZEFUI_WINE_TEMPLATE=${PROJECT_BINARY_DIR}/wine-prefix)
endif()

# The library's objects in an archive, for tests of classes that the shared library does not export.
if(BUILD_SHARED_LIBS)
    add_library(zefui_internals STATIC $<TARGET_OBJECTS:zefui>)
    target_include_directories(zefui_internals PUBLIC $<TARGET_PROPERTY:zefui,INCLUDE_DIRECTORIES>)
    target_compile_definitions(zefui_internals PUBLIC ZEFUI_STATIC_DEFINE)
    target_link_libraries(zefui_internals PUBLIC $<TARGET_PROPERTY:zefui,LINK_LIBRARIES>)
    target_link_options(zefui_internals INTERFACE ${ZEFUI_KEEP_ACCESSIBILITY})
else()
    add_library(zefui_internals ALIAS zefui)
endif()

# zefui_add_test(<program> SOURCES <source>... [LIBRARIES <target>...] [PLATFORMS offscreen|xcb...]
#                [STARTS <program>...] [TIMEOUT <seconds>] [INTERNALS] [SESSION_BUS])
# Builds a test program and registers it as <program>.<platform>, by default on the offscreen platform
# only. On xcb each program runs on an X server and under a window manager of its own. For Windows it is
# registered once, as <program>.windows; a cross-built program runs under Wine and is skipped when a DLL
# that it needs, or that a program which it STARTS needs, is not there. With INTERNALS the program reaches
# the library's own classes too; without, only what the library exports. With SESSION_BUS the program has a
# session bus of its own on xcb, and Qt believes that assistive technology is there.
function(zefui_add_test program)
    cmake_parse_arguments(PARSE_ARGV 1 arg "INTERNALS;SESSION_BUS" "TIMEOUT" "SOURCES;LIBRARIES;PLATFORMS;STARTS")
    if(WIN32)
        set(arg_PLATFORMS windows)
    elseif(NOT arg_PLATFORMS)
        set(arg_PLATFORMS offscreen)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 300)
    endif()
    set(library $<IF:$<BOOL:${arg_INTERNALS}>,zefui_internals,ZEFUI::zefui>)
    add_executable(${program} ${arg_SOURCES})
    zefui_compile_options(${program})
    if(NOT MSVC)
        # A test takes longer to compile than to run.
        target_compile_options(${program} PRIVATE $<$<CONFIG:Release>:-O0>)
        # Since then Qt's QTRY_ macros turn a long into an int, which is reported where they are used.
        if(Qt6_VERSION VERSION_GREATER_EQUAL 6.7)
            target_compile_options(${program} PRIVATE -Wno-conversion)
        endif()
    endif()
    target_link_libraries(${program} PRIVATE ${library} zefui_test_support Qt6::Test ${arg_LIBRARIES})
    set(started "")
    if(arg_STARTS)
        add_dependencies(${program} ${arg_STARTS})
        list(TRANSFORM arg_STARTS REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE started)
        list(JOIN started ":" started)
    endif()

    foreach(platform IN LISTS arg_PLATFORMS)
        if(platform STREQUAL "xcb")
            if(NOT (ZEFUI_XVFB AND ZEFUI_WINDOW_MANAGER))
                continue()
            endif()
            if(arg_SESSION_BUS AND NOT ZEFUI_SESSION_BUS)
                continue()
            endif()
            set(command ${PROJECT_SOURCE_DIR}/tests/support/with-display)
            if(arg_SESSION_BUS)
                list(APPEND command ${PROJECT_SOURCE_DIR}/tests/support/with-session-bus)
            endif()
            list(APPEND command $<TARGET_FILE:${program}>)
        else()
            set(command ${program})
        endif()
        add_test(NAME ${program}.${platform} COMMAND ${command})
        set_tests_properties(${program}.${platform} PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=${platform};${ZEFUI_TEST_ENVIRONMENT}"
            LABELS ${platform}
            TIMEOUT ${arg_TIMEOUT})
        if(CMAKE_CROSSCOMPILING)
            # The code of tests/support/with-wine; a test program exits with at most 127.
            set_tests_properties(${program}.${platform} PROPERTIES SKIP_RETURN_CODE 200)
            set_property(TEST ${program}.${platform} APPEND PROPERTY
                ENVIRONMENT "ZEFUI_WINE_STARTED=${started}")
        elseif(WIN32)
            # A program finds the DLLs of Qt, and of the compiler, only along PATH.
            cmake_path(GET CMAKE_CXX_COMPILER PARENT_PATH compiler_folder)
            set(prepend "PATH=path_list_prepend:")
            set_tests_properties(${program}.${platform} PROPERTIES ENVIRONMENT_MODIFICATION
                "${prepend}$<PATH:NATIVE_PATH,${compiler_folder}>;${prepend}$<PATH:NATIVE_PATH,$<TARGET_FILE_DIR:Qt6::Core>>")
        endif()
    endforeach()
endfunction()
