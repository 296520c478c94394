# Compiler flags of every target. Warnings are errors, with g++ and with clang. A designated initialiser
# that leaves fields at their defaults is meant so.
add_library(brindle_warnings INTERFACE)
target_compile_options(brindle_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wformat=2
  -Wno-missing-field-initializers)

if(BRINDLE_SANITIZE)
  add_compile_options(-fsanitize=${BRINDLE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${BRINDLE_SANITIZE})
endif()
