# Makes what is packed the same whoever packs it: pages and logs are compressed as Debian has them, and all files have the
# time of the commit, when SOURCE_DATE_EPOCH says it.
file(GLOB_RECURSE entries LIST_DIRECTORIES ON ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(entry IN LISTS entries)
  if(entry MATCHES "/share/man/.*\\.[0-9]$|/share/doc/.*/(changelog|.*\\.md|.*NOTICES\\.txt)$")
    execute_process(COMMAND gzip --best --no-name ${entry} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
                  COMMAND_ERROR_IS_FATAL ANY)
endif()
