# SPDX-License-Identifier: MIT
# The kit as a library of its own. Its headers keep their folder, so that an
# #include "widgets/MButton.h" reads the same within this tree and outside it.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(headers ${CMAKE_INSTALL_INCLUDEDIR}/FwUpdateWidgets)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/FwUpdateWidgets)

get_target_property(public_headers widgets SOURCES)
list(FILTER public_headers INCLUDE REGEX "\\.h$")
list(FILTER public_headers EXCLUDE REGEX "_p\\.h$")
install(FILES ${public_headers} DESTINATION ${headers}/widgets COMPONENT widgets)

add_library(FwUpdate::widgets ALIAS widgets)
set_target_properties(widgets PROPERTIES OUTPUT_NAME FwUpdateWidgets)
install(TARGETS widgets EXPORT FwUpdateWidgets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT widgets
    INCLUDES DESTINATION ${headers})
install(EXPORT FwUpdateWidgets
    NAMESPACE FwUpdate:: FILE FwUpdateWidgetsTargets.cmake
    DESTINATION ${package} COMPONENT widgets)

configure_package_config_file(FwUpdateWidgetsConfig.cmake.in FwUpdateWidgetsConfig.cmake
    INSTALL_DESTINATION ${package} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(FwUpdateWidgetsConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/FwUpdateWidgetsConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/FwUpdateWidgetsConfigVersion.cmake"
    DESTINATION ${package} COMPONENT widgets)
