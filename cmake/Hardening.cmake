# What makes a fault harder to misuse, for programs that others install: position-independent programs whose
# tables are read-only once they run, guarded stacks, checked calls of the C library. Paths of the machine that
# builds are left out, so that one source gives one program wherever it lies.
option(BRINDLE_HARDENING "Build what is packaged" OFF)

if(BRINDLE_HARDENING)
  include(CheckCXXCompilerFlag)
  include(CheckPIESupported)
  check_pie_supported()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER "has${flag}" found)
    check_cxx_compiler_flag(${flag} ${found})
    if(${found})
      add_compile_options(${flag})
    endif()
  endforeach()
  add_compile_options(-ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -Wformat -Werror=format-security -Wdate-time)
  add_compile_definitions(_FORTIFY_SOURCE=2)
  add_link_options(-Wl,-z,relro,-z,now -Wl,--as-needed)
endif()
