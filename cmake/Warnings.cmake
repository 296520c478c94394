# Compiler flags of every target. Warnings are errors, with g++ and with clang. A designated initialiser
# that leaves fields at their defaults is meant so.
add_library(brindle_warnings INTERFACE)
target_compile_options(brindle_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wformat=2
  -Wno-missing-field-initializers)

# clang holds names of one file against those of the next that is compiled with it, headers between them; g++
# looks for shadows well enough for both.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(brindle_warnings INTERFACE -Wno-shadow)
endif()

if(BRINDLE_SANITIZE)
  add_compile_options(-fsanitize=${BRINDLE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${BRINDLE_SANITIZE})
  # g++ says of itself that sanitizers make it see uninitialised values where there are none; the everyday
  # build, which goes without them, keeps the warning.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(brindle_warnings INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
