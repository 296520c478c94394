# A folder under src/ is a layer, a layer is a target.

# brindle_layer(<name> SOURCES <file>... [LAYERS <layer>...] [LIBRARIES <target>...])
#
# LAYERS is the whole list of layers whose headers the files of this one may include. Each layer is
# reached through a folder of links of its own, so that a header of a layer that is not linked is not
# found; tools/check_layers.py holds every include line against the same lists.
function(brindle_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LAYERS;LIBRARIES")
  set(include_root ${CMAKE_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${include_root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_root}/${name} SYMBOLIC)

  add_library(brindle_${name} STATIC ${arg_SOURCES})
  target_include_directories(brindle_${name} PUBLIC ${include_root})
  list(TRANSFORM arg_LAYERS PREPEND brindle_)
  target_link_libraries(brindle_${name} PUBLIC ${arg_LAYERS} ${arg_LIBRARIES} PRIVATE brindle_warnings)
  brindle_use_precompiled(brindle_${name} "${arg_LIBRARIES}")
endfunction()

# brindle_test(<name> SOURCES <file>... LAYERS <layer>... [LIBRARIES <target>...] [PROPERTIES <name> <value>...])
#
# One GoogleTest program; every case is a test of CTest.
function(brindle_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LAYERS;LIBRARIES;PROPERTIES")
  add_executable(${name} ${arg_SOURCES})
  list(TRANSFORM arg_LAYERS PREPEND brindle_)
  target_link_libraries(${name} PRIVATE ${arg_LAYERS} ${arg_LIBRARIES} GTest::gmock GTest::gtest_main brindle_warnings)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  brindle_use_precompiled(${name} "${arg_LIBRARIES}" _tests)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES
    PROPERTIES TIMEOUT 300 ENVIRONMENT LC_ALL=C.UTF-8 ${arg_PROPERTIES})
endfunction()
