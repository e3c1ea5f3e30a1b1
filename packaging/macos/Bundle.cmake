# SPDX-License-Identifier: MIT
# "FW Update.app": the program, with the vendor's two files in its folder, and Qt. On other
# platforms, the same rules install the same tree with that platform's program.
set(macos "${CMAKE_CURRENT_LIST_DIR}")
set(bundle "FW Update.app")
set(contents "${bundle}/Contents")
set(plist "${CMAKE_CURRENT_BINARY_DIR}/macos/Info.plist")
set(icon "${CMAKE_CURRENT_LIST_DIR}/../icons/fw-update.icns")
configure_file("${macos}/Info.plist.in" "${plist}" @ONLY)

if(APPLE)
    set_target_properties(fw-update PROPERTIES
        MACOSX_BUNDLE ON
        OUTPUT_NAME "FW Update"
        MACOSX_BUNDLE_INFO_PLIST "${plist}")
    install(TARGETS fw-update BUNDLE DESTINATION . COMPONENT program)
    get_target_property(qmake Qt${QT_VERSION_MAJOR}::qmake IMPORTED_LOCATION)
    cmake_path(GET qmake PARENT_PATH qt_programs)
    find_program(FW_UPDATE_MACDEPLOYQT macdeployqt HINTS "${qt_programs}" REQUIRED
                 DOC "Qt's tool that copies Qt into a bundle")
else()
    set(FW_UPDATE_MACDEPLOYQT "" CACHE FILEPATH "A stand-in for macdeployqt")
    install(PROGRAMS "$<TARGET_FILE:fw-update>" DESTINATION "${contents}/MacOS"
            RENAME "FW Update" COMPONENT program)
    install(FILES "${plist}" DESTINATION "${contents}" COMPONENT program)
endif()

if(FW_UPDATE_UNIVERSAL)
    get_target_property(qt_library Qt${QT_VERSION_MAJOR}::Core LOCATION)
    foreach(library IN LISTS qt_library HIDAPI_LINK_LIBRARIES)
        execute_process(COMMAND lipo "${library}" -verify_arch arm64 x86_64 RESULT_VARIABLE missing)
        if(missing)
            message(FATAL_ERROR "FW_UPDATE_UNIVERSAL: ${library} is not built for both arm64 and "
                                "x86_64. Homebrew's libraries never are; build Qt and hidapi for "
                                "both and set CMAKE_PREFIX_PATH to them.")
        endif()
    endforeach()
endif()

install(FILES "${icon}" DESTINATION "${contents}/Resources" COMPONENT program)
if(FW_UPDATE_TOOL)
    install(PROGRAMS "${FW_UPDATE_TOOL}" DESTINATION "${contents}/MacOS" RENAME nrfutil-mac
            COMPONENT program)
endif()
if(FW_UPDATE_PACKAGE)
    # Files in MacOS must be signed as code. Data can only store such a signature in extended
    # attributes, which many ways of copying lose. A link needs no signature of this kind.
    install(FILES "${FW_UPDATE_PACKAGE}" DESTINATION "${contents}/Resources" RENAME dfu.zip
            COMPONENT program)
    install(CODE "file(CREATE_LINK ../Resources/dfu.zip
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${contents}/MacOS/dfu.zip\" SYMBOLIC)"
        COMPONENT program)
endif()

# Both scripts need the complete bundle, so they run last.
if(FW_UPDATE_MACDEPLOYQT)
    install(CODE "
        set(bundle \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${bundle}\")
        execute_process(COMMAND \"${macos}/deploy-bundle\" \"${FW_UPDATE_MACDEPLOYQT}\" \"\${bundle}\"
                        COMMAND_ERROR_IS_FATAL ANY)
        execute_process(COMMAND \"${macos}/sign-bundle\" \"\${bundle}\" COMMAND_ERROR_IS_FATAL ANY)"
        COMPONENT program)
endif()
