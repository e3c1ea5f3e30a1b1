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
    get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
    cmake_path(GET qmake PARENT_PATH qt_programs)
    find_program(FW_UPDATE_MACDEPLOYQT macdeployqt HINTS "${qt_programs}" REQUIRED
                 DOC "Qt's tool that copies Qt into a bundle")
else()
    set(FW_UPDATE_MACDEPLOYQT "" CACHE FILEPATH "A stand-in for macdeployqt")
    install(PROGRAMS "$<TARGET_FILE:fw-update>" DESTINATION "${contents}/MacOS"
            RENAME "FW Update" COMPONENT program)
    install(FILES "${plist}" DESTINATION "${contents}" COMPONENT program)
endif()

install(FILES "${icon}" DESTINATION "${contents}/Resources" COMPONENT program)
if(FW_UPDATE_TOOL)
    install(PROGRAMS "${FW_UPDATE_TOOL}" DESTINATION "${contents}/MacOS" RENAME nrfutil-mac
            COMPONENT program)
endif()
if(FW_UPDATE_PACKAGE)
    install(FILES "${FW_UPDATE_PACKAGE}" DESTINATION "${contents}/MacOS" RENAME dfu.zip
            COMPONENT program)
endif()

# macdeployqt copies Qt's libraries and plugins into the installed bundle, so it runs last.
if(FW_UPDATE_MACDEPLOYQT)
    install(CODE "execute_process(
        COMMAND \"${FW_UPDATE_MACDEPLOYQT}\"
                \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${bundle}\" -always-overwrite
        COMMAND_ERROR_IS_FATAL ANY)" COMPONENT program)
endif()

set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_FILE_NAME "fw-update-${PROJECT_VERSION}")
set(CPACK_DMG_VOLUME_NAME "FW Update ${PROJECT_VERSION}")
set(CPACK_DMG_FORMAT UDZO)
