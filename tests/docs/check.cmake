# SPDX-License-Identifier: MIT
# Every link in the documents has a target, the manual of the kit has a section on each class,
# README.md installs the same packages as the scripts, and Fedora has a name for each.
cmake_minimum_required(VERSION 3.25)

file(GLOB documents ${ROOT}/*.md ${ROOT}/docs/*.md)
foreach(document IN LISTS documents)
    cmake_path(GET document PARENT_PATH folder)
    file(READ ${document} text)
    string(REGEX MATCHALL "\\]\\([^)]+\\)" links "${text}")
    foreach(link IN LISTS links)
        string(REGEX REPLACE "^\\]\\(([^)#]*).*\\)$" "\\1" target "${link}")
        if(NOT target MATCHES "^[a-z]+:" AND NOT EXISTS ${folder}/${target})
            message(SEND_ERROR "${document}: there is no ${target}")
        endif()
    endforeach()
endforeach()

file(READ ${ROOT}/docs/widgets.md manual)
file(GLOB headers ${ROOT}/widgets/*.h)
foreach(header IN LISTS headers)
    file(READ ${header} text)
    cmake_path(GET header STEM class)
    if(text MATCHES "Q_OBJECT" AND NOT manual MATCHES "\n## ${class}\n")
        message(SEND_ERROR "docs/widgets.md: no section on ${class}")
    endif()
endforeach()

file(READ ${ROOT}/README.md readme)
foreach(qt IN ITEMS 5 6)
    foreach(list IN ITEMS build_packages homebrew_packages)
        execute_process(
            COMMAND bash -euc "FW_UPDATE_QT=${qt}; . .ci/packages.sh; echo \"\${${list}[*]}\""
            WORKING_DIRECTORY ${ROOT} OUTPUT_VARIABLE packages COMMAND_ERROR_IS_FATAL ANY)
        string(FIND "${readme}" " install ${packages}" place)
        if(packages STREQUAL "\n" OR place EQUAL -1)
            message(SEND_ERROR "README.md does not install ${list} for Qt ${qt}: ${packages}")
        endif()
    endforeach()
    foreach(list IN ITEMS build simulator test fuzz)
        execute_process(
            COMMAND bash -euc "FW_UPDATE_QT=${qt}; . .ci/packages.sh
                for name in \"\${${list}_packages[@]}\"; do fedora_name \"$name\"; done"
            WORKING_DIRECTORY ${ROOT} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endforeach()
