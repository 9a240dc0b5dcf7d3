# Writes the catalogue data, with screenshots where their address on the web is known. Installed pictures can't be named:
# catalogues take addresses of the web alone, and refuse data with others (web-url-expected).
#
#   cmake -DFROM=<metainfo> -DTO=<file> [-DADDRESS=https://...] -P metainfo.cmake
file(READ ${FROM} text)
if(ADDRESS)
  set(screenshots "  <screenshots>\n")
  foreach(each "htmled.png|A page as it is written" "code-view.png|Its code" "print-preview.png|The page as it will be printed")
    string(REPLACE "|" ";" each "${each}")
    list(GET each 0 picture)
    list(GET each 1 caption)
    set(kind)
    if(picture STREQUAL "htmled.png")
      set(kind " type=\"default\"")
    endif()
    string(APPEND screenshots "    <screenshot${kind}>\n      <caption>${caption}</caption>\n"
      "      <image>${ADDRESS}/${picture}</image>\n    </screenshot>\n")
  endforeach()
  string(REPLACE "  <launchable" "${screenshots}  </screenshots>\n  <launchable" text "${text}")
endif()
file(WRITE ${TO} "${text}")
