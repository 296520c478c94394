# The headers of the libraries, read once instead of with every file: they are half of a compilation. A file
# that forgets an include compiles with them all the same; what people run is built without, and so notices,
# and so does ./dev lint.
option(BRINDLE_PRECOMPILED_HEADERS "Read the libraries' headers once (hides a forgotten include)" OFF)

set(precompiled_headers
  <algorithm> <array> <chrono> <compare> <cstdint> <filesystem> <functional> <future> <map> <memory> <mutex>
  <numeric> <optional> <random> <ranges> <set> <span> <stdexcept> <string> <string_view> <thread> <unordered_map>
  <utility> <variant> <vector> <fmt/format.h> <nlohmann/json.hpp>)
set(precompiled_qt_headers
  <QAbstractListModel> <QByteArray> <QDBusConnection> <QList> <QObject> <QString> <QStringList> <QVariant>)
set(precompiled_test_headers <gmock/gmock.h> <gtest/gtest.h> <fstream>)

function(brindle_add_precompiled name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LIBRARIES")
  set(empty ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp)
  file(CONFIGURE OUTPUT ${empty} CONTENT "")
  add_library(brindle_precompiled_${name} OBJECT EXCLUDE_FROM_ALL ${empty})
  target_link_libraries(brindle_precompiled_${name} PRIVATE fmt::fmt nlohmann_json::nlohmann_json
    ${arg_LIBRARIES} brindle_warnings)
  target_precompile_headers(brindle_precompiled_${name} PRIVATE ${precompiled_headers} ${arg_HEADERS})
endfunction()

if(BRINDLE_PRECOMPILED_HEADERS)
  # Of precompiled headers g++ forgets that they are the system's, and warns of what it sees in them.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(brindle_warnings INTERFACE
      -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
  brindle_add_precompiled(core)
  brindle_add_precompiled(cli HEADERS <CLI/CLI.hpp> LIBRARIES CLI11::CLI11)
  if(BRINDLE_DESKTOP)
    brindle_add_precompiled(qt HEADERS ${precompiled_qt_headers} LIBRARIES Qt6::Core Qt6::DBus)
    target_compile_definitions(brindle_precompiled_qt PRIVATE QT_NO_KEYWORDS)
  endif()
  if(BRINDLE_TESTS)
    brindle_add_precompiled(core_tests HEADERS ${precompiled_test_headers} LIBRARIES GTest::gmock)
  endif()
  if(BRINDLE_TESTS AND BRINDLE_DESKTOP)
    brindle_add_precompiled(qt_tests HEADERS ${precompiled_qt_headers} ${precompiled_test_headers}
      LIBRARIES Qt6::Core Qt6::DBus GTest::gmock)
    target_compile_definitions(brindle_precompiled_qt_tests PRIVATE QT_NO_KEYWORDS)
  endif()
endif()

# brindle_use_precompiled(<target> <libraries that it links> [_tests])
function(brindle_use_precompiled target libraries)
  if(BRINDLE_PRECOMPILED_HEADERS)
    set(kind core)
    if("${libraries}" MATCHES "Qt6::")
      set(kind qt)
    elseif("${libraries}" MATCHES "CLI11::")
      set(kind cli)
    endif()
    target_precompile_headers(${target} REUSE_FROM brindle_precompiled_${kind}${ARGN})
  endif()
endfunction()
