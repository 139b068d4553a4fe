# What all libraries of the project, and their parts, are compiled with.

# The old floating-point unit of 32-bit x86 rounds to double only what is stored; SSE2 always does.
include(CheckCXXSourceCompiles)
check_cxx_source_compiles("#ifndef __i386__\n#error\n#endif\nint main() {}" VORN3D_ON_32_BIT_X86)

# The exact predicates need every product and sum rounded once, to double: no contraction, no fast-math.
set(VORN3D_ARITHMETIC -ffp-contract=off)
if(VORN3D_ON_32_BIT_X86)
  list(APPEND VORN3D_ARITHMETIC -msse2 -mfpmath=sse)
endif()

# Source paths in assertion reports are relative to the project.
# A client's project without a build type gets an optimised library, too.
function(vorn3d_set_compile_options target)
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_compile_options(${target} PRIVATE ${VORN3D_ARITHMETIC} -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= $<$<CONFIG:>:-O2>)
  target_compile_definitions(${target} PRIVATE VORN3D_DIAGNOSTIC=$<BOOL:${VORN3D_DIAGNOSTIC}>)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  vorn3d_enable_warnings(${target})
endfunction()

# A library that clients link with, as Vorn3D::NAME: its public headers, what a shared one is called and exports. The
# macro BUILDING marks the compilation of a shared one.
function(vorn3d_set_library_options target name building)
  vorn3d_set_compile_options(${target})
  add_library(Vorn3D::${name} ALIAS ${target})
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:include>)
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    EXPORT_NAME ${name})

  get_target_property(library_type ${target} TYPE)
  if(library_type STREQUAL "STATIC_LIBRARY")
    target_compile_definitions(${target} PUBLIC VORN3D_STATIC)
  else()
    target_compile_definitions(${target} PRIVATE ${building})
    if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
      set(map ${PROJECT_SOURCE_DIR}/dt3Library/vorn3d.map)
      target_link_options(${target} PRIVATE LINKER:--version-script=${map})
      set_target_properties(${target} PROPERTIES LINK_DEPENDS ${map})
    endif()
  endif()
endfunction()

# The target NAME: what tests of the private classes of LIBRARY need beside it, which includes its headers from the
# directories. A shared library hides these classes: the target exists in static builds.
function(vorn3d_open_to_tests name library)
  get_target_property(library_type ${library} TYPE)
  if(library_type STREQUAL "STATIC_LIBRARY")
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${library})
    target_include_directories(${name} INTERFACE ${ARGN})
    target_compile_definitions(${name} INTERFACE VORN3D_DIAGNOSTIC=$<BOOL:${VORN3D_DIAGNOSTIC}>)
    target_compile_options(${name} INTERFACE ${VORN3D_ARITHMETIC})
  endif()
endfunction()
