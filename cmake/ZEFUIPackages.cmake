# Packages by cpack: Debian packages on Linux, one ZIP archive on Windows.
#
# Debian packages want the folders of /usr: cmake --preset package, then cpack --preset package.

set(CPACK_PACKAGE_NAME zefui)
set(CPACK_PACKAGE_VENDOR "The ZEFUI developers")
set(CPACK_PACKAGE_CONTACT "The ZEFUI developers <zefui@example.org>")
# Each package has a summary of its own, the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL dev)
if(BUILD_SHARED_LIBS)
    list(PREPEND CPACK_COMPONENTS_ALL runtime)
endif()
if(ZEFUI_BUILD_TOOLS OR ZEFUI_BUILD_DESIGNER_PLUGIN)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME zefui-${PROJECT_VERSION}-windows-${CMAKE_SYSTEM_PROCESSOR})
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(runtime libzefui${PROJECT_VERSION_MAJOR})
set(runtime_depends "${runtime} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(about "A service process loads Qt Designer forms by name, translates, styles and
fills them, shows them on behalf of its clients and hears of their answers.")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "forms by name for services on Qt Widgets
${about}

This package holds the shared libraries.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libzefui-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# zefui_add_forms() calls the Linguist tools; Qt's Widgets and UiTools packages want the OpenGL files.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "qt6-base-dev, qt6-tools-dev, qt6-l10n-tools, libqt6opengl6-dev, libopengl-dev")
if(BUILD_SHARED_LIBS)
    string(PREPEND CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${runtime_depends}, ")
else()
    string(APPEND CPACK_DEBIAN_DEV_PACKAGE_DEPENDS ", libxcb1-dev, libx11-dev")
endif()
set(CPACK_DEBIAN_DEV_DESCRIPTION "forms by name for services on Qt Widgets, development files
${about}

This package holds the headers, the CMake package and the pkg-config file.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME zefui-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
# The preview compiles translations by lrelease.
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "designer-qt6, qt6-l10n-tools")
if(BUILD_SHARED_LIBS)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime_depends}")
endif()
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "forms by name for services on Qt Widgets, tools
${about}

This package holds the tools for people who draw forms, and the plug-in that
shows the library's widgets in Qt Designer.")

# What Debian wants to know about a package; an installation without packages does without.
if(NOT WIN32)
    set(changelog ${PROJECT_BINARY_DIR}/generated/changelog)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${changelog} @ONLY)
    file(ARCHIVE_CREATE OUTPUT ${changelog}.Debian.gz PATHS ${changelog}
        FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
    foreach(component IN LISTS CPACK_COMPONENTS_ALL)
        string(TOUPPER ${component} upper)
        install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright ${changelog}.Debian.gz
            DESTINATION share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME} COMPONENT ${component} EXCLUDE_FROM_ALL)
    endforeach()
    if(BUILD_SHARED_LIBS)
        install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/lintian-overrides
            DESTINATION share/lintian/overrides RENAME ${runtime} COMPONENT runtime EXCLUDE_FROM_ALL)
    endif()
endif()

include(CPack)
