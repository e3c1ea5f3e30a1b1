# SPDX-License-Identifier: MIT
# Installs the kit, moves what was installed, and builds and runs a project against it.
# Needs BUILD, WORK, GENERATOR, COMPILER, BUILD_TYPE, SANITIZE and VERSION.
set(installed "${WORK}/installed")
set(moved "${WORK}/moved")

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

# configure(CODE VERSION): configures the project, asking for a version of the kit.
function(configure code version)
    set(flags "")
    if(SANITIZE)
        set(flags -fsanitize=address,undefined)
    endif()
    execute_process(
        COMMAND ${CMAKE_COMMAND} --fresh -S "${CMAKE_CURRENT_LIST_DIR}" -B "${WORK}/build"
            -G "${GENERATOR}" "-DCMAKE_CXX_COMPILER=${COMPILER}"
            "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}" "-DCMAKE_CXX_FLAGS=${flags}"
            "-DCMAKE_PREFIX_PATH=${moved}" "-DWANTED_VERSION=${version}"
        OUTPUT_VARIABLE text ERROR_VARIABLE text RESULT_VARIABLE result)
    set(${code} ${result} PARENT_SCOPE)
    set(configured "${text}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK}")
run(ignored ${CMAKE_COMMAND} --install "${BUILD}" --config "${BUILD_TYPE}"
    --prefix "${installed}" --component widgets)
file(RENAME "${installed}" "${moved}")

# The headers of the kit and no others, the library and its package.
file(GLOB_RECURSE files RELATIVE "${moved}" "${moved}/*")
set(names "${files}")
list(TRANSFORM names REPLACE "^.*/(.*)$" "\\1")
list(FILTER names EXCLUDE REGEX "\\.h$|^FwUpdateWidgets(Config|Targets).*\\.cmake$")
expect("files besides headers and package" "${names}" libFwUpdateWidgets.a)
file(GLOB in_tree RELATIVE "${CMAKE_CURRENT_LIST_DIR}/../../../widgets"
    "${CMAKE_CURRENT_LIST_DIR}/../../../widgets/*.h")
list(FILTER in_tree EXCLUDE REGEX "_p\\.h$")
file(GLOB headers RELATIVE "${moved}/include/FwUpdateWidgets/widgets"
    "${moved}/include/FwUpdateWidgets/widgets/*")
expect("headers" "${headers}" "${in_tree}")

# Another major version may differ in anything, an older minor one may not.
string(REGEX MATCH "^[0-9]+" major "${VERSION}")
math(EXPR next "${major} + 1")
math(EXPR previous "${major} - 1")
foreach(version ${next} ${previous})
    configure(code ${version})
    if(code EQUAL 0)
        message(FATAL_ERROR "A project that wants version ${version} gets ${VERSION}")
    endif()
endforeach()
foreach(version ${major}.0 ${VERSION} "")
    configure(code "${version}")
    if(NOT code EQUAL 0)
        message(FATAL_ERROR "A project that wants version ${version}:\n${configured}")
    endif()
endforeach()

run(ignored ${CMAKE_COMMAND} --build "${WORK}/build" --config "${BUILD_TYPE}")
find_program(stranger stranger PATHS "${WORK}/build" "${WORK}/build/${BUILD_TYPE}"
    NO_DEFAULT_PATH REQUIRED)
run(printed "${stranger}")
expect("what the project's program prints" "${printed}"
"ColorButton
CustomProgressBar
FuncButton
IconButton
ImageButton
MButton
ProfileButton
SwitchButton
tabButton
#2e3032
")
