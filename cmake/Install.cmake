# What cmake --install puts where. Components: library (the shared object), development, program.
#
# The static and the shared form may be installed into one prefix, from two build directories: the files that
# differ have different names.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(VORN3D_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Vorn3D)
get_target_property(library_type vorn3d TYPE)
if(library_type STREQUAL "STATIC_LIBRARY")
  set(form static)
else()
  set(form shared)
endif()

# Of the shared libraries, one finds the other beside it.
set_target_properties(vorn3d_geometry PROPERTIES INSTALL_RPATH $ORIGIN)
install(TARGETS vorn3d vorn3d_geometry EXPORT Vorn3D-library
  ARCHIVE COMPONENT development
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  RUNTIME COMPONENT library)
install(EXPORT Vorn3D-library NAMESPACE Vorn3D:: FILE Vorn3D-${form}.cmake
  DESTINATION ${VORN3D_CONFIG_DIR} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vorn3d TYPE INCLUDE COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vorn3d COMPONENT licence)

if(TARGET vorn3d_program)
  file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(vorn3d_program PROPERTIES EXPORT_NAME program INSTALL_RPATH $ORIGIN/${bin_to_lib})
  install(TARGETS vorn3d_program EXPORT Vorn3D-program RUNTIME COMPONENT program)
  install(EXPORT Vorn3D-program NAMESPACE Vorn3D:: FILE Vorn3D-program.cmake
    DESTINATION ${VORN3D_CONFIG_DIR} COMPONENT program)
endif()

# Before 1.0 a minor version may change the interface; so the soname, which has major and minor, says too.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/Vorn3DConfigVersion.cmake COMPATIBILITY SameMinorVersion)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/Vorn3DConfig.cmake.in
  ${PROJECT_BINARY_DIR}/Vorn3DConfig.cmake INSTALL_DESTINATION ${VORN3D_CONFIG_DIR})
install(FILES ${PROJECT_BINARY_DIR}/Vorn3DConfig.cmake ${PROJECT_BINARY_DIR}/Vorn3DConfigVersion.cmake
  DESTINATION ${VORN3D_CONFIG_DIR} COMPONENT development)

# The directories in the .pc files are relative to their own place, so that an installation can be moved.
set(VORN3D_PC_DIR ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH VORN3D_PC_TO_PREFIX ${VORN3D_PC_DIR} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH VORN3D_PREFIX_TO_LIB ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH VORN3D_PREFIX_TO_INCLUDE ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
foreach(library IN ITEMS vorn3d vorn3d_geometry)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()
