# SPDX-License-Identifier: MIT
# Reads the changelogs and sets, for the man page and the AppStream metadata:
#   FW_UPDATE_RELEASE_DATE   the date of the newest release, which must be this version
#   FW_UPDATE_VERSION        the version of the packages, which ends in ~dev between releases
#   FW_UPDATE_RELEASES       the releases in AppStream's format
set(changelog "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
set(debian_changelog "${PROJECT_SOURCE_DIR}/debian/changelog")
set(script "${CMAKE_CURRENT_LIST_DIR}/releases.awk")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    "${changelog}" "${debian_changelog}" "${script}")

file(STRINGS "${changelog}" newest REGEX "^## [0-9]" LIMIT_COUNT 1)
if(NOT newest MATCHES "^## ([0-9.]+) - ([0-9-]+)$"
   OR NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
    message(FATAL_ERROR "The newest release in CHANGELOG.md is not ${PROJECT_VERSION}: ${newest}")
endif()
set(FW_UPDATE_RELEASE_DATE "${CMAKE_MATCH_2}")

file(STRINGS "${debian_changelog}" newest REGEX "^fw-update " LIMIT_COUNT 1)
string(REGEX REPLACE "^fw-update \\(([^)]+)\\).*" "\\1" FW_UPDATE_VERSION "${newest}")

execute_process(COMMAND awk -f "${script}" "${changelog}"
                OUTPUT_VARIABLE FW_UPDATE_RELEASES OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
