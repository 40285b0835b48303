# Run by CPack before it packs what it has installed: compresses manual pages, as Debian wants them, and gives every file the
# time SOURCE_DATE_EPOCH, if it is set, so that the time of the build does not get into the packages.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_DIRECTORY}/*.1")
list(FILTER pages INCLUDE REGEX "/man/man1/")
if(pages)
  execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
endif()
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(
    COMMAND find "${CPACK_TEMPORARY_DIRECTORY}" -exec touch --no-dereference "--date=@$ENV{SOURCE_DATE_EPOCH}" {} +
            COMMAND_ERROR_IS_FATAL ANY)
endif()
