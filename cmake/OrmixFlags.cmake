# Compile flags of our own targets, on one interface target that is never exported.
include(CheckCXXCompilerFlag)
add_library(ormix_flags INTERFACE)
target_compile_features(ormix_flags INTERFACE cxx_std_17)
target_compile_options(ormix_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
  # Prescribed orders of operation must give the same bits on every processor.
  -ffp-contract=off
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
