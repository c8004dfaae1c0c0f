# The targets docs (the manual as HTML) and api-docs (the API pages), where the tools for them are.

find_program(ZEFUI_MKDOCS mkdocs)
find_program(ZEFUI_DOXYGEN doxygen)

if(ZEFUI_MKDOCS)
    set(ZEFUI_DOCS_COMMAND ${ZEFUI_MKDOCS} build --strict --quiet --clean
        --config-file ${PROJECT_SOURCE_DIR}/mkdocs.yml --site-dir ${PROJECT_BINARY_DIR}/manual)
    add_custom_target(docs COMMAND ${ZEFUI_DOCS_COMMAND} VERBATIM
        COMMENT "Writing the manual to ${PROJECT_BINARY_DIR}/manual")
endif()

if(ZEFUI_DOXYGEN)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/api)
    set(ZEFUI_API_DOCS_COMMAND ${CMAKE_COMMAND} -E env API_DOCS=${PROJECT_BINARY_DIR}/api
        ${ZEFUI_DOXYGEN} docs/Doxyfile)
    add_custom_target(api-docs COMMAND ${ZEFUI_API_DOCS_COMMAND} VERBATIM
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "Writing the API pages to ${PROJECT_BINARY_DIR}/api")
endif()
