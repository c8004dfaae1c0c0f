# What the scripts of this folder share.

# run(<variable for what it printed> <variable for its messages> <command>...): a command that fails
# ends the test
function(run output messages)
    execute_process(COMMAND ${ARGN}
        RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err COMMAND_ECHO STDOUT)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "status ${status}:\n${out}${err}")
    endif()
    set(${output} "${out}" PARENT_SCOPE)
    set(${messages} "${err}" PARENT_SCOPE)
endfunction()

# configure_command(<variable> <source> <build> [<argument>...])
function(configure_command result source build)
    set(${result}
        ${CMAKE_COMMAND} -S ${source} -B ${build} -G Ninja -Wno-dev
        -DQt6_DIR=${Qt6_DIR}
        -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
        -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE}
        "-DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS}"
        ${ARGN} PARENT_SCOPE)
endfunction()

# CMake breaks the lines of its messages: one space for any blank makes them comparable.
function(unwrap text result)
    string(REGEX REPLACE "[ \n]+" " " unwrapped "${text}")
    set(${result} "${unwrapped}" PARENT_SCOPE)
endfunction()

function(expect_text text wanted)
    string(FIND "${text}" "${wanted}" position)
    if(position EQUAL -1)
        message(SEND_ERROR "Missing: ${wanted}\nin: ${text}")
    endif()
endfunction()

function(expect_equal value wanted)
    if(NOT "${value}" STREQUAL "${wanted}")
        message(SEND_ERROR "Wanted: ${wanted}\nbut got: ${value}")
    endif()
endfunction()
