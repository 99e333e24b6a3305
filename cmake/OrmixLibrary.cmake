# ormix_add_library(<Name> UNITS ... [SOURCES ...] [HEADERS ...] [PUBLIC libs...] [PRIVATE libs...])
# Adds the shared library ORMIX<Name> with the alias ORMIX::<Name>. Paths are relative to the library's folder, which
# is also its include prefix. A unit X is the source X.cpp with its installed header X.h; SOURCES have no header of their
# name or one that is not installed, HEADERS are installed and have no source. Only our own names leave the library: hidden visibility and a linker version script.
# REGISTERS_CLASSES: programs get the library although they may use none of its symbols, but create its classes by name.
function(ormix_add_library name)
  cmake_parse_arguments(ARG "REGISTERS_CLASSES" "" "UNITS;SOURCES;HEADERS;PUBLIC;PRIVATE" ${ARGN})
  foreach(unit IN LISTS ARG_UNITS)
    list(APPEND ARG_SOURCES ${unit}.cpp)
    list(APPEND ARG_HEADERS ${unit}.h)
  endforeach()
  set(target ORMIX${name})
  # A consumer never links what a library uses privately; keep it out of the exported targets altogether.
  list(TRANSFORM ARG_PRIVATE REPLACE "(.+)" "$<BUILD_INTERFACE:\\1>")
  add_library(${target} SHARED ${ARG_SOURCES} ${ARG_HEADERS})
  add_library(ORMIX::${name} ALIAS ${target})
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} $<BUILD_INTERFACE:ormix_flags>)
  target_link_options(${target} PRIVATE -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map -Wl,--as-needed
    # A library calls its own functions directly. Otherwise 25,000 of them are looked up by name whenever a program starts,
    # most of them for tables of virtual functions, which takes 40 % of the time of a program that measures one circle.
    -Wl,-Bsymbolic-functions)
  if(ARG_REGISTERS_CLASSES)
    # Debian's linker leaves out what no symbol needs. The library is named once more, under a state of the linker that
    # ends with it, so that the other libraries of a program are linked as they were.
    target_link_options(${target} INTERFACE
      "LINKER:--push-state,--no-as-needed,$<TARGET_FILE:ORMIX::${name}>,--pop-state")
  endif()
  ormix_precompile(${target})
  # Nothing may stay undefined; clang's sanitizers leave their own calls to the executable.
  if(NOT (ORMIX_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang"))
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
  set_target_properties(${target} PROPERTIES
    # Whatever standard a project around us compiles as: Boost 1.74's rational numbers recurse for ever as C++20.
    CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON
    EXPORT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION ${ORMIX_ABI_VERSION}
    CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    # The libraries find each other side by side, wherever they are installed.
    INSTALL_RPATH "$ORIGIN"
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  if(ORMIX_TOP_LEVEL)
    install(TARGETS ${target} EXPORT ORMIXGeometryTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
      COMPONENT runtime NAMELINK_COMPONENT development)
    foreach(header IN LISTS ARG_HEADERS)
      get_filename_component(folder ${target}/${header} DIRECTORY)
      install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT development)
    endforeach()
  endif()
endfunction()
