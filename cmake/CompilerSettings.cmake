# SPDX-License-Identifier: MIT
# Compiler settings for the presets. They are off by default, for packagers.

option(FW_UPDATE_STRICT "Treat warnings as errors" OFF)
option(FW_UPDATE_SANITIZE "Check addresses, undefined behaviour and leaks at run time" OFF)
option(FW_UPDATE_HARDEN "Harden the program against exploitation" OFF)

if(FW_UPDATE_STRICT)
    add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
                        -Wold-style-cast -Wnon-virtual-dtor -Werror)
    # A macro of Qt 6's for tests passes no variable arguments.
    add_compile_options(
        $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-gnu-zero-variadic-macro-arguments>)
endif()

if(FW_UPDATE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    # The sanitizers' code causes false warnings about buffer sizes in GCC.
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>)
    add_link_options(-fsanitize=address,undefined)
endif()

if(FW_UPDATE_HARDEN)
    # Keeps the paths of this machine out of the program.
    add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
                        -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    if(APPLE)
        # macdeployqt finds libraries outside the bundle by their search paths, which it removes.
        set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)
    else()
        set(CMAKE_SKIP_RPATH ON)
        add_compile_options(-fstack-clash-protection)
        add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack -Wl,--as-needed)
    endif()
endif()

# For a target without exceptions. It contains no code for unwinding and does not link to the
# library for it.
function(fw_throws_nothing target)
    target_compile_options(${target} PRIVATE -fno-exceptions)
endfunction()

# For a library of which a program uses only a part: the linker can leave out the rest.
function(fw_can_be_used_in_part target)
    target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
endfunction()

function(fw_leaves_out_unused_code target)
    target_link_options(${target} PRIVATE
        -Wl,$<IF:$<PLATFORM_ID:Darwin>,-dead_strip,--gc-sections>)
endfunction()
