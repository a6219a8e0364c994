# What `make install` puts where, and the Debian package of it. The program finds its own files in
# ../share/kelvrane and ../libexec/kelvrane beside its folder, so any prefix will do.
include(GNUInstallDirs)

# Installing and packing build what they install, and nothing else.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(desktop_files ${CMAKE_SOURCE_DIR}/resources/linux)
set(share_folder ${CMAKE_INSTALL_DATADIR}/kelvrane)

add_custom_target(installable ALL DEPENDS kelvrane kelvrane-transfer kelvrane-sound help_file)
install(TARGETS kelvrane RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS kelvrane-transfer kelvrane-sound
        RUNTIME DESTINATION libexec/kelvrane LIBRARY DESTINATION libexec/kelvrane)
install(FILES ${CMAKE_BINARY_DIR}/Kelvrane.qch DESTINATION ${share_folder})

# Icons. The small drawings have fewer and heavier strokes.
set(icon_sizes 16 22 24 32 48 64 128 256 512)
function(add_icon context name drawing small_drawing)
  set(theme ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  set(rendered)
  foreach(size ${icon_sizes})
    set(source ${drawing})
    if(size LESS 32)
      set(source ${small_drawing})
    endif()
    set(picture ${CMAKE_BINARY_DIR}/icons/${name}-${size}.png)
    add_custom_command(OUTPUT ${picture} COMMAND render_icon ${source} ${picture} ${size}
                       DEPENDS render_icon ${source} VERBATIM)
    list(APPEND rendered ${picture})
    install(FILES ${picture} DESTINATION ${theme}/${size}x${size}/${context} RENAME ${name}.png)
  endforeach()
  install(FILES ${drawing} DESTINATION ${theme}/scalable/${context} RENAME ${name}.svg)
  add_custom_target(icon_${context} DEPENDS ${rendered})
  add_dependencies(installable icon_${context})
endfunction()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/icons)
add_icon(apps kelvrane ${CMAKE_SOURCE_DIR}/resources/icons/app.svg
         ${desktop_files}/icons/kelvrane-small.svg)
add_icon(mimetypes application-x-kelvrane-collection ${desktop_files}/icons/collection.svg
         ${desktop_files}/icons/collection-small.svg)

# What the desktop reads. The autostart entry lies where no session looks: the user copies it.
install(FILES ${desktop_files}/kelvrane.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${desktop_files}/kelvrane.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${desktop_files}/kelvrane.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${desktop_files}/autostart/kelvrane.desktop DESTINATION ${share_folder}/autostart)

# What people read. Compressed without the time, so that two builds are alike.
find_program(GZIP gzip REQUIRED)
function(add_compressed target source destination)
  set(compressed ${CMAKE_BINARY_DIR}/compressed/${target}.gz)
  add_custom_command(OUTPUT ${compressed} COMMAND ${GZIP} -9nc ${source} > ${compressed}
                     DEPENDS ${source} VERBATIM)
  install(FILES ${compressed} DESTINATION ${destination})
  add_custom_target(compressed_${target} DEPENDS ${compressed})
  add_dependencies(installable compressed_${target})
endfunction()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/compressed)
add_compressed(kelvrane.1 ${desktop_files}/kelvrane.1 ${CMAKE_INSTALL_MANDIR}/man1)
add_compressed(changelog ${desktop_files}/changelog ${CMAKE_INSTALL_DATADIR}/doc/kelvrane)
install(FILES ${desktop_files}/copyright ${CMAKE_SOURCE_DIR}/docs/data.md
              ${CMAKE_SOURCE_DIR}/docs/moving.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kelvrane)

# The package. dpkg-shlibdeps finds the libraries; the plugins that Qt opens by name are ours to
# name, and so is the font of sheets.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelvrane)
set(CPACK_PACKAGE_VENDOR "Brindlemoor-Ware")
set(CPACK_PACKAGE_CONTACT "Brindlemoor-Ware <packages@brindlemoor-ware.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "time keeping on projects from the system tray")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Kelvrane counts the time of the project that you pick, keeps breaks apart
and adds each day up into a history of your own.
.
From the history it makes timesheets and invoices on sheets of your own
design, which it files, prints or saves as PDF, and charts of any range of
days. All data stays in one folder on this computer.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, libqt6sql6-sqlite")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "ca-certificates, hicolor-icon-theme, qt6-wayland, shared-mime-info, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cups, gstreamer1.0-plugins-good")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
