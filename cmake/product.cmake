# What ships: the two programs, and the folder they stand in.

# The Windows adapter, a library so that the contract tests can try it too.
file(GLOB win32_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/win32/*.cpp)
list(FILTER win32_sources EXCLUDE REGEX "/main\\.cpp$")
pavoline_ring(win32 SOURCES ${win32_sources} USES pavoline_form)
target_link_libraries(pavoline_win32 PUBLIC comctl32 comdlg32 gdi32 ole32 shell32)

# Resources are compiled anew when a picture or manifest that they take in changes.
file(GLOB resource_parts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*.manifest
     ${PROJECT_SOURCE_DIR}/resources/*.rc2 ${PROJECT_SOURCE_DIR}/resources/*.h
     ${PROJECT_SOURCE_DIR}/resources/icons/*.ico)
function(pavoline_resources target script)
  target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/resources/${script})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/resources
                                               ${PROJECT_BINARY_DIR}/generated)
  set_source_files_properties(${PROJECT_SOURCE_DIR}/resources/${script} PROPERTIES OBJECT_DEPENDS
                              "${resource_parts};${PROJECT_BINARY_DIR}/generated/version.h")
endfunction()

add_executable(Pavoline WIN32 src/win32/main.cpp)
target_compile_options(Pavoline PRIVATE ${PAVOLINE_WARNINGS})
target_link_options(Pavoline PRIVATE -municode)
target_link_libraries(Pavoline PRIVATE pavoline_app pavoline_win32)
target_precompile_headers(Pavoline REUSE_FROM pavoline_platform)
pavoline_resources(Pavoline pavoline.rc)

file(GLOB cxdir_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/cxdir/*.cpp)
add_executable(CxDir ${cxdir_sources} src/win32/volume_number.cpp src/win32/wide_text.cpp)
target_include_directories(CxDir PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(CxDir PRIVATE ${PAVOLINE_WARNINGS})
target_link_options(CxDir PRIVATE -municode)
target_precompile_headers(CxDir REUSE_FROM pavoline_platform)
pavoline_resources(CxDir cxdir.rc)

# The application folder. "x64" or "x86": the folder of the tools of this build.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(PAVOLINE_ARCH x64)
else()
  set(PAVOLINE_ARCH x86)
endif()
file(GLOB lang_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/lang/*.lng)
file(GLOB help_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/help/*.html)
file(GLOB_RECURSE app_parts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/app/*)
set(app_stamp ${PROJECT_BINARY_DIR}/app.stamp)
add_custom_command(
  OUTPUT ${app_stamp}
  COMMAND ${PROJECT_SOURCE_DIR}/tools/lay-out-app $<TARGET_FILE:Pavoline> $<TARGET_FILE:CxDir>
          ${PAVOLINE_ARCH} ${PROJECT_BINARY_DIR}/app
  COMMAND ${CMAKE_COMMAND} -E touch ${app_stamp}
  DEPENDS Pavoline CxDir ${lang_sources} ${help_pages} ${app_parts}
          ${PROJECT_SOURCE_DIR}/tools/lay-out-app ${PROJECT_SOURCE_DIR}/tools/build-lang
          ${PROJECT_SOURCE_DIR}/tools/lang-lines.awk ${PROJECT_SOURCE_DIR}/src/form/text_list.h
          ${PROJECT_SOURCE_DIR}/LICENSE
  VERBATIM)
add_custom_target(app ALL DEPENDS ${app_stamp})
