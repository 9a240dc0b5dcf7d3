# Fails if a host is shown a folder of headers that are the library's own.
foreach(folder IN LISTS FOLDERS)
  if(folder MATCHES "/layers/")
    message(FATAL_ERROR "A host sees ${folder}")
  endif()
endforeach()
