# SPDX-License-Identifier: MIT
# Finds Qt 5 or Qt 6. Targets link to Qt${QT_VERSION_MAJOR}::Widgets, since Qt::Widgets only exists
# from Qt 5.15 on.
set(FW_UPDATE_QT "" CACHE STRING
    "The major version of Qt, 5 or 6; empty takes Qt 5 if it is found and Qt 6 otherwise")
set_property(CACHE FW_UPDATE_QT PROPERTY STRINGS "" 5 6)
if(NOT FW_UPDATE_QT MATCHES "^[56]?$")
    message(FATAL_ERROR "FW_UPDATE_QT: ${FW_UPDATE_QT} is neither 5 nor 6")
endif()

# In turn: with two names in one call, the order of the files on the disk would decide.
if(NOT FW_UPDATE_QT EQUAL 6)
    find_package(QT NAMES Qt5 QUIET COMPONENTS Core)
endif()
if(NOT QT_FOUND AND NOT FW_UPDATE_QT EQUAL 5)
    find_package(QT NAMES Qt6 QUIET COMPONENTS Core)
endif()
if(NOT QT_FOUND)
    message(FATAL_ERROR "Qt ${FW_UPDATE_QT} is missing. If it is installed, add its folder to "
                        "CMAKE_PREFIX_PATH.")
endif()
if(QT_VERSION_MAJOR EQUAL 5)
    set(FW_UPDATE_OLDEST_QT 5.11)
else()
    set(FW_UPDATE_OLDEST_QT 6.2)
endif()

# fw_find_qt(COMPONENT...): finds components of Qt. A macro, since Qt's packages set variables.
macro(fw_find_qt)
    find_package(Qt${QT_VERSION_MAJOR} ${FW_UPDATE_OLDEST_QT} REQUIRED COMPONENTS ${ARGN})
endmacro()

# fw_find_qt_gui_private(): finds Qt${QT_VERSION_MAJOR}::GuiPrivate, which newer versions of Qt have
# in a package of its own.
macro(fw_find_qt_gui_private)
    fw_find_qt(Gui)
    if(NOT TARGET Qt${QT_VERSION_MAJOR}::GuiPrivate)
        fw_find_qt(GuiPrivate)
    endif()
endmacro()

# The oldest macOS that this Qt runs on.
if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
    if(QT_VERSION VERSION_LESS 6)
        set(CMAKE_OSX_DEPLOYMENT_TARGET 10.13)
    elseif(QT_VERSION VERSION_LESS 6.5)
        set(CMAKE_OSX_DEPLOYMENT_TARGET 10.14)
    elseif(QT_VERSION VERSION_LESS 6.8)
        set(CMAKE_OSX_DEPLOYMENT_TARGET 11.0)
    else()
        set(CMAKE_OSX_DEPLOYMENT_TARGET 12.0)
    endif()
endif()
