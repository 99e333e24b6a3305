# Compile flags of our own targets, on one interface target that is never exported.
include(CheckCXXCompilerFlag)
add_library(ormix_flags INTERFACE)
target_compile_features(ormix_flags INTERFACE cxx_std_17)
target_compile_options(ormix_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
  # Prescribed orders of operation must give the same bits on every processor.
  -ffp-contract=off
  # Nobody reads errno of a square root, and without this no loop over one is vectorised; the results are the same bits.
  -fno-math-errno
  # Log messages and exceptions name sources by their path inside the project.
  -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
if(ORMIX_WARNINGS_AS_ERRORS)
  target_compile_options(ormix_flags INTERFACE -Werror)
endif()
# Unique symbols would pin a closed library in the process for ever (clang does not make them).
check_cxx_compiler_flag(-fno-gnu-unique ORMIX_HAS_NO_GNU_UNIQUE)
if(ORMIX_HAS_NO_GNU_UNIQUE)
  target_compile_options(ormix_flags INTERFACE -fno-gnu-unique)
endif()

# A comma-separated list as -fsanitize takes it; the first finding ends the program, so that a test cannot pass over it.
set(ORMIX_SANITIZE "" CACHE STRING "Sanitizers, for example address,undefined,float-cast-overflow")
if(ORMIX_SANITIZE)
  target_compile_options(ormix_flags INTERFACE
    -fsanitize=${ORMIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    # Sanitizer code confuses the analyses behind these warnings; the plain build has them.
    -Wno-maybe-uninitialized -Wno-mismatched-new-delete)
  target_link_options(ormix_flags INTERFACE -fsanitize=${ORMIX_SANITIZE})
endif()

if(ORMIX_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(ORMIX_CCACHE ccache)
  mark_as_advanced(ORMIX_CCACHE)
  if(ORMIX_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ORMIX_CCACHE})
  endif()
endif()

# Headers of the standard library and of Boost that most sources include, parsed once a target. None of ours is among them:
# that one is missing is still noticed. Left out with ccache, which does not keep what was compiled with them.
option(ORMIX_PRECOMPILE "Parse common headers of other libraries once a target" OFF)
function(ormix_precompile target)
  if(ORMIX_PRECOMPILE AND NOT ORMIX_CCACHE)
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <boost/smart_ptr/make_shared_object.hpp>
      <boost/smart_ptr/shared_ptr.hpp> <cmath> <functional> <limits> <memory> <optional> <sstream> <string> <string_view>
      <unordered_map> <vector> ${ARGN})
  endif()
endfunction()
