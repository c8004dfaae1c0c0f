# The library target. Each room of the house adds its own sources to it.

include(GenerateExportHeader)

add_library(zefui)
add_library(ZEFUI::zefui ALIAS zefui)
zefui_compile_options(zefui)
set_target_properties(zefui PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})

# For the bases of exported classes, which are not exported themselves: users share their types, which ELF
# libraries do by exporting the class, while a DLL exports only those members that say so.
set(shared_type "#define ZEFUI_SHARED_TYPE\n")
if(NOT WIN32)
    set(shared_type "#define ZEFUI_SHARED_TYPE ZEFUI_EXPORT\n")
endif()
string(CONCAT export_header_content "${ZEFUI_EXPORT_HEADER_CONTENT}" "${shared_type}")
generate_export_header(zefui
    BASE_NAME ZEFUI
    EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/generated/include/ZEFUIExport.h
    CUSTOM_CONTENT_FROM_VARIABLE export_header_content)
if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(zefui PUBLIC ZEFUI_STATIC_DEFINE)
endif()

configure_file(${PROJECT_SOURCE_DIR}/cmake/ZEFUIVersion.h.in
    ${PROJECT_BINARY_DIR}/generated/include/ZEFUIVersion.h @ONLY)

target_include_directories(zefui
    PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
        $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/generated/include>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zefui>
    PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(zefui
    PUBLIC ZEFUI::zefbase ZEFUI::zefpipe Qt6::Core Qt6::Gui Qt6::Widgets
    PRIVATE Qt6::UiTools)

# zefui_exported_headers(<header>...): headers of the room that calls it, installed flat
function(zefui_exported_headers)
    foreach(header IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH header NORMALIZE OUTPUT_VARIABLE path)
        target_sources(zefui PRIVATE ${path})
        set_property(GLOBAL APPEND PROPERTY ZEFUI_EXPORTED_HEADERS ${path})
    endforeach()
endfunction()
