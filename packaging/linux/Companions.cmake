# SPDX-License-Identifier: MIT
# Sets the texts on the vendor's two files in the description, README.Debian and the copyright file.
# They depend on which files the package contains.
set(FW_UPDATE_ADD "")
if(NOT FW_UPDATE_TOOL)
    string(APPEND FW_UPDATE_ADD "\n  install -m 0755 TOOL /usr/lib/fw-update/nrfutil-mac")
endif()
if(NOT FW_UPDATE_PACKAGE)
    string(APPEND FW_UPDATE_ADD "\n  install -m 0644 FIRMWARE /usr/lib/fw-update/dfu.zip")
endif()

if(FW_UPDATE_ADD)
    set(FW_UPDATE_COMPANIONS
"Files from the device's vendor are missing from this package. Add them
before the first upgrade, as described in README.Debian:")
    if(NOT FW_UPDATE_TOOL)
        string(APPEND FW_UPDATE_COMPANIONS
               "\n * the flashing tool as /usr/lib/fw-update/nrfutil-mac, mode 0755")
    endif()
    if(NOT FW_UPDATE_PACKAGE)
        string(APPEND FW_UPDATE_COMPANIONS
               "\n * the firmware as /usr/lib/fw-update/dfu.zip, mode 0644")
    endif()
    set(FW_UPDATE_COMPANIONS_README
"This package was built without the files that the following commands add. Run
them as root, with the files that you got from the vendor:\n${FW_UPDATE_ADD}")
else()
    set(FW_UPDATE_COMPANIONS
        "This package contains the vendor's flashing tool and the firmware.")
    set(FW_UPDATE_COMPANIONS_README "This package contains both files.")
endif()

if(FW_UPDATE_PACKAGE)
    string(APPEND FW_UPDATE_COMPANIONS_README
"\n\nThe firmware package itself is in /usr/share/fw-update; the program's folder
contains a link to it.")
endif()

if(FW_UPDATE_TOOL OR FW_UPDATE_PACKAGE)
    set(FW_UPDATE_COMPANIONS_COPYRIGHT
"
Files: nrfutil-mac dfu.zip
Copyright: the device's vendor
License: vendor
 Distributed unmodified; the vendor's own terms apply.
")
endif()

if(FW_UPDATE_BOOTLOADER_IDS)
    set(FW_UPDATE_BOOTLOADER_README "The same applies to the serial port of its bootloader.")
else()
    set(FW_UPDATE_BOOTLOADER_README
"This package was built without the ids of its bootloader. Add yourself to the
group dialout to use the bootloader's serial port.")
endif()
