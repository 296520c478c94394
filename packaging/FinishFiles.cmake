# Run by cpack on the installed files before it packs them: compresses what Debian has compressed, and dates
# every file, so that packages of one source are the same, byte for byte.
file(GLOB_RECURSE manuals "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/man/*.[1-9]")
file(GLOB changelogs
  "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/doc/*/changelog"
  "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/doc/*/changelog.Debian")
execute_process(COMMAND gzip --best --no-name ${manuals} ${changelogs} COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
  COMMAND_ERROR_IS_FATAL ANY)
