# One test program per folder of tests/. Those of the core run on the machine that builds them;
# tests/contract also runs against the real adapter, and tests/e2e only there.
if(NOT EXISTS /usr/src/googletest)
  message(STATUS "GoogleTest's sources are missing (Debian package libgtest-dev): no tests")
  return()
endif()
if(CMAKE_CROSSCOMPILING)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  # Neither speed nor a view into it is wanted: the quickest way to compile it.
  foreach(library gtest gmock gtest_main)
    target_compile_options(${library} PRIVATE -O0 -g0)
  endforeach()
else()
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)

file(GLOB support_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/support/*.cpp)
# The one that needs the whole program; who leaves it out needs less.
set_source_files_properties(tests/support/installer.cpp PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
add_library(pavoline_test_support STATIC EXCLUDE_FROM_ALL ${support_sources})
set_target_properties(pavoline_test_support PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(pavoline_test_support PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_compile_options(pavoline_test_support PRIVATE ${PAVOLINE_WARNINGS})
target_compile_definitions(pavoline_test_support PRIVATE PAVOLINE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
target_link_libraries(pavoline_test_support PUBLIC pavoline_session GTest::gtest GTest::gmock)
# Most of a test's time in the compiler goes into these; all programs are compiled alike.
target_precompile_headers(pavoline_test_support PRIVATE <gmock/gmock.h> <gtest/gtest.h>
                          ${PROJECT_SOURCE_DIR}/tests/support/workshop.h)

# The readers of outside text behind libFuzzer, and of the program only what they need.
if(PAVOLINE_FUZZ)
  file(GLOB fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fuzz/*.cpp)
  add_executable(pavoline_fuzz EXCLUDE_FROM_ALL ${fuzz_sources} src/ui/left_bytes.cpp
                               src/app/command_line.cpp src/cxdir/device_answer.cpp
                               src/cxdir/partition_lines.cpp src/cxdir/disk_lines.cpp)
  target_compile_options(pavoline_fuzz PRIVATE ${PAVOLINE_WARNINGS})
  # The fakes show no new way through the program, and cost half of the time when they are watched.
  foreach(watched ${pavoline_rings} fuzz)
    target_compile_options(pavoline_${watched} PRIVATE -fsanitize=fuzzer-no-link)
  endforeach()
  target_link_options(pavoline_fuzz PRIVATE -fsanitize=fuzzer)
  target_link_libraries(pavoline_fuzz PRIVATE pavoline_test_support pavoline_source pavoline_disk
                                              pavoline_engine pavoline_postinstall)
endif()

function(pavoline_test_program folder)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${folder} ${sources} ${ARGN})
  target_compile_options(test_${folder} PRIVATE ${PAVOLINE_WARNINGS})
  target_compile_definitions(test_${folder} PRIVATE PAVOLINE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(test_${folder} PRIVATE pavoline_test_support pavoline_app GTest::gtest_main)
  target_precompile_headers(test_${folder} REUSE_FROM pavoline_test_support)
  gtest_discover_tests(test_${folder} TEST_PREFIX ${folder}. DISCOVERY_MODE PRE_TEST)
endfunction()

if(NOT WIN32)
  foreach(folder ${pavoline_rings})
    pavoline_test_program(${folder})
  endforeach()
  file(GLOB on_fakes CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/contract/on_fakes/*.cpp)
  pavoline_test_program(contract ${on_fakes})
  pavoline_test_program(cxdir ${PROJECT_SOURCE_DIR}/src/cxdir/partition_lines.cpp
                        ${PROJECT_SOURCE_DIR}/src/cxdir/disk_lines.cpp)
else()
  # What runs on a Windows or under Wine alone.
  include(bench/driver/sources.cmake)
  add_library(pavoline_driver STATIC EXCLUDE_FROM_ALL ${driver_sources} bench/bridge/unix_side.cpp)
  target_include_directories(pavoline_driver PUBLIC ${PROJECT_SOURCE_DIR}/bench ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(pavoline_driver PUBLIC UNICODE)
  target_compile_options(pavoline_driver PRIVATE ${PAVOLINE_WARNINGS} -O0)
  target_link_libraries(pavoline_driver PUBLIC pavoline_form GTest::gtest GTest::gmock psapi)
  target_precompile_headers(pavoline_driver PRIVATE <gmock/gmock.h> <gtest/gtest.h> <windows.h>)

  function(pavoline_windows_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} EXCLUDE_FROM_ALL ${TEST_SOURCES})
    target_compile_options(${name} PRIVATE ${PAVOLINE_WARNINGS} -O0)
    target_link_libraries(${name} PRIVATE ${TEST_USES} pavoline_driver)
    target_precompile_headers(${name} REUSE_FROM pavoline_driver)
    target_link_options(${name} PRIVATE -Wl,--no-gc-sections)
  endfunction()

  # The program as it ships, pressed by a person's hand; tests/e2e/run starts it on the bench.
  file(GLOB e2e_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/e2e/*.cpp)
  pavoline_windows_test(test_e2e SOURCES ${e2e_sources} USES GTest::gtest_main)

  # The same contract against the adapter.
  file(GLOB contract_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/contract/*.cpp
       ${PROJECT_SOURCE_DIR}/tests/contract/on_windows/*.cpp)
  pavoline_windows_test(test_contract SOURCES ${contract_sources} USES pavoline_win32)
  target_link_options(test_contract PRIVATE -municode)

  # Measures the texts on the real windows; tests/fit/run starts it on the bench.
  file(GLOB fit_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/fit/*.cpp)
  pavoline_windows_test(test_fit SOURCES ${fit_sources} bench/driver/ruler.cpp bench/tour/tour.cpp
                        USES pavoline_app pavoline_win32)
  pavoline_resources(test_fit pavoline.rc)
endif()
