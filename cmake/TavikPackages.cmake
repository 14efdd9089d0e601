# Debian packages: the library by itself, named after the version that programs are linked with, and what a build needs.
# scripts/package makes them.

# Components of every install rule.
set(TAVIK_RUNTIME tavik_runtime)
set(TAVIK_DEVELOPMENT tavik_development)

# Programs built with one version run with every other of the same number here.
set(TAVIK_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL ${TAVIK_RUNTIME} ${TAVIK_DEVELOPMENT})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "The Tavik developers")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

string(TOUPPER ${TAVIK_RUNTIME} component)
set(CPACK_COMPONENT_${component}_DESCRIPTION "This package holds the library that programs run with.")
set(CPACK_DEBIAN_${component}_PACKAGE_NAME libtavik${TAVIK_SOVERSION})
set(CPACK_DEBIAN_${component}_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_${component}_PACKAGE_SHLIBDEPS ON)
# Packages of programs that are linked with the library find this one through it.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# Public headers include nothing but the C and C++ libraries, and neither the CMake package nor the pkg-config file asks
# for another.
string(TOUPPER ${TAVIK_DEVELOPMENT} component)
set(CPACK_COMPONENT_${component}_DESCRIPTION "This package holds what programs are built with: headers, a CMake package and a pkg-config file.")
set(CPACK_DEBIAN_${component}_PACKAGE_NAME libtavik-dev)
set(CPACK_DEBIAN_${component}_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_${component}_PACKAGE_DEPENDS "libtavik${TAVIK_SOVERSION} (= ${PROJECT_VERSION}), libc6-dev")
set(CPACK_DEBIAN_${component}_PACKAGE_SUGGESTS "cmake (>= 3.25), pkg-config, libgl-dev, libtinyxml-dev")

if(PROJECT_IS_TOP_LEVEL)
  include(CPack)
endif()
