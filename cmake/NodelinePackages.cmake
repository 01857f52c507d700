# Debian packages: cpack in the build folder makes three of them from what the install rules call
# runtime, development and programs.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The nodeline developers <nodeline@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_COMPONENTS_ALL runtime development programs)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "libnodeline${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION} (libraries)")

set(development_needs "libnodeline${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
if(NODELINE_WITH_CAIRO)
    string(APPEND development_needs ", libcairo2-dev, libpango1.0-dev")
endif()
if(NODELINE_WITH_QT)
    string(APPEND development_needs ", qt6-base-dev")
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libnodeline-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${development_needs}")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "${PROJECT_DESCRIPTION} (for programs that use it)")

set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME nodeline)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PROGRAMS_DESCRIPTION "${PROJECT_DESCRIPTION} (programs)")

include(CPack)
