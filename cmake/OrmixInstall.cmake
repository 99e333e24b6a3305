# Package files beside the installed libraries: find_package(ORMIXGeometry) and pkg-config ormixgeometry. Both find
# everything relative to themselves, so that an installed tree may be moved.
include(CMakePackageConfigHelpers)
set(ORMIX_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ORMIXGeometry)
set(ORMIX_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ORMIXGeometryConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ORMIXGeometryConfig.cmake INSTALL_DESTINATION ${ORMIX_PACKAGE_DIR})
# Before 1.0 a minor version may break its callers.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(ORMIX_COMPATIBILITY SameMinorVersion)
else()
  set(ORMIX_COMPATIBILITY SameMajorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ORMIXGeometryConfigVersion.cmake
  COMPATIBILITY ${ORMIX_COMPATIBILITY})
install(EXPORT ORMIXGeometryTargets NAMESPACE ORMIX:: DESTINATION ${ORMIX_PACKAGE_DIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/ORMIXGeometryConfig.cmake ${PROJECT_BINARY_DIR}/ORMIXGeometryConfigVersion.cmake
  DESTINATION ${ORMIX_PACKAGE_DIR} COMPONENT development)

# An absolute CMAKE_INSTALL_LIBDIR cannot be moved; any other is named relative to the .pc file.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(ORMIX_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH ORMIX_PC_UP /${ORMIX_PKGCONFIG_DIR} /)
  string(REGEX REPLACE "/$" "" ORMIX_PC_UP "${ORMIX_PC_UP}")
  set(ORMIX_PC_PREFIX "\${pcfiledir}/${ORMIX_PC_UP}")
endif()
foreach(folder LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE ${CMAKE_INSTALL_${folder}})
    set(ORMIX_PC_${folder} ${CMAKE_INSTALL_${folder}})
  else()
    set(ORMIX_PC_${folder} "\${prefix}/${CMAKE_INSTALL_${folder}}")
  endif()
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/cmake/ormixgeometry.pc.in ${PROJECT_BINARY_DIR}/ormixgeometry.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ormixgeometry.pc DESTINATION ${ORMIX_PKGCONFIG_DIR} COMPONENT development)
