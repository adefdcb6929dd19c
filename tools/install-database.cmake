# Copies the delivered database into the program's Data folder when none is there.
if(NOT EXISTS "${TARGET}")
  get_filename_component(folder "${TARGET}" DIRECTORY)
  file(MAKE_DIRECTORY "${folder}")
  file(COPY_FILE "${SOURCE}" "${TARGET}")
  message(STATUS "Delivered database installed at ${TARGET}")
endif()
