# The portable core: a static library per folder of src/.
function(pavoline_ring name)
  cmake_parse_arguments(RING "" "" "SOURCES;USES" ${ARGN})
  add_library(pavoline_${name} STATIC ${RING_SOURCES})
  set_target_properties(pavoline_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(pavoline_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/resources
                             ${PROJECT_BINARY_DIR}/generated)
  target_compile_options(pavoline_${name} PRIVATE ${PAVOLINE_WARNINGS})
  target_link_libraries(pavoline_${name} PUBLIC ${RING_USES})
  # A quarter of the time in the compiler went into these; all folders are compiled alike.
  if(NOT name STREQUAL platform)
    target_precompile_headers(pavoline_${name} REUSE_FROM pavoline_platform)
  else()
    target_precompile_headers(pavoline_${name} PRIVATE <algorithm> <array> <functional> <map> <memory>
                              <optional> <string> <vector>)
  endif()
endfunction()

set(pavoline_rings platform form session config run source disk engine postinstall install ui app)
foreach(folder ${pavoline_rings})
  file(GLOB ${folder}_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
endforeach()
# Each has a name of its own that a neighbour gives to something else.
set_source_files_properties(src/install/start_checks.cpp src/source/iso_mount.cpp
                            PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
configure_file(${PROJECT_SOURCE_DIR}/cmake/version.h.in ${PROJECT_BINARY_DIR}/generated/version.h)

pavoline_ring(platform SOURCES ${platform_sources})
pavoline_ring(form SOURCES ${form_sources} USES pavoline_platform)
pavoline_ring(session SOURCES ${session_sources} USES pavoline_form)
pavoline_ring(config SOURCES ${config_sources} USES pavoline_session)
pavoline_ring(run SOURCES ${run_sources} USES pavoline_config)
pavoline_ring(source SOURCES ${source_sources} USES pavoline_run)
pavoline_ring(disk SOURCES ${disk_sources} USES pavoline_run)
pavoline_ring(postinstall SOURCES ${postinstall_sources} USES pavoline_run)
pavoline_ring(engine SOURCES ${engine_sources} USES pavoline_run)
pavoline_ring(install SOURCES ${install_sources} USES pavoline_engine pavoline_postinstall pavoline_disk)
pavoline_ring(ui SOURCES ${ui_sources} USES pavoline_install pavoline_source)
pavoline_ring(app SOURCES ${app_sources} USES pavoline_ui)
