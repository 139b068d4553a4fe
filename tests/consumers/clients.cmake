# The same client built without and with NDEBUG, as tests of a project that has found Vorn3D in its own way.
enable_testing()
foreach(ndebug IN ITEMS -UNDEBUG -DNDEBUG)
  set(client client${ndebug})
  add_executable(${client} ${CMAKE_CURRENT_LIST_DIR}/client.cpp)
  target_compile_options(${client} PRIVATE -Wall -Wextra -Wpedantic -Werror ${ndebug})
  target_link_libraries(${client} PRIVATE Vorn3D::geometry)
  add_test(NAME ${client} COMMAND ${client})
endforeach()

# What a client inherits: a path, a standard, macros with our prefix. Nothing else.
foreach(library IN ITEMS Vorn3D::vorn3d Vorn3D::geometry)
  get_target_property(options ${library} INTERFACE_COMPILE_OPTIONS)
  get_target_property(link_options ${library} INTERFACE_LINK_OPTIONS)
  get_target_property(definitions ${library} INTERFACE_COMPILE_DEFINITIONS)
  if(options OR link_options OR (definitions AND NOT definitions MATCHES "^VORN3D_[A-Z]+$"))
    message(FATAL_ERROR "${library} passes on: ${options} ${link_options} ${definitions}")
  endif()
endforeach()
