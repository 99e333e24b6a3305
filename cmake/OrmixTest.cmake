# ormix_add_test(<target> SOURCES ... [LIBRARIES libs...])
# Adds an executable of GoogleTest cases, each of them a test of its own for ctest.
find_package(GTest REQUIRED)
include(GoogleTest)
function(ormix_add_test target)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${target} ${ARG_SOURCES})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${target} PRIVATE ${ARG_LIBRARIES} GTest::gtest_main ormix_flags)
  ormix_precompile(${target} <gtest/gtest.h>)
  if(ORMIX_SANITIZE)
    # The tests take longer to compile than to run: without optimisation both together take two thirds of the time.
    target_compile_options(${target} PRIVATE -O0)
  endif()
  # Asked when the tests run, not while they are built: a broken test program fails as a test.
  gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
