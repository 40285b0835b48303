# CPack runs this before it packs what it has installed. Compresses manual pages, as Debian requires, and sets the time
# of every file to SOURCE_DATE_EPOCH, if that is set, so that packages do not depend on when they were built.
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
