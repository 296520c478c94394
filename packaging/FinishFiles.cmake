# Run by cpack on the installed files before it packs them: compresses what Debian has compressed.
file(GLOB_RECURSE manuals "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/man/*.[1-9]")
file(GLOB changelogs
  "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/doc/*/changelog"
  "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/doc/*/changelog.Debian")
execute_process(COMMAND gzip --best --no-name ${manuals} ${changelogs} COMMAND_ERROR_IS_FATAL ANY)
