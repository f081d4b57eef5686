# Figures of the core on the real adapter; the bench runs it.
add_executable(core_figures EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/bench/figures/core_figures.cpp)
target_compile_options(core_figures PRIVATE ${PAVOLINE_WARNINGS})
target_link_options(core_figures PRIVATE -municode)
target_link_libraries(core_figures PRIVATE pavoline_app pavoline_win32)
