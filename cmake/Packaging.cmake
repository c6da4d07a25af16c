# Installation and Debian packages.
#
# Install components: runtime (the engine library), database (the API
# database), tool (the command-line host and its manual page), dev (public
# headers, pkg-config file, CMake package). CPack makes three packages of them:
#   libtarvo-api-check-engine      runtime + database
#   tarvo-api-check                tool
#   libtarvo-api-check-engine-dev  dev
# With -DTARVO_DB_CONFFILE=/etc/... the database is installed there (a
# configuration file of the package) and the engine's fixed path becomes a
# link to it; scripts/package.sh does that.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TARVO_DB_CONFFILE "" CACHE STRING "Install the database here and link the fixed database path to it")
set(TARVO_PACKAGE_NAME libtarvo-api-check-engine)
set(TARVO_DOC_SOURCES ${PROJECT_SOURCE_DIR}/packaging/copyright ${CMAKE_BINARY_DIR}/packaging/changelog.Debian.gz)

# Compressed as Debian wants them, without a time stamp.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging)
foreach(text tarvo-api-check.1 changelog.Debian)
  string(REPLACE ".Debian" "" source ${text})
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/packaging/${text}.gz
    COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/packaging/${source} > ${CMAKE_BINARY_DIR}/packaging/${text}.gz
    DEPENDS ${PROJECT_SOURCE_DIR}/packaging/${source} VERBATIM)
endforeach()
add_custom_target(tarvo_packaging_texts ALL DEPENDS
  ${CMAKE_BINARY_DIR}/packaging/tarvo-api-check.1.gz ${CMAKE_BINARY_DIR}/packaging/changelog.Debian.gz)

# The library: a shared object is not executable.
install(TARGETS tarvo-api-check-engine LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ COMPONENT runtime)
install(FILES ${TARVO_DOC_SOURCES} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${TARVO_PACKAGE_NAME} COMPONENT runtime)

get_filename_component(TARVO_DB_DIR "${TARVO_DB_PATH}" DIRECTORY)
get_filename_component(TARVO_DB_NAME "${TARVO_DB_PATH}" NAME)
if(TARVO_DB_CONFFILE)
  get_filename_component(conffile_dir "${TARVO_DB_CONFFILE}" DIRECTORY)
  get_filename_component(conffile_name "${TARVO_DB_CONFFILE}" NAME)
  install(FILES data/APIAnalEngineDB.xml DESTINATION "${conffile_dir}" RENAME "${conffile_name}" COMPONENT database)
  install(CODE "
    file(MAKE_DIRECTORY \"\$ENV{DESTDIR}${TARVO_DB_DIR}\")
    file(CREATE_LINK \"${TARVO_DB_CONFFILE}\" \"\$ENV{DESTDIR}${TARVO_DB_PATH}\" SYMBOLIC)" COMPONENT database)
  file(WRITE ${CMAKE_BINARY_DIR}/packaging/conffiles "${TARVO_DB_CONFFILE}\n")
else()
  install(FILES data/APIAnalEngineDB.xml DESTINATION "${TARVO_DB_DIR}" RENAME "${TARVO_DB_NAME}" COMPONENT database)
endif()

if(TARVO_BUILD_TOOLS)
  install(TARGETS tarvo-api-check RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  install(FILES ${CMAKE_BINARY_DIR}/packaging/tarvo-api-check.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
  install(FILES ${TARVO_DOC_SOURCES} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/tarvo-api-check COMPONENT tool)
endif()

file(GLOB TARVO_PUBLIC_HEADERS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/tarvo/*.h)
install(FILES ${TARVO_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tarvo COMPONENT dev)
configure_file(packaging/tarvo-api-check-engine.pc.in ${CMAKE_BINARY_DIR}/packaging/tarvo-api-check-engine.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/packaging/tarvo-api-check-engine.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT dev)
set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TarvoApiCheckEngine)
configure_package_config_file(packaging/TarvoApiCheckEngineConfig.cmake.in
  ${CMAKE_BINARY_DIR}/packaging/TarvoApiCheckEngineConfig.cmake INSTALL_DESTINATION ${cmake_dir}
  PATH_VARS CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/packaging/TarvoApiCheckEngineConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/packaging/TarvoApiCheckEngineConfig.cmake
  ${CMAKE_BINARY_DIR}/packaging/TarvoApiCheckEngineConfigVersion.cmake DESTINATION ${cmake_dir} COMPONENT dev)
install(FILES ${TARVO_DOC_SOURCES} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${TARVO_PACKAGE_NAME}-dev COMPONENT dev)

# Debian packages.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvo-api-check)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Tarvo API check developers <tarvo-api-check@lumeric.example>")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
if(CMAKE_CROSSCOMPILING AND CMAKE_LIBRARY_ARCHITECTURE STREQUAL "arm-linux-gnueabihf")
  # dpkg-shlibdeps cannot read the cross sysroot's package data: the
  # dependencies are those it finds for the native build of the same release.
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
  set(TARVO_LIBRARY_DEPENDS
    "libc6 (>= 2.34), libgcc-s1 (>= 3.0), libminizip1 (>= 1.1), libstdc++6 (>= 11), libtinyxml2.6.2v5 (>= 2.6.2), zlib1g (>= 1:1.1.4)")
  set(TARVO_TOOL_DEPENDS "libc6 (>= 2.34), libgcc-s1 (>= 3.0), libstdc++6 (>= 5.2)")
else()
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()
set(tarvo_deb_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${TARVO_PACKAGE_NAME})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "${TARVO_LIBRARY_DEPENDS}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
if(TARVO_DB_CONFFILE)
  list(APPEND CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/packaging/conffiles)
endif()
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "API check engine of the Tarvo TV platform
The library that the platform's application review loads to vet downloadable
web applications: it expands their zip packages, finds the calls that their
script (HTML, JavaScript, Flash SWF) makes on platform plug-in objects and
reports every call of an API that its database does not document. The
package holds the library and that database.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME tarvo-api-check)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${TARVO_PACKAGE_NAME} (= ${tarvo_deb_version})")
if(TARVO_TOOL_DEPENDS)
  string(PREPEND CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${TARVO_TOOL_DEPENDS}, ")
endif()
set(CPACK_DEBIAN_TOOL_DESCRIPTION "check TV web applications for undocumented API calls
A command-line host of the Tarvo API check engine for the people who write
and review applications of the Tarvo TV platform: it checks an application
(files, zip packages or directories) and prints one line for each call of a
platform API that the database does not document. It also lists the actions
of Flash SWF files and the plug-in calls rebuilt from them.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME ${TARVO_PACKAGE_NAME}-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${TARVO_PACKAGE_NAME} (= ${tarvo_deb_version})")
set(CPACK_DEBIAN_DEV_DESCRIPTION "API check engine of the Tarvo TV platform (development files)
Headers for programs that load the Tarvo API check engine: the host
interface, the documented analysis interface (every finding with its file,
line and plug-in; a work directory of its own) and the regular-expression
operations, with a pkg-config file
(tarvo-api-check-engine) and a CMake package (TarvoApiCheckEngine).")

include(CPack)
cpack_add_component_group(library)
cpack_add_component_group(tool)
cpack_add_component_group(dev)
cpack_add_component(runtime GROUP library)
cpack_add_component(database GROUP library)
cpack_add_component(tool GROUP tool)
cpack_add_component(dev GROUP dev)
