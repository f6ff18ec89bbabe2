# The folder that players on Windows get: the program with all that it needs beside it, nothing to install.
install(TARGETS fento-lira-master RUNTIME DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/Imagens DESTINATION .)
install(FILES ${PROJECT_SOURCE_DIR}/assets/Puzzle.skn DESTINATION .)
# A text of ours as the simplest editor there wants it.
configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/LEIA-ME.txt ${CMAKE_BINARY_DIR}/LEIA-ME.txt @ONLY NEWLINE_STYLE CRLF)
install(FILES ${CMAKE_BINARY_DIR}/LEIA-ME.txt DESTINATION .)

# With a compiler on Windows itself, windeployqt knows where the libraries are.
if(NOT CMAKE_CROSSCOMPILING)
  return()
endif()
install(DIRECTORY ${FENTO_WINDOWS_LIBRARIES}/../licences/ DESTINATION Licencas)
set(qt ${FENTO_WINDOWS_LIBRARIES}/qt6-base)
install(FILES ${qt}/bin/Qt6Core.dll ${qt}/bin/Qt6Gui.dll ${qt}/bin/Qt6Widgets.dll ${FENTO_WINDOWS_LIBRARIES}/libsdl2/bin/SDL2.dll
        DESTINATION .)
foreach(plugin platforms/qwindows styles/qwindowsvistastyle imageformats/qgif imageformats/qjpeg)
  cmake_path(GET plugin PARENT_PATH kind)
  install(FILES ${qt}/plugins/${plugin}.dll DESTINATION ${kind})
endforeach()
# The compiler's own libraries; without symbols a tenth of what they were.
foreach(name libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name} OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
  install(FILES ${file} DESTINATION .)
  install(CODE "execute_process(COMMAND ${CMAKE_STRIP} \"\${CMAKE_INSTALL_PREFIX}/${name}\" COMMAND_ERROR_IS_FATAL ANY)")
endforeach()
