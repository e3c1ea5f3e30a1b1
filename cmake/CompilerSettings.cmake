# SPDX-License-Identifier: MIT
# What the presets switch on; a plain build by a packager gets none of it.

option(FW_UPDATE_STRICT "Treat our own warnings as errors" OFF)
option(FW_UPDATE_SANITIZE "Check addresses, undefined behaviour and leaks at run time" OFF)
option(FW_UPDATE_HARDEN "Harden the program against exploitation" OFF)

if(FW_UPDATE_STRICT)
    add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
                        -Wold-style-cast -Wnon-virtual-dtor -Werror)
endif()

if(FW_UPDATE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    # The checks' own code misleads GCC's estimates of buffer sizes.
    add_compile_options(-Wno-stringop-overflow)
    add_link_options(-fsanitize=address,undefined)
endif()

if(FW_UPDATE_HARDEN)
    # Nor does what gets shipped tell where it was built.
    add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
                        -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    set(CMAKE_SKIP_RPATH ON)
    add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    if(NOT APPLE)
        add_compile_options(-fstack-clash-protection)
        add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack -Wl,--as-needed)
    endif()
endif()

# For a target that throws nothing and has nothing thrown through it: it then carries no code for
# that and does not name the library that unwinds.
function(fw_throws_nothing target)
    target_compile_options(${target} PRIVATE -fno-exceptions)
endfunction()
