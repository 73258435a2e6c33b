# Where the program looks for updates. Without a feed it never does: "Check for Updates…" says that it could not.
set(QUORVANE_FEED_URL "" CACHE STRING "The address of the update feed, https; empty for a program without updates")
set(QUORVANE_FEED_PUBLIC_KEY "" CACHE STRING "The EdDSA public key that updates are signed with, for macOS")

# What is wrong with the two settings, for a build for macOS or not; empty when nothing is.
function(quorvane_check_feed for_macos result)
  set(problem "")
  set(loopback "^http://(localhost|127\\.[0-9.]+|\\[::1\\])(:[0-9]+)?(/|$)")
  if(QUORVANE_FEED_URL AND NOT QUORVANE_FEED_URL MATCHES "^https://[^/]" AND NOT QUORVANE_FEED_URL MATCHES "${loopback}")
    set(problem "QUORVANE_FEED_URL must be https, or http on the loopback address: ${QUORVANE_FEED_URL}")
  elseif(QUORVANE_FEED_URL AND for_macos AND NOT QUORVANE_FEED_PUBLIC_KEY)
    set(problem "QUORVANE_FEED_URL needs QUORVANE_FEED_PUBLIC_KEY: Sparkle installs only what is signed")
  endif()
  set(${result} "${problem}" PARENT_SCOPE)
endfunction()

# Writes the property list of the program's bundle on macOS. Sparkle reads its feed, key and schedule there.
function(quorvane_write_property_list template path)
  set(quorvane_update_keys "")
  if(QUORVANE_FEED_URL)
    string(REPLACE "&" "&amp;" feed "${QUORVANE_FEED_URL}")
    string(REPLACE "<" "&lt;" feed "${feed}")
    set(quorvane_update_keys "\
	<key>SUEnableAutomaticChecks</key>
	<true/>
	<key>SUFeedURL</key>
	<string>${feed}</string>
	<key>SUPublicEDKey</key>
	<string>${QUORVANE_FEED_PUBLIC_KEY}</string>
	<key>SUScheduledCheckInterval</key>
	<integer>86400</integer>
")
  endif()
  configure_file("${template}" "${path}" @ONLY)
endfunction()
