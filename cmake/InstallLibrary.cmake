# SPDX-License-Identifier: MIT
# fw_install_library(TARGET PACKAGE DESCRIPTION text [REQUIRES module...] [LIBRARIES option...])
#
# Installs the static library TARGET for other programs, as the component TARGET: its public
# headers, the CMake package PACKAGE with the target FwUpdate::TARGET, and the pkg-config file
# fwupdate-TARGET. Programs that use pkg-config also need the modules REQUIRES and the linker options
# LIBRARIES. PACKAGEConfig.cmake.in is in the folder of TARGET.
#
# The headers keep their folder, so that an #include "widgets/MButton.h" reads the same within this
# tree and outside it.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(fw_pkg_config_template "${CMAKE_CURRENT_LIST_DIR}/library.pc.in")

# For PACKAGEConfig.cmake.in.
file(READ "${CMAKE_CURRENT_LIST_DIR}/RejectOtherQt.cmake.in" FW_UPDATE_REJECT_OTHER_QT)
string(CONFIGURE "${FW_UPDATE_REJECT_OTHER_QT}" FW_UPDATE_REJECT_OTHER_QT @ONLY)

function(fw_install_library target package)
    cmake_parse_arguments(PARSE_ARGV 2 ARG "" "DESCRIPTION" "REQUIRES;LIBRARIES")
    set(headers ${CMAKE_INSTALL_INCLUDEDIR}/${package})
    set(folder ${CMAKE_INSTALL_LIBDIR}/cmake/${package})

    get_target_property(public_headers ${target} SOURCES)
    list(FILTER public_headers INCLUDE REGEX "\\.h$")
    list(FILTER public_headers EXCLUDE REGEX "_p\\.h$")
    install(FILES ${public_headers} DESTINATION ${headers}/${target} COMPONENT ${target})

    # Plugins link it as well as programs.
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${package}
        POSITION_INDEPENDENT_CODE ON)
    install(TARGETS ${target} EXPORT ${package}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${target}
        INCLUDES DESTINATION ${headers})
    install(EXPORT ${package}
        NAMESPACE FwUpdate:: FILE ${package}Targets.cmake
        DESTINATION ${folder} COMPONENT ${target})
    configure_package_config_file(${package}Config.cmake.in ${package}Config.cmake
        INSTALL_DESTINATION ${folder} NO_SET_AND_CHECK_MACRO)
    write_basic_package_version_file(${package}ConfigVersion.cmake
        COMPATIBILITY SameMajorVersion)
    install(FILES
        "${CMAKE_CURRENT_BINARY_DIR}/${package}Config.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/${package}ConfigVersion.cmake"
        DESTINATION ${folder} COMPONENT ${target})

    # The file finds its library relative to itself, wherever both are moved.
    file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    list(JOIN ARG_REQUIRES ", " requires)
    list(JOIN ARG_LIBRARIES " " libraries)
    configure_file("${fw_pkg_config_template}" fwupdate-${target}.pc @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/fwupdate-${target}.pc"
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ${target})
endfunction()
