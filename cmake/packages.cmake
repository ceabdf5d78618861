# The Debian packages that cpack makes (scripts/package): one of each component of the installation.

set(TARVO_MAINTAINER "Tarvo maintainers <maintainers@tarvo.example>" CACHE STRING "Who packages are from")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library development)
if(NOT TARVO_HOST_LIBRARY)
  list(APPEND CPACK_COMPONENTS_ALL checker)
endif()
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_CONTACT ${TARVO_MAINTAINER})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/package-documents.cmake)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libtarvo-api-check-engine)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "check web applications for undocumented platform APIs, library
The engine that a host service for television applications loads. It finds
every method that an application's scripts and Flash movies call on a platform
plug-in, and looks it up in a database of documented APIs.")
file(WRITE ${CMAKE_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtarvo-api-check-engine-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libtarvo-api-check-engine (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "check web applications for undocumented platform APIs, headers
What it takes to build a host for libtarvo-api-check-engine: headers, and
files for CMake and pkg-config.")

set(CPACK_DEBIAN_CHECKER_PACKAGE_NAME tarvo-check)
set(CPACK_DEBIAN_CHECKER_PACKAGE_SECTION devel)
set(CPACK_COMPONENT_CHECKER_DESCRIPTION "check web applications for undocumented platform APIs
Finds calls of undocumented platform APIs in web applications for televisions,
before they may run: for stores, build pipelines and authors. It has the same
engine as the devices, and does not need their library.")

include(CPack)
