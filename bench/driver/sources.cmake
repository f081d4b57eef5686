# What presses and reads windows from outside: for the bench's programs, and for the tests that do the same. press.cpp
# is a program of its own, the ruler needs the core.
file(GLOB driver_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp)
list(FILTER driver_sources EXCLUDE REGEX "/(press|ruler)\\.cpp$")
# It has a name of its own that a neighbour gives to something else.
set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/window.cpp PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
