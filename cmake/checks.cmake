# Checks of the sources and of the programs, run with the tests.
if(WIN32)
  if(TARGET Pavoline AND TARGET CxDir)
    add_test(NAME check-imports
      COMMAND ${PROJECT_SOURCE_DIR}/tools/check-imports $<TARGET_FILE:Pavoline> $<TARGET_FILE:CxDir>)
  endif()
else()
  add_test(NAME check-headers COMMAND ${PROJECT_SOURCE_DIR}/tools/check-headers)
endif()
