# SPDX-License-Identifier: MIT
# Writes what depends on the options, above all on which of the vendor's two files the package
# contains, to the folder FW_UPDATE_DEBHELPER_FILES, under the names that debhelper looks for. The
# file `gencontrol` contains options for dpkg-gencontrol.
set(debian "${FW_UPDATE_DEBHELPER_FILES}")

set(add "")
set(missing "")
if(NOT FW_UPDATE_TOOL)
    string(APPEND add "\n  install -m 0755 TOOL /usr/lib/fw-update/nrfutil-mac")
    string(APPEND missing
           "\${Newline} * the flashing tool as /usr/lib/fw-update/nrfutil-mac, mode 0755")
endif()
if(NOT FW_UPDATE_PACKAGE)
    string(APPEND add "\n  install -m 0644 FIRMWARE /usr/lib/fw-update/dfu.zip")
    string(APPEND missing "\${Newline} * the firmware as /usr/lib/fw-update/dfu.zip, mode 0644")
endif()

if(missing)
    string(CONCAT companions
        "Files from the device's vendor are missing from this package. Add them\${Newline}"
        "before the first upgrade, as described in README.Debian:${missing}")
    set(FW_UPDATE_COMPANIONS_README
"This package was built without the files that the following commands add. Run
them as root, with the files that you got from the vendor:\n${add}")
else()
    set(companions "This package contains the vendor's flashing tool and the firmware.")
    set(FW_UPDATE_COMPANIONS_README "This package contains both files.")
endif()
if(FW_UPDATE_PACKAGE)
    string(APPEND FW_UPDATE_COMPANIONS_README
"\n\nThe firmware package itself is in /usr/share/fw-update; the program's folder
contains a link to it.")
endif()
if(FW_UPDATE_BOOTLOADER_IDS)
    set(FW_UPDATE_BOOTLOADER_README "The same applies to the serial port of its bootloader.")
else()
    set(FW_UPDATE_BOOTLOADER_README
"This package was built without the ids of its bootloader. Add yourself to the
group dialout to use the bootloader's serial port.")
endif()
configure_file("${linux}/fw-update.README.Debian.in" "${debian}/fw-update.README.Debian" @ONLY)

if(QT_VERSION_MAJOR EQUAL 5)
    set(qt qtbase5-dev)
    set(designer qttools5-dev-tools)
else()
    set(qt qt6-base-dev)
    set(designer designer-qt6)
endif()
file(WRITE "${debian}/gencontrol"
"-Vfw-update:Companions=${companions}
-Vfw-update:Depends=${FW_UPDATE_TOOL_DEPENDS}
-Vfw-update:Qt=${qt} (>= ${FW_UPDATE_OLDEST_QT})
-Vfw-update:Designer=${designer}
-DHomepage=${FW_UPDATE_HOMEPAGE}
")
if(FW_UPDATE_MAINTAINER)
    file(APPEND "${debian}/gencontrol" "-DMaintainer=${FW_UPDATE_MAINTAINER}\n")
endif()

if(FW_UPDATE_TOOL OR FW_UPDATE_PACKAGE)
    file(READ "${debian}/copyright" copyright)
    file(WRITE "${debian}/fw-update.copyright" "${copyright}
Files: nrfutil-mac dfu.zip
Copyright: the device's vendor
License: vendor
 Distributed unmodified; the vendor's own terms apply.
")
endif()

if(FW_UPDATE_TOOL)
    file(READ "${FW_UPDATE_TOOL}" magic LIMIT 4 HEX)
    if(magic STREQUAL "7f454c46")
        configure_file("${linux}/fw-update.lintian-overrides" "${debian}" COPYONLY)
    endif()
endif()
