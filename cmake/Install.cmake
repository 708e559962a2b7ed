include(CMakePackageConfigHelpers)

set(install_targets vantrel1)
if(TARGET vantrel1-qt)
  list(APPEND install_targets vantrel1-qt)
endif()
install(TARGETS ${install_targets} vantrel1_warnings EXPORT vantrel1Targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vantrel1)
install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vantrel1
  FILES_MATCHING PATTERN "*.h")
install(FILES "${PROJECT_BINARY_DIR}/src/generated/vantrel1/Version.h"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vantrel1/vantrel1)
install(DIRECTORY resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/vantrel1
  PATTERN "strings" EXCLUDE)
install(EXPORT vantrel1Targets NAMESPACE vantrel1:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vantrel1)

configure_package_config_file(cmake/vantrel1Config.cmake.in
  "${PROJECT_BINARY_DIR}/vantrel1Config.cmake"
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vantrel1)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/vantrel1ConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vantrel1Config.cmake" "${PROJECT_BINARY_DIR}/vantrel1ConfigVersion.cmake"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vantrel1)
