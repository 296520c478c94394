# When this version was released: CHANGELOG.md says so in its first heading, "## 0.1.0 (2026-11-21)".
file(STRINGS ${CMAKE_SOURCE_DIR}/CHANGELOG.md releases REGEX "^## [0-9.]+ \\([0-9-]+\\)$")
list(GET releases 0 release)
string(REGEX MATCH "([0-9.]+) \\(([0-9-]+)\\)" release "${release}")
set(BRINDLE_RELEASE_DATE ${CMAKE_MATCH_2})
if(NOT BRINDLE_OTHER_VERSION AND NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
  message(FATAL_ERROR "CHANGELOG.md tells of ${CMAKE_MATCH_1} first, and this is ${PROJECT_VERSION}.")
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/CHANGELOG.md)
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date --utc --date "${BRINDLE_RELEASE_DATE} 12:00" --rfc-email
  OUTPUT_VARIABLE BRINDLE_RELEASE_TIME OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
