# Debian packages by CPack: libvorn3d<soname>, libvorn3d-dev and vorn3d, from the components of Install.cmake.
# The preset `package` configures the build that they hold.
set(soname_version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The Vorn3D developers")
set(CPACK_PACKAGE_CONTACT "The Vorn3D developers")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development program)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_COMPONENT_PROGRAM_DEPENDS library)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/dt3Library ${PROJECT_BINARY_DIR}/geometry)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libvorn3d${soname_version})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "This package holds the shared libraries.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvorn3d-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "This package holds the headers and what CMake and pkg-config read.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME vorn3d)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION math)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "This package holds the program for files of points.")

# Debian looks for the licence under the package's name.
foreach(component IN ITEMS library development program)
  string(TOUPPER ${component} key)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE RENAME copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${key}_PACKAGE_NAME}
    COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
