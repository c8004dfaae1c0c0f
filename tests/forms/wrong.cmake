# A wrong call ends the configuration with a message that names the mistake.

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

file(REMOVE_RECURSE ${WORK_DIR})
configure_command(configure ${SOURCE_DIR}/names ${WORK_DIR}
    -DZEFUI_FORMS_MODULE=${ZEFUI_FORMS_MODULE} "-DWRONG=${WRONG}")
execute_process(COMMAND ${configure} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
unwrap("${output}" output)
if(status EQUAL 0)
    message(SEND_ERROR "Configured in spite of: ${WRONG}")
endif()
if(WRONG STREQUAL "missing file")
    expect_text("${output}" "zefui_add_forms: ${WORK_DIR}/made/absent.ui is not a file")
    expect_text("${output}" "zefui_add_forms: ${WORK_DIR}/made/folder.ui is not a file")
elseif(WRONG STREQUAL "unknown argument")
    expect_text("${output}" "zefui_add_forms: unknown arguments: FROMS;")
elseif(WRONG STREQUAL "no target")
    expect_text("${output}" "zefui_add_forms: there is no target absent")
elseif(WRONG STREQUAL "interface library")
    expect_text("${output}" "zefui_add_forms: headers is no executable or library of this project")
else()
    message(FATAL_ERROR "Unknown case: ${WRONG}")
endif()
