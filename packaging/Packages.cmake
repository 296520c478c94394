# The Debian packages that ./dev package makes: brindle for the terminal, brindle-desktop for the window.
set(BRINDLE_PACKAGE_REVISION 1 CACHE STRING "What tells packages of the same version apart")
set(BRINDLE_MAINTAINER "The Brindle developers <developers@brindle.invalid>" CACHE STRING "Who answers for the packages")
set(packages brindle)
set(components terminal)
if(BRINDLE_DESKTOP)
  list(APPEND packages brindle-desktop)
  list(APPEND components desktop)
endif()

configure_file(debian/changelog.in changelog.Debian @ONLY)
foreach(package component IN ZIP_LISTS packages components)
  set(documents ${CMAKE_INSTALL_DATADIR}/doc/${package})
  configure_file(debian/lintian-overrides.in lintian/${package} @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/lintian/${package} DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
    COMPONENT ${component})
  install(FILES debian/copyright DESTINATION ${documents} COMPONENT ${component})
  install(FILES ${CMAKE_SOURCE_DIR}/CHANGELOG.md DESTINATION ${documents} RENAME changelog COMPONENT ${component})
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian DESTINATION ${documents} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brindle)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "private, local history of where disk space goes")
set(CPACK_PACKAGE_CONTACT ${BRINDLE_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/FinishFiles.cmake)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${BRINDLE_PACKAGE_REVISION})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# What debuggers want is in packages of its own.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)

set(CPACK_DEBIAN_TERMINAL_PACKAGE_NAME brindle)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_SUGGESTS "brindle-desktop")
set(CPACK_DEBIAN_TERMINAL_DESCRIPTION "Brindle checks the folders and drives that you include: it reads the sizes,
dates and paths of the files in them, compares them with the check before,
and records what was added, grew, shrank or went away. It never reads what
is in a file, and nothing leaves the computer.
.
This package holds the terminal program, which needs no desktop, and units
with which systemd checks on a schedule where a user wants that.")

# Which QML modules and fonts the window loads is nowhere in its symbols.
set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME brindle-desktop)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_SECTION utils)
set(window_modules qtqml qtqml-models qtqml-workerscript qtquick qtquick-controls qtquick-layouts
  qtquick-templates qtquick-window)
list(TRANSFORM window_modules PREPEND qml6-module-)
list(JOIN window_modules ", " window_modules)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS
  "brindle (= ${PROJECT_VERSION}-${BRINDLE_PACKAGE_REVISION}), ${window_modules}, qt6-qpa-plugins, fonts-inter")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS
  "default-dbus-session-bus | dbus-session-bus, qt6-wayland, qt6-gtk-platformtheme | qt6-xdgdesktopportal-platformtheme, xdg-utils")
set(CPACK_DEBIAN_DESKTOP_DESCRIPTION "Brindle checks the folders and drives that you include: it reads the sizes,
dates and paths of the files in them, compares them with the check before,
and records what was added, grew, shrank or went away. It never reads what
is in a file, and nothing leaves the computer.
.
This package holds the window, which shows the history by day, week, month
and quarter, and checks on its own while it runs.")
include(CPack)
