# What "cmake --install" puts where, and the Debian package that CPack makes of it.
include(GNUInstallDirs)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # tests and benchmarks are not installed

# The program reads its data from the folder it stands in, so both go into a folder of their own.
set(program_folder lib/zem)
install(TARGETS zem veldt RUNTIME DESTINATION ${program_folder})
install(FILES ${zem_data} DESTINATION ${program_folder})
install(FILES web/page.html web/page.css web/page.js ${CMAKE_BINARY_DIR}/web/player.wasm.gz DESTINATION ${program_folder}/web OPTIONAL)
install(DIRECTORY data/manual data/pieces data/templates DESTINATION ${program_folder})
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging)
foreach(name zem veldt)
    file(RELATIVE_PATH program /usr/${CMAKE_INSTALL_BINDIR} /usr/${program_folder}/${name})
    # A system without links can still build, and only not install.
    file(CREATE_LINK ${program} ${CMAKE_BINARY_DIR}/packaging/${name} SYMBOLIC RESULT linked)
    install(FILES ${CMAKE_BINARY_DIR}/packaging/${name} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()

# For the desktop: its caches are refreshed by the packages they belong to.
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable)
install(FILES packaging/zem.desktop packaging/veldt.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/zem-kel.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES data/icons/zem.svg data/icons/veldt.svg DESTINATION ${icons}/apps)
install(FILES data/icons/zem.svg DESTINATION ${icons}/mimetypes RENAME application-x-kel-game.svg)

# Where no package does it.
install(CODE [[
    if(NOT DEFINED ENV{DESTDIR} AND NOT CMAKE_INSTALL_PREFIX MATCHES "_CPack_Packages")
        foreach(cache "update-mime-database;mime" "update-desktop-database;applications")
            list(GET cache 0 tool)
            list(GET cache 1 folder)
            find_program(${tool} ${tool})
            if(${tool})
                execute_process(COMMAND ${${tool}} ${CMAKE_INSTALL_PREFIX}/share/${folder})
            endif()
        endforeach()
    endif()
]])

# For the reader.
file(GLOB samples CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/samples/*.kel)
install(FILES ${samples} DESTINATION ${CMAKE_INSTALL_DATADIR}/zem/samples)
install(DIRECTORY ${CMAKE_BINARY_DIR}/web/samples DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL # to play in a browser
    FILES_MATCHING PATTERN "*.html")
file(READ LICENSE ZEM_LICENCE)
file(READ data/icons/LICENSE ICONS_LICENCE)
configure_file(packaging/copyright.in packaging/copyright @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS LICENSE data/icons/LICENSE)
find_program(GZIP gzip)
if(GZIP)
    foreach(page zem.1 veldt.1 changelog)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS packaging/${page})
        execute_process(COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/packaging/${page}
            OUTPUT_FILE ${CMAKE_BINARY_DIR}/packaging/${page}.gz COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
    install(FILES ${CMAKE_BINARY_DIR}/packaging/zem.1.gz ${CMAKE_BINARY_DIR}/packaging/veldt.1.gz
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${CMAKE_BINARY_DIR}/packaging/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Zem team <zem-support@example.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for text-adventure games in the Kel script language")
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/InstalledSize.cmake)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "hunspell-en-us | hunspell-dictionary, desktop-file-utils, hicolor-icon-theme, shared-mime-info, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/postinst ${PROJECT_SOURCE_DIR}/packaging/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Zem opens a game file and lets its author edit everything in it through
forms: rooms with their exits, characters, objects, scripts in plain
English, texts, menus and more. Every step can be undone, unsaved changes
survive a crash, and earlier versions are kept.
.
Games are played with Veldt, which this package contains, too.")
include(CPack)
