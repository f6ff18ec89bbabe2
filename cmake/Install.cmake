# What is installed and where, the Debian package, the folder for Windows, and the files beside the program in a build tree.
include(GNUInstallDirs)

set(FENTO_SHARE ${CMAKE_INSTALL_DATADIR}/${PROJECT_NAME})
set(FENTO_ID fento-lira-master)

if(TARGET fento-lira-master)
  # In a build tree the program finds its pictures and skin beside itself, as in a portable copy.
  # Only what has changed is copied, and nothing that the player put there is removed.
  file(GLOB FENTO_PICTURES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Imagens/*)
  set(FENTO_BESIDE)
  foreach(source ${FENTO_PICTURES} ${PROJECT_SOURCE_DIR}/assets/Puzzle.skn)
    if(source MATCHES "/Imagens/([^/]+)$")
      set(copy ${CMAKE_BINARY_DIR}/Imagens/${CMAKE_MATCH_1})
    else()
      set(copy ${CMAKE_BINARY_DIR}/Puzzle.skn)
    endif()
    add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_COMMAND} -E copy ${source} ${copy} DEPENDS ${source} VERBATIM)
    list(APPEND FENTO_BESIDE ${copy})
  endforeach()
  add_custom_target(beside_program DEPENDS ${FENTO_BESIDE})
  add_dependencies(fento-lira-master beside_program)

  if(WIN32)
    include(cmake/InstallWindows.cmake)
    return()
  endif()
  install(TARGETS fento-lira-master RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/Imagens DESTINATION ${FENTO_SHARE})
install(FILES ${PROJECT_SOURCE_DIR}/assets/Puzzle.skn DESTINATION ${FENTO_SHARE})
install(FILES ${PROJECT_SOURCE_DIR}/packaging/${FENTO_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/example.fento_lira.fento_lira_master.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
foreach(size 16 32 48 64 96)
  install(FILES ${PROJECT_SOURCE_DIR}/assets/${FENTO_ID}-${size}.png RENAME ${FENTO_ID}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/assets/${FENTO_ID}.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# Compressed files carry no time and no name, so that equal sources give equal packages.
function(install_compressed source name destination)
  set(packed ${CMAKE_BINARY_DIR}/packed/${name}.gz)
  add_custom_command(OUTPUT ${packed}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packed
    COMMAND sh -c "gzip -9nc '${source}' > '${packed}'" DEPENDS ${source} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY FENTO_PACKED ${packed})
  install(FILES ${packed} DESTINATION ${destination})
endfunction()

if(UNIX AND NOT APPLE)
  install_compressed(${PROJECT_SOURCE_DIR}/packaging/${FENTO_ID}.6 ${FENTO_ID}.6 ${CMAKE_INSTALL_MANDIR}/man6)
  install_compressed(${PROJECT_SOURCE_DIR}/packaging/changelog changelog.Debian ${CMAKE_INSTALL_DATADIR}/doc/${FENTO_ID})
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${FENTO_ID})
  get_property(FENTO_PACKED GLOBAL PROPERTY FENTO_PACKED)
  add_custom_target(packed_documents DEPENDS ${FENTO_PACKED})
  if(TARGET fento-lira-master)
    add_dependencies(fento-lira-master packed_documents)
  endif()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${FENTO_ID})
set(CPACK_PACKAGE_VENDOR "The Fento-Lira Master developers")
set(CPACK_PACKAGE_CONTACT "The Fento-Lira Master developers <developers@fento-lira.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "picture jigsaw with interlocking pieces")
set(CPACK_PACKAGE_DESCRIPTION "Take one of the pictures that come with it or any BMP, GIF or JPG file.
The program cuts it into interlocking pieces, scatters them over a board
larger than the screen, and you drag, turn and join them until the picture
is whole. Five levels, saved games, hints. In Brazilian Portuguese.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian_layout.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The windows are laid out for letters of Arial's width.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation, qt6-translations-l10n, qt6-wayland")
# Folders and files as policy wants them, whatever the builder's umask is.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
