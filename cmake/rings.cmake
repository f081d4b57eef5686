# The portable core: a static library per folder of src/. The command runner stands alone
# (with the taskbar progress) because every later ring starts programs through it.
function(pavoline_ring name)
  cmake_parse_arguments(RING "" "" "SOURCES;USES" ${ARGN})
  add_library(pavoline_${name} STATIC ${RING_SOURCES})
  set_target_properties(pavoline_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(pavoline_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/resources
                             ${PROJECT_BINARY_DIR}/generated)
  target_compile_options(pavoline_${name} PRIVATE ${PAVOLINE_WARNINGS})
  target_link_libraries(pavoline_${name} PUBLIC ${RING_USES})
endfunction()

foreach(folder platform form session config source disk engine postinstall ui app)
  file(GLOB ${folder}_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
endforeach()
set(ground_sources ${engine_sources})
list(FILTER ground_sources INCLUDE REGEX "command_runner|process_tools|text_mode_repair|mid_between|taskbar_progress")
list(FILTER engine_sources EXCLUDE REGEX "command_runner|process_tools|text_mode_repair|mid_between|taskbar_progress")

configure_file(${PROJECT_SOURCE_DIR}/cmake/version.h.in ${PROJECT_BINARY_DIR}/generated/version.h)

pavoline_ring(platform SOURCES ${platform_sources})
pavoline_ring(form SOURCES ${form_sources} USES pavoline_platform)
pavoline_ring(session SOURCES ${session_sources} USES pavoline_form)
pavoline_ring(config SOURCES ${config_sources} USES pavoline_session)
pavoline_ring(ground SOURCES ${ground_sources} USES pavoline_config)
pavoline_ring(source SOURCES ${source_sources} USES pavoline_ground)
pavoline_ring(disk SOURCES ${disk_sources} USES pavoline_ground)
pavoline_ring(postinstall SOURCES ${postinstall_sources} USES pavoline_ground)
pavoline_ring(engine SOURCES ${engine_sources} USES pavoline_postinstall)
pavoline_ring(ui SOURCES ${ui_sources} USES pavoline_engine pavoline_source pavoline_disk)
pavoline_ring(app SOURCES ${app_sources} USES pavoline_ui)
