# Writes the header OUTPUT with the VERSION and with the commit that ROOT has checked out, its date in UTC. Without git, or
# when ROOT is no repository of its own, both are empty. A header that says so already is left alone.
set(commit "")
set(date "")
find_program(git NAMES git)
if(git)
  execute_process(COMMAND ${git} -C ${ROOT} rev-parse --show-toplevel
                  OUTPUT_VARIABLE top OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  file(REAL_PATH ${ROOT} root)
  if(top STREQUAL root)
    set(ENV{TZ} UTC)
    execute_process(COMMAND ${git} -C ${ROOT} log -1 --abbrev=12 --date=format-local:%Y-%m-%d "--format=%h;%cd"
                    OUTPUT_VARIABLE head OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    list(LENGTH head parts)
    if(parts EQUAL 2)
      list(GET head 0 commit)
      list(GET head 1 date)
      execute_process(COMMAND ${git} -C ${ROOT} diff --quiet HEAD RESULT_VARIABLE changed ERROR_QUIET)
      if(changed)
        string(APPEND commit " with changes")
      endif()
    endif()
  endif()
endif()
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT [=[
#pragma once

#include <string_view>

/// What was built, for people to tell.
namespace BuildVersion {
inline constexpr std::string_view number = "@VERSION@";
inline constexpr std::string_view commit = "@commit@";  ///< empty when not known
inline constexpr std::string_view date = "@date@";  ///< of the commit: "2026-01-05"
}  // namespace BuildVersion
]=] @ONLY)
