# brindle_qml_module(<folder> QML_FILES <file>... [SOURCES <file>...] [MODULES <folder>...]
#                    [LAYERS <layer>...] [LIBRARIES <target>...])
#
# The folder src/ui/<folder> as the QML module Brindle.<Folder>, with the C++ of the same folder. MODULES is
# the whole list of other folders of ui/ whose QML and headers its files may use, LAYERS that of the layers.
# The module is the target brindle_ui_<folder>; programs import it by ui/windows/QmlModules.h.
function(brindle_qml_module folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "QML_FILES;SOURCES;MODULES;LAYERS;LIBRARIES")
  string(SUBSTRING ${folder} 0 1 initial)
  string(TOUPPER ${initial} initial)
  string(SUBSTRING ${folder} 1 -1 rest)
  set(name ${initial}${rest})
  set(target brindle_ui_${folder})

  set(uses QtQuick)
  foreach(module IN LISTS arg_MODULES)
    string(SUBSTRING ${module} 0 1 initial)
    string(TOUPPER ${initial} initial)
    string(SUBSTRING ${module} 1 -1 rest)
    list(APPEND uses Brindle.${initial}${rest})
  endforeach()

  # QML compiled ahead starts faster, and takes a minute to build: what is only tested goes without.
  set(cachegen)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    set(cachegen NO_CACHEGEN)
  endif()
  qt_add_library(${target} STATIC)
  set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOMOC_MOC_OPTIONS "--include;string")
  qt_add_qml_module(${target}
    URI Brindle.${name}
    VERSION 1.0
    ${cachegen}
    RESOURCE_PREFIX /qt/qml
    OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/Brindle/${name}
    IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
    DEPENDENCIES ${uses}
    QML_FILES ${arg_QML_FILES}
    SOURCES ${arg_SOURCES})

  set(include_root ${CMAKE_BINARY_DIR}/include/ui)
  file(MAKE_DIRECTORY ${include_root})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/ui ${include_root}/ui SYMBOLIC)
  # The generated registration of types includes headers by their bare names.
  target_include_directories(${target} PUBLIC ${include_root} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  list(TRANSFORM arg_LAYERS PREPEND brindle_)
  list(TRANSFORM arg_MODULES PREPEND brindle_ui_)
  target_link_libraries(${target} PUBLIC ${arg_MODULES} ${arg_LAYERS} ${arg_LIBRARIES} Qt6::Quick)
  target_compile_definitions(${target} PUBLIC QT_NO_KEYWORDS)
  brindle_use_precompiled(${target} Qt6::Quick)
  # Warnings are for what is written here, not for what Qt's tools generate into the same target.
  set_source_files_properties(${arg_SOURCES} TARGET_DIRECTORY ${target} PROPERTIES
    COMPILE_OPTIONS "$<TARGET_PROPERTY:brindle_warnings,INTERFACE_COMPILE_OPTIONS>")
endfunction()
