# SPDX-License-Identifier: MIT
# CTest reads this before it runs a test: the caller's session, language and settings of Qt stay
# outside.
execute_process(COMMAND env OUTPUT_VARIABLE environment)
string(REGEX MATCHALL "(^|\n)(QT_|XDG|DISPLAY|WAYLAND|DESKTOP|KDE|GNOME|LANG|LC_)[A-Z_0-9]*=" settings "${environment}")
foreach(setting IN LISTS settings)
    string(REGEX REPLACE "[\n=]" "" name "${setting}")
    unset(ENV{${name}})
endforeach()
set(ENV{LC_ALL} C.UTF-8)
