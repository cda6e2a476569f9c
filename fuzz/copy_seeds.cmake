# Copies the files SAMPLE and FULL, those that exist, into the folder SEEDS (made if missing).
file(MAKE_DIRECTORY ${SEEDS})
foreach(f IN ITEMS "${SAMPLE}" "${FULL}")
  if(EXISTS "${f}")
    file(COPY "${f}" DESTINATION "${SEEDS}")
  endif()
endforeach()
