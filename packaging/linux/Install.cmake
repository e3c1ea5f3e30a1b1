# SPDX-License-Identifier: MIT
# The program on Linux. It looks for the vendor's two files in its own folder, so the three share
# lib/fw-update, and the command in bin is a link.
include(GNUInstallDirs)

set(linux "${CMAKE_CURRENT_LIST_DIR}")
set(made "${CMAKE_CURRENT_BINARY_DIR}/linux")
set(home lib/fw-update)

# bootloader_rules(VARIABLE): the udev rules for each id in FW_UPDATE_BOOTLOADER_IDS.
function(bootloader_rules variable)
    set(rules "")
    foreach(id IN LISTS FW_UPDATE_BOOTLOADER_IDS)
        string(TOLOWER "${id}" id)
        if(NOT id MATCHES "^([0-9a-f][0-9a-f][0-9a-f][0-9a-f]):([0-9a-f][0-9a-f][0-9a-f][0-9a-f])$")
            message(FATAL_ERROR "FW_UPDATE_BOOTLOADER_IDS: ${id} is not of the form vvvv:pppp")
        endif()
        set(match "ATTRS{idVendor}==\"${CMAKE_MATCH_1}\", ATTRS{idProduct}==\"${CMAKE_MATCH_2}\"")
        string(APPEND rules
            "# The bootloader's serial port. Modem managers must not probe it.\n"
            "SUBSYSTEM==\"tty\", ${match}, TAG+=\"uaccess\", "
            "ENV{ID_MM_DEVICE_IGNORE}=\"1\"\n\n")
    endforeach()
    set(${variable} "${rules}" PARENT_SCOPE)
endfunction()

if(NOT FW_UPDATE_BOOTLOADER_IDS)
    message(STATUS
        "FW_UPDATE_BOOTLOADER_IDS is empty: only members of the group dialout can upgrade")
endif()
include("${linux}/Releases.cmake")
bootloader_rules(FW_UPDATE_BOOTLOADER_RULES)
string(REGEX REPLACE "[.][^.]+$" "" FW_UPDATE_DEVELOPER_ID "${FW_UPDATE_APPLICATION_ID}")
foreach(file 70-fw-update.rules fw-update.desktop fw-update.metainfo.xml fw-update.1)
    configure_file("${linux}/${file}.in" "${made}/${file}" @ONLY)
endforeach()
file(CREATE_LINK ../lib/fw-update/fw-update "${made}/fw-update" SYMBOLIC)
file(CREATE_LINK ../../share/fw-update/dfu.zip "${made}/dfu.zip" SYMBOLIC)

install(TARGETS fw-update RUNTIME DESTINATION ${home} COMPONENT program)
install(FILES "${made}/fw-update" DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
if(FW_UPDATE_TOOL)
    install(PROGRAMS "${FW_UPDATE_TOOL}" DESTINATION ${home} RENAME nrfutil-mac COMPONENT program)
endif()
if(FW_UPDATE_PACKAGE)
    install(FILES "${FW_UPDATE_PACKAGE}" DESTINATION ${CMAKE_INSTALL_DATADIR}/fw-update
            RENAME dfu.zip COMPONENT program)
    install(FILES "${made}/dfu.zip" DESTINATION ${home} COMPONENT program)
endif()

install(FILES "${made}/70-fw-update.rules" DESTINATION lib/udev/rules.d COMPONENT program)
install(FILES "${made}/fw-update.desktop" DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
        RENAME ${FW_UPDATE_APPLICATION_ID}.desktop COMPONENT program)
install(FILES "${made}/fw-update.metainfo.xml" DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
        RENAME ${FW_UPDATE_APPLICATION_ID}.metainfo.xml COMPONENT program)
install(FILES "${made}/fw-update.1" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
foreach(size 16 24 32 48 64 128 256 512)
    install(FILES "${linux}/../icons/fw-update-${size}.png"
            DESTINATION ${icons}/${size}x${size}/apps RENAME fw-update.png COMPONENT program)
endforeach()
install(FILES "${linux}/../icons/fw-update.svg"
        DESTINATION ${icons}/scalable/apps COMPONENT program)
