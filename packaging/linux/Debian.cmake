# SPDX-License-Identifier: MIT
# The Debian package. The program looks for the vendor's two files in its own folder, so the three
# share /usr/lib/fw-update, and the command in /usr/bin is a link.
include(GNUInstallDirs)

set(linux "${CMAKE_CURRENT_LIST_DIR}")
set(made "${CMAKE_CURRENT_BINARY_DIR}/linux")
set(home lib/fw-update)
set(documents "${CMAKE_INSTALL_DATADIR}/doc/fw-update")

# release_files(): writes the Debian changelog and sets FW_UPDATE_RELEASE_DATE, both from
# CHANGELOG.md. Its newest release must be this version.
function(release_files)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
        "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${linux}/debian-changelog")
    execute_process(
        COMMAND "${linux}/debian-changelog" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
                "${FW_UPDATE_MAINTAINER}"
        OUTPUT_FILE "${made}/changelog" COMMAND_ERROR_IS_FATAL ANY)
    file(STRINGS "${PROJECT_SOURCE_DIR}/CHANGELOG.md" releases REGEX "^## \\[[0-9]")
    list(GET releases 0 newest)
    if(NOT newest MATCHES "^## \\[([0-9.]+)\\] - ([0-9-]+)$"
       OR NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
        message(FATAL_ERROR "CHANGELOG.md does not begin with ${PROJECT_VERSION}: ${newest}")
    endif()
    set(FW_UPDATE_RELEASE_DATE "${CMAKE_MATCH_2}" PARENT_SCOPE)
endfunction()

# compress(FILE): writes FILE.gz, without a name or a timestamp in it.
function(compress file)
    execute_process(COMMAND gzip -9nc "${file}" OUTPUT_FILE "${file}.gz"
                    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

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

# license(VARIABLE): LICENSE without its heading, formatted for a copyright file.
function(license variable)
    file(READ "${PROJECT_SOURCE_DIR}/LICENSE" text)
    string(REGEX REPLACE "^.*\n(Permission is)" "\\1" text "${text}")
    string(STRIP "${text}" text)
    string(REPLACE "\n" "\n " text " ${text}")
    string(REPLACE "\n \n" "\n .\n" text "${text}")
    set(${variable} "${text}" PARENT_SCOPE)
endfunction()

if(NOT FW_UPDATE_BOOTLOADER_IDS)
    message(STATUS "FW_UPDATE_BOOTLOADER_IDS is empty: only members of the group dialout can upgrade")
endif()
file(MAKE_DIRECTORY "${made}")
release_files()
bootloader_rules(FW_UPDATE_BOOTLOADER_RULES)
license(FW_UPDATE_LICENSE)
include("${linux}/Companions.cmake")
foreach(file 70-fw-update.rules fw-update.desktop fw-update.metainfo.xml fw-update.1 copyright
             README.Debian)
    configure_file("${linux}/${file}.in" "${made}/${file}" @ONLY)
endforeach()
compress("${made}/changelog")
compress("${made}/fw-update.1")
file(CREATE_LINK ../lib/fw-update/fw-update "${made}/fw-update" SYMBOLIC)
file(CREATE_LINK ../../share/fw-update/dfu.zip "${made}/dfu.zip" SYMBOLIC)

install(TARGETS fw-update RUNTIME DESTINATION ${home} COMPONENT program)
install(FILES "${made}/fw-update" DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
if(FW_UPDATE_TOOL)
    install(PROGRAMS "${FW_UPDATE_TOOL}" DESTINATION ${home} RENAME nrfutil-mac COMPONENT program)
    file(READ "${FW_UPDATE_TOOL}" magic LIMIT 4 HEX)
    if(magic STREQUAL "7f454c46")
        install(FILES "${linux}/lintian-overrides"
                DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
                RENAME fw-update COMPONENT program)
    endif()
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
install(FILES "${made}/fw-update.1.gz" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
install(FILES "${made}/changelog.gz" "${made}/copyright" "${made}/README.Debian"
        DESTINATION ${documents} COMPONENT program)
set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
foreach(size 16 24 32 48 64 128 256 512)
    install(FILES "${CMAKE_CURRENT_LIST_DIR}/../icons/fw-update-${size}.png"
            DESTINATION ${icons}/${size}x${size}/apps RENAME fw-update.png COMPONENT program)
endforeach()
install(FILES "${CMAKE_CURRENT_LIST_DIR}/../icons/fw-update.svg"
        DESTINATION ${icons}/scalable/apps COMPONENT program)

set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${FW_UPDATE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# CPack strips the last line's indentation, so the last line must be empty.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"FW Update updates the firmware of one USB device: it asks the device to
restart into its bootloader, runs the vendor's flashing tool and shows the
result.

${FW_UPDATE_COMPANIONS}
")
