# Installation and the CMake package: find_package(ZEFUI CONFIG REQUIRED) gives ZEFUI::zefui.

include(CMakePackageConfigHelpers)

get_property(exported_headers GLOBAL PROPERTY ZEFUI_EXPORTED_HEADERS)
install(FILES ${exported_headers}
        ${PROJECT_BINARY_DIR}/generated/include/ZEFUIExport.h
        ${PROJECT_BINARY_DIR}/generated/include/ZEFUIVersion.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zefui)
install(TARGETS zefui EXPORT ZEFUITargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(EXPORT ZEFUITargets NAMESPACE ZEFUI:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZEFUI)

set(qt_components "Core Gui Widgets")
set(private_packages "")
if(NOT BUILD_SHARED_LIBS)
    # The user of a static library links what the library itself uses.
    string(APPEND qt_components " UiTools")
    get_property(packages GLOBAL PROPERTY ZEFUI_PRIVATE_PACKAGES)
    foreach(package IN LISTS packages)
        string(APPEND private_packages "find_dependency(${package})\n")
    endforeach()
endif()
if(ZEFUI_BUNDLED_BASE)
    set_target_properties(zefui PROPERTIES INSTALL_RPATH "$ORIGIN")
    # It is installed beside this package, and no other one will do.
    set(base_packages "find_dependency(zefbase CONFIG PATHS \"\${CMAKE_CURRENT_LIST_DIR}/../zefbase\" NO_DEFAULT_PATH)
find_dependency(zefpipe CONFIG PATHS \"\${CMAKE_CURRENT_LIST_DIR}/../zefpipe\" NO_DEFAULT_PATH)")
else()
    set(base_packages "find_dependency(zefbase)\nfind_dependency(zefpipe)")
endif()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZEFUIConfig.cmake.in
    ${PROJECT_BINARY_DIR}/generated/ZEFUIConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZEFUI)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/generated/ZEFUIConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
        ${PROJECT_BINARY_DIR}/generated/ZEFUIConfig.cmake
        ${PROJECT_BINARY_DIR}/generated/ZEFUIConfigVersion.cmake
        ${PROJECT_SOURCE_DIR}/cmake/ZEFUIForms.cmake
        ${PROJECT_SOURCE_DIR}/cmake/ZEFUILint.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZEFUI)

# pkg-config, for builds without CMake
set(pc_requires "Qt6Core Qt6Gui Qt6Widgets")
set(pc_defines "")
set(pc_libraries "-lzefui -lzefbase -lzefpipe")
if(NOT BUILD_SHARED_LIBS)
    string(APPEND pc_requires " Qt6UiTools")
    set(pc_defines " -DZEFUI_STATIC_DEFINE -DZEFBASE_STATIC_DEFINE -DZEFPIPE_STATIC_DEFINE")
    string(REPLACE "LINKER:" "-Wl," pc_keep_accessibility ${ZEFUI_KEEP_ACCESSIBILITY})
    string(PREPEND pc_libraries "${pc_keep_accessibility} ")
    if(WIN32)
        string(APPEND pc_libraries " -luser32")
    elseif(TARGET X11::xcb)
        string(APPEND pc_libraries " -lxcb")
    endif()
endif()
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_BINDIR BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
    OUTPUT_VARIABLE pc_to_bin)
cmake_path(GET pc_to_bin PARENT_PATH pc_to_prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zefui.pc.in ${PROJECT_BINARY_DIR}/generated/zefui.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/generated/zefui.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The functions of the package serve this build's own examples and tests too.
include(ZEFUIForms)
include(ZEFUILint)
