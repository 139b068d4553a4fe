# Warnings for our own targets only; a client that adds this project as a subdirectory keeps its own.
function(vorn3d_enable_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                           -Wnon-virtual-dtor -Wold-style-cast)
endfunction()
