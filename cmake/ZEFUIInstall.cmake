# Installation and the CMake package: find_package(ZEFUI CONFIG REQUIRED) gives ZEFUI::zefui.

include(CMakePackageConfigHelpers)

get_property(exported_headers GLOBAL PROPERTY ZEFUI_EXPORTED_HEADERS)
install(FILES ${exported_headers}
        ${PROJECT_BINARY_DIR}/generated/include/ZEFUIExport.h
        ${PROJECT_BINARY_DIR}/generated/include/ZEFUIVersion.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zefui)
install(TARGETS zefui EXPORT ZEFUITargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT ZEFUITargets NAMESPACE ZEFUI:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZEFUI)

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

# The functions of the package serve this build's own examples and tests too.
include(ZEFUIForms)
include(ZEFUILint)
