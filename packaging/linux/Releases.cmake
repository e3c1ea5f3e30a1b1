# SPDX-License-Identifier: MIT
# Reads CHANGELOG.md and sets, for the man page and the AppStream metadata:
#   FW_UPDATE_RELEASE_DATE   the date of the newest release, which must be this version
#   FW_UPDATE_VERSION        this version or, with unreleased entries, the next minor one with ~dev
#   FW_UPDATE_RELEASES       the releases in AppStream's format
set(changelog "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
set(script "${CMAKE_CURRENT_LIST_DIR}/releases.awk")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${changelog}" "${script}")

file(STRINGS "${changelog}" releases REGEX "^## \\[[0-9]")
list(GET releases 0 newest)
if(NOT newest MATCHES "^## \\[([0-9.]+)\\] - ([0-9-]+)$"
   OR NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
    message(FATAL_ERROR "The newest release in CHANGELOG.md is not ${PROJECT_VERSION}: ${newest}")
endif()
set(FW_UPDATE_RELEASE_DATE "${CMAKE_MATCH_2}")

file(READ "${changelog}" text)
set(FW_UPDATE_VERSION "${PROJECT_VERSION}")
if(text MATCHES "\n## \\[Unreleased\\]\n[^[]*\n- ")
    math(EXPR minor "${PROJECT_VERSION_MINOR} + 1")
    set(FW_UPDATE_VERSION "${PROJECT_VERSION_MAJOR}.${minor}.0~dev")
endif()

execute_process(COMMAND awk -f "${script}" "${changelog}"
                OUTPUT_VARIABLE FW_UPDATE_RELEASES OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
