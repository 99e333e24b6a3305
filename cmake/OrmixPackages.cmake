# Debian packages by cpack, one for each component of the install rules, with the files that Debian asks of each. Only the
# preset "package" includes this: what is installed by hand has none of these files.
#   runtime        libormixgeometry1     the four shared libraries
#   development    libormixgeometry-dev  headers, links, CMake package, pkg-config
#   documentation  libormixgeometry-doc  pages and examples, of every architecture
#   python         python3-ormixgeometry the module, where ORMIX_BUILD_PYTHON is on
#   tools          ormixgeometry-tools   programs with their manual pages, where they are built
set(ORMIX_PACKAGE_RELEASE 1 CACHE STRING "Revision of the Debian packages")
set(ORMIX_PACKAGE_MAINTAINER "" CACHE STRING "Who makes the packages: Name <address>")
set(ORMIX_DOCS_SITE ${PROJECT_SOURCE_DIR}/build/docs/site CACHE PATH "Site of the preset docs, packaged where it was made")
if(NOT ORMIX_PACKAGE_MAINTAINER MATCHES "^.+ <.+@.+>$")
  message(FATAL_ERROR "ORMIX_PACKAGE_MAINTAINER must be \"Name <address>\", but is \"${ORMIX_PACKAGE_MAINTAINER}\"")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ormixgeometry)
set(CPACK_PACKAGE_CONTACT "${ORMIX_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${ORMIX_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_SOURCE ormixgeometry)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# What cpack cannot say of a package is put into it when it is made.
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/packages/complete_packages.cmake)

set(full_version ${PROJECT_VERSION}-${ORMIX_PACKAGE_RELEASE})
set(runtime_package libormixgeometry${ORMIX_ABI_VERSION})
set(with_runtime "${runtime_package} (= ${full_version})")

string(TIMESTAMP ORMIX_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog ${PROJECT_BINARY_DIR}/packages/changelog)
configure_file(${PROJECT_SOURCE_DIR}/cmake/packages/changelog.in ${changelog} @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_BINARY_DIR}/packages/upstream COPYONLY)
execute_process(COMMAND gzip -9nf ${changelog} ${PROJECT_BINARY_DIR}/packages/upstream COMMAND_ERROR_IS_FATAL ANY)

# ormix_add_package(<component> <name of the package> SECTION ... SUMMARY ... DESCRIPTION ... [ARCHITECTURE ...]
#   [DEPENDS ...] [RECOMMENDS ...] [SUGGESTS ...] [CONTROL scripts...])
function(ormix_add_package component package)
  cmake_parse_arguments(ARG "" "SECTION;SUMMARY;DESCRIPTION;ARCHITECTURE;DEPENDS;RECOMMENDS;SUGGESTS" "CONTROL" ${ARGN})
  string(TOUPPER ${component} COMPONENT)
  set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/packages/copyright DESTINATION ${folder} COMPONENT ${component})
  install(FILES ${changelog}.gz DESTINATION ${folder} RENAME changelog.Debian.gz COMPONENT ${component})
  install(FILES ${PROJECT_BINARY_DIR}/packages/upstream.gz DESTINATION ${folder} RENAME changelog.gz
    COMPONENT ${component})
  set(overrides ${PROJECT_SOURCE_DIR}/cmake/packages/${component}.lintian-overrides)
  if(EXISTS ${overrides})
    configure_file(${overrides} ${PROJECT_BINARY_DIR}/packages/${package} @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/packages/${package} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides
      COMPONENT ${component})
  endif()
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SECTION ${ARG_SECTION} PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_DEPENDS "${ARG_DEPENDS}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_RECOMMENDS "${ARG_RECOMMENDS}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SUGGESTS "${ARG_SUGGESTS}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_ARCHITECTURE "${ARG_ARCHITECTURE}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_CONTROL_EXTRA "${ARG_CONTROL}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${COMPONENT}_DESCRIPTION "${ARG_SUMMARY}\n${ARG_DESCRIPTION}" PARENT_SCOPE)
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(about "\
ORMIXGeometry has entities of the plane and of space (points, lines,
circles, polygons with holes, regions of pixels, meshes and others),
measures and transforms of them, estimators that find them in measured
points, distances, skeletons, repair and simplification of meshes, and
archives of all.

This package holds ")

# What no component claims would be in no package.
get_cmake_property(components COMPONENTS)
if("Unspecified" IN_LIST components)
  message(FATAL_ERROR "An install rule names none of the components runtime, development, documentation, python, tools")
endif()

# Pages that show scenes take three.js from there when they are written.
ormix_add_package(runtime ${runtime_package} SECTION libs SUGGESTS libjs-three
  SUMMARY "planar and spatial geometry for image analysis and metrology"
  DESCRIPTION "${about}the shared libraries.")
ormix_add_package(development libormixgeometry-dev SECTION libdevel
  DEPENDS "${with_runtime}, libboost-dev (>= 1.74)" SUGGESTS "libormixgeometry-doc, cmake, pkgconf"
  SUMMARY "planar and spatial geometry, files for development"
  DESCRIPTION "${about}what programs in C++ are compiled against:
headers, a CMake package and a file for pkg-config.")

install(FILES README.md SECURITY.md CITATION.cff DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libormixgeometry-doc
  COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libormixgeometry-doc
  COMPONENT documentation PATTERN CMakeLists.txt EXCLUDE PATTERN "*.in" EXCLUDE)
install(DIRECTORY ${ORMIX_DOCS_SITE}/ DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libormixgeometry-doc/html
  COMPONENT documentation OPTIONAL)
ormix_add_package(documentation libormixgeometry-doc SECTION doc ARCHITECTURE all
  SUMMARY "planar and spatial geometry, documentation"
  DESCRIPTION "${about}the documentation and the sources of examples.")

if("python" IN_LIST components)
  find_package(Python3 COMPONENTS Interpreter REQUIRED)
  math(EXPR next_minor "${Python3_VERSION_MINOR} + 1")
  set(python_depends "python3 (>= 3.${Python3_VERSION_MINOR}), python3 (<< 3.${next_minor}), python3-numpy")
  ormix_add_package(python python3-ormixgeometry SECTION python
    DEPENDS "${with_runtime}, ${python_depends}"
    RECOMMENDS libjs-three SUGGESTS "libormixgeometry-doc, python3-pandas, python3-dask, python3-distributed, python3-ipython"
    CONTROL ${PROJECT_SOURCE_DIR}/cmake/packages/python/postinst ${PROJECT_SOURCE_DIR}/cmake/packages/python/prerm
    SUMMARY "planar and spatial geometry for image analysis, Python module"
    DESCRIPTION "${about}the module ormixgeometry, which gives and takes
numpy arrays.")
endif()
if("tools" IN_LIST components)
  ormix_add_package(tools ormixgeometry-tools SECTION science
    DEPENDS "${with_runtime}" RECOMMENDS libjs-three
    SUMMARY "planar and spatial geometry on the command line"
    DESCRIPTION "${about}the program ormix, which measures, fits, inspects,
converts, simplifies and draws what is in files.")
endif()
include(CPack)
