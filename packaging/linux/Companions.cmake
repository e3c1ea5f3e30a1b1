# SPDX-License-Identifier: MIT
# What the package's papers say of the two files that belong to the vendor, which depends on whether
# they were given.
set(FW_UPDATE_ADD "")
if(NOT FW_UPDATE_TOOL)
    string(APPEND FW_UPDATE_ADD "\n  install -m 0755 TOOL /usr/lib/fw-update/nrfutil-mac")
endif()
if(NOT FW_UPDATE_PACKAGE)
    string(APPEND FW_UPDATE_ADD "\n  install -m 0644 FIRMWARE /usr/lib/fw-update/dfu.zip")
endif()

if(FW_UPDATE_ADD)
    set(FW_UPDATE_COMPANIONS
"What belongs to the device's vendor is missing from this package. Before
the first upgrade add, as README.Debian tells:")
    if(NOT FW_UPDATE_TOOL)
        string(APPEND FW_UPDATE_COMPANIONS
               "\n * the flashing tool as /usr/lib/fw-update/nrfutil-mac, mode 0755")
    endif()
    if(NOT FW_UPDATE_PACKAGE)
        string(APPEND FW_UPDATE_COMPANIONS
               "\n * the firmware as /usr/lib/fw-update/dfu.zip, mode 0644")
    endif()
    set(FW_UPDATE_COMPANIONS_README
"This package was built without what the following commands add. Run them as
root, with the files that the vendor gave you:\n${FW_UPDATE_ADD}")
else()
    set(FW_UPDATE_COMPANIONS
        "The vendor's flashing tool and the firmware are part of this package.")
    set(FW_UPDATE_COMPANIONS_README "Both are part of this package.")
endif()

if(FW_UPDATE_PACKAGE)
    string(APPEND FW_UPDATE_COMPANIONS_README
"\n\nThe firmware itself lies in /usr/share/fw-update; what lies beside the
program is a link to it.")
endif()

if(FW_UPDATE_TOOL OR FW_UPDATE_PACKAGE)
    set(FW_UPDATE_COMPANIONS_COPYRIGHT
"
Files: nrfutil-mac dfu.zip
Copyright: the device's vendor
License: vendor
 Handed on as the vendor gave them; the vendor's own terms apply.
")
endif()

if(FW_UPDATE_BOOTLOADER_IDS)
    set(FW_UPDATE_BOOTLOADER_README "The same holds for the serial port of its bootloader.")
else()
    set(FW_UPDATE_BOOTLOADER_README
"The ids of its bootloader are not known to this package; add yourself to the
group dialout to use the bootloader's serial port.")
endif()
