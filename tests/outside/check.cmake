# SPDX-License-Identifier: MIT
# Installs a library, moves what was installed, and builds and runs a project against it, with CMake
# and with pkg-config.
# Needs BUILD, SOURCES, WORK, LIBRARY, PACKAGE, PRINTED, GENERATOR, COMPILER, BUILD_TYPE, SANITIZE,
# VERSION and QT.
set(installed "${WORK}/installed")
set(moved "${WORK}/moved")
set(project "${CMAKE_CURRENT_LIST_DIR}/${LIBRARY}")
set(flags "")
if(SANITIZE)
    set(flags -fsanitize=address,undefined)
endif()

# run(OUTPUT COMMAND ...): runs a command that must succeed.
function(run output)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text ERROR_VARIABLE errors RESULT_VARIABLE code)
    if(NOT code EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}: ${code}\n${text}${errors}")
    endif()
    set(${output} "${text}" PARENT_SCOPE)
endfunction()

# expect(WHAT SEEN WANTED)
function(expect what seen wanted)
    if(NOT seen STREQUAL wanted)
        message(FATAL_ERROR "${what}\n--- seen:\n${seen}\n--- wanted:\n${wanted}")
    endif()
endfunction()

# configure(CODE VERSION QT): configures the project, which asks for a version of the library and,
# unless QT is empty, sets the major version of Qt that it uses.
function(configure code version qt)
    execute_process(
        COMMAND ${CMAKE_COMMAND} --fresh -S "${project}" -B "${WORK}/build"
            -G "${GENERATOR}" "-DCMAKE_CXX_COMPILER=${COMPILER}"
            "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}" "-DCMAKE_CXX_FLAGS=${flags}"
            "-DCMAKE_PREFIX_PATH=${moved}" "-DWANTED_VERSION=${version}"
            "-DQT_VERSION_MAJOR=${qt}"
        OUTPUT_VARIABLE text ERROR_VARIABLE text RESULT_VARIABLE result)
    set(${code} ${result} PARENT_SCOPE)
    set(configured "${text}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK}")
run(ignored ${CMAKE_COMMAND} --install "${BUILD}" --config "${BUILD_TYPE}"
    --prefix "${installed}" --component ${LIBRARY})
file(RENAME "${installed}" "${moved}")

# The public headers and no others, the library and its packages.
file(GLOB_RECURSE files RELATIVE "${moved}" "${moved}/*")
set(names "${files}")
list(TRANSFORM names REPLACE "^.*/(.*)$" "\\1")
list(FILTER names EXCLUDE REGEX "\\.h$|^${PACKAGE}(Config|Targets).*\\.cmake$")
list(SORT names)
expect("files besides headers and CMake package" "${names}"
    "fwupdate-${LIBRARY}.pc;lib${PACKAGE}.a")
file(GLOB in_tree RELATIVE "${SOURCES}/${LIBRARY}" "${SOURCES}/${LIBRARY}/*.h")
list(FILTER in_tree EXCLUDE REGEX "_(p|mac)\\.h$")
file(GLOB headers RELATIVE "${moved}/include/${PACKAGE}/${LIBRARY}"
    "${moved}/include/${PACKAGE}/${LIBRARY}/*")
expect("headers" "${headers}" "${in_tree}")

# Another major version may differ in anything, an older minor one may not.
string(REGEX MATCH "^[0-9]+" major "${VERSION}")
math(EXPR next "${major} + 1")
math(EXPR previous "${major} - 1")
foreach(version ${next} ${previous})
    configure(code ${version} "")
    if(code EQUAL 0)
        message(FATAL_ERROR "A project that wants version ${version} gets ${VERSION}")
    endif()
endforeach()
math(EXPR other "11 - ${QT}")
configure(code "" ${other})
string(REGEX REPLACE "[ \n]+" " " words "${configured}")
if(code EQUAL 0 OR NOT words MATCHES "built with Qt ${QT}, but this project uses Qt ${other}")
    message(FATAL_ERROR "A project with another Qt is not told of it:\n${configured}")
endif()
configure(code "" ${QT})
if(NOT code EQUAL 0)
    message(FATAL_ERROR "A project with the same Qt:\n${configured}")
endif()
foreach(version ${major}.0 ${VERSION} "")
    configure(code "${version}" "")
    if(NOT code EQUAL 0)
        message(FATAL_ERROR "A project that wants version ${version}:\n${configured}")
    endif()
endforeach()

run(ignored ${CMAKE_COMMAND} --build "${WORK}/build" --config "${BUILD_TYPE}")
find_program(stranger stranger PATHS "${WORK}/build" "${WORK}/build/${BUILD_TYPE}"
    NO_DEFAULT_PATH REQUIRED)
run(printed "${stranger}")
expect("what the program built with CMake prints" "${printed}" "${PRINTED}")

file(GLOB_RECURSE module "${moved}/*.pc")
cmake_path(GET module PARENT_PATH modules)
find_program(pkg_config NAMES pkg-config pkgconf REQUIRED)
run(options ${CMAKE_COMMAND} -E env "PKG_CONFIG_PATH=${modules}:$ENV{PKG_CONFIG_PATH}"
    "${pkg_config}" --cflags --libs fwupdate-${LIBRARY})
separate_arguments(options UNIX_COMMAND "${options}")
run(ignored "${COMPILER}" -std=c++17 -fPIC ${flags} "${project}/main.cpp"
    -o "${WORK}/with-pkg-config" ${options})
run(printed "${WORK}/with-pkg-config")
expect("what the program built with pkg-config prints" "${printed}" "${PRINTED}")
