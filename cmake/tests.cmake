# One test program per folder of tests/. Those of the core run on the machine that builds them;
# tests/contract also runs against the real adapter, and tests/e2e only there.
if(NOT EXISTS /usr/src/googletest)
  message(STATUS "GoogleTest's sources are missing (Debian package libgtest-dev): no tests")
  return()
endif()
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
# Neither speed nor a view into it is wanted: the quickest way to compile it.
foreach(library gtest gmock gtest_main)
  target_compile_options(${library} PRIVATE -O0 -g0)
  if(PAVOLINE_SANITIZE)
    target_compile_options(${library} PRIVATE -fno-sanitize=all)
  endif()
endforeach()
include(GoogleTest)

file(GLOB support_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/support/*.cpp)
# The one that needs the whole program; who leaves it out needs less.
set_source_files_properties(tests/support/installer.cpp PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
add_library(pavoline_test_support STATIC EXCLUDE_FROM_ALL ${support_sources})
set_target_properties(pavoline_test_support PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(pavoline_test_support PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_compile_options(pavoline_test_support PRIVATE ${PAVOLINE_WARNINGS})
target_compile_definitions(pavoline_test_support PRIVATE PAVOLINE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(pavoline_test_support PUBLIC pavoline_session gtest)

# The readers of outside text behind libFuzzer, and of the program only what they need.
if(PAVOLINE_FUZZ)
  file(GLOB fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/*.cpp)
  add_executable(pavoline_fuzz ${fuzz_sources} src/ui/left_bytes.cpp src/app/command_line.cpp
                               src/cxdir/device_answer.cpp src/cxdir/partition_lines.cpp
                               src/cxdir/disk_lines.cpp)
  target_compile_options(pavoline_fuzz PRIVATE ${PAVOLINE_WARNINGS})
  # The fakes show no new way through the program, and cost half of the time when they are watched.
  target_compile_options(pavoline_test_support PRIVATE -fno-sanitize=fuzzer-no-link)
  target_link_options(pavoline_fuzz PRIVATE -fsanitize=fuzzer)
  target_link_libraries(pavoline_fuzz PRIVATE pavoline_test_support pavoline_source pavoline_disk
                                              pavoline_engine pavoline_postinstall)
  return()
endif()

function(pavoline_test_program folder)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${folder} ${sources} ${ARGN})
  target_compile_options(test_${folder} PRIVATE ${PAVOLINE_WARNINGS})
  target_compile_definitions(test_${folder} PRIVATE PAVOLINE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(test_${folder} PRIVATE pavoline_test_support pavoline_app gtest_main gmock)
  # Most of a test's time in the compiler goes into these; all programs are compiled alike.
  if(precompiled_by)
    target_precompile_headers(test_${folder} REUSE_FROM ${precompiled_by})
  else()
    target_precompile_headers(test_${folder} PRIVATE <gmock/gmock.h> <gtest/gtest.h>
                              ${PROJECT_SOURCE_DIR}/tests/support/workshop.h)
    set(precompiled_by test_${folder} PARENT_SCOPE)
  endif()
endfunction()

if(NOT WIN32)
  file(GLOB on_fakes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/contract/on_fakes/*.cpp)
  pavoline_test_program(contract ${on_fakes})
  foreach(folder platform form config session run source disk engine install postinstall ui app
          contract)
    if(NOT TARGET test_${folder})
      pavoline_test_program(${folder})
    endif()
    if(TARGET test_${folder})
      gtest_discover_tests(test_${folder} TEST_PREFIX ${folder}. DISCOVERY_TIMEOUT 60)
    endif()
  endforeach()
  pavoline_test_program(cxdir ${PROJECT_SOURCE_DIR}/src/cxdir/partition_lines.cpp
                        ${PROJECT_SOURCE_DIR}/src/cxdir/disk_lines.cpp)
  if(TARGET test_cxdir)
    gtest_discover_tests(test_cxdir TEST_PREFIX cxdir. DISCOVERY_TIMEOUT 60)
  endif()
else()
  # The same contract against the adapter: run it on a Windows or under Wine.
  file(GLOB contract_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/contract/*.cpp
       ${PROJECT_SOURCE_DIR}/tests/contract/on_windows/*.cpp)
  add_executable(test_contract EXCLUDE_FROM_ALL ${contract_sources})
  target_include_directories(test_contract PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_options(test_contract PRIVATE ${PAVOLINE_WARNINGS} -O0)
  target_link_options(test_contract PRIVATE -municode)
  target_link_libraries(test_contract PRIVATE pavoline_win32 gtest gmock)

  # Measures the texts on the real windows; tests/fit/run starts it on the bench.
  file(GLOB fit_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fit/*.cpp
       ${PROJECT_SOURCE_DIR}/bench/driver/*.cpp)
  list(FILTER fit_sources EXCLUDE REGEX "/press\\.cpp$")
  set_source_files_properties(bench/driver/window.cpp PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  add_executable(test_fit EXCLUDE_FROM_ALL ${fit_sources} bench/tour/tour.cpp
                 bench/bridge/unix_side.cpp)
  target_include_directories(test_fit PRIVATE ${PROJECT_SOURCE_DIR}/bench)
  target_compile_options(test_fit PRIVATE ${PAVOLINE_WARNINGS})
  target_compile_definitions(test_fit PRIVATE UNICODE)
  target_link_libraries(test_fit PRIVATE pavoline_app pavoline_win32 psapi)
  pavoline_resources(test_fit pavoline.rc)
endif()
