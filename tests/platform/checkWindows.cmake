# What ./check-windows says of a Qt that it cannot use, before it installs anything.
#   cmake -DCHECK_WINDOWS=<script> -DWORK_DIR=<folder> -P checkWindows.cmake

set(partial ${WORK_DIR}/partial)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/empty ${partial})
file(WRITE ${partial}/lib/cmake/Qt6/Qt6Config.cmake "# no more than this")
file(WRITE ${partial}/lib/cmake/Qt6UiTools/Qt6UiToolsConfig.cmake "")

# refuses(<line> [<argument>...]): one line on stderr, nothing else, and a status that is not 0
function(refuses line)
    execute_process(COMMAND ${CHECK_WINDOWS} ${ARGN}
        OUTPUT_VARIABLE output ERROR_VARIABLE error RESULT_VARIABLE status)
    if(NOT status EQUAL 1 OR NOT output STREQUAL "" OR NOT error STREQUAL "check-windows: ${line}\n")
        message(SEND_ERROR "check-windows ${ARGN}: status ${status}, stdout \"${output}\", stderr \"${error}\"")
    endif()
endfunction()

refuses("usage: ./check-windows <folder or archive of a Qt 6 for Windows>")
refuses("usage: ./check-windows <folder or archive of a Qt 6 for Windows>" a b)
refuses("there is no ${WORK_DIR}/missing" ${WORK_DIR}/missing)
refuses("${WORK_DIR}/empty is no complete Qt 6 for Windows: lib/cmake/Qt6/Qt6Config.cmake is missing" ${WORK_DIR}/empty)
refuses("${partial} is no complete Qt 6 for Windows: lib/cmake/Qt6UiTools/Qt6UiToolsConfig.cmake is missing" ${partial})
