# What of Qt the program for Windows needs: windows and pictures. Preloaded into Qt's cache (cmake -C).
set(CMAKE_BUILD_TYPE Release CACHE STRING "")
set(BUILD_SHARED_LIBS ON CACHE BOOL "")
set(QT_BUILD_TESTS OFF CACHE BOOL "")
set(QT_BUILD_EXAMPLES OFF CACHE BOOL "")

# Parts of no use here.
set(INPUT_opengl no CACHE STRING "")
foreach(feature concurrent dbus network printsupport qmake sql testlib vulkan xml)
  set(FEATURE_${feature} OFF CACHE BOOL "")
endforeach()
# Readers of formats that the game does not take.
foreach(feature ico textmarkdownreader)
  set(FEATURE_${feature} OFF CACHE BOOL "")
endforeach()
# Its header is not free and Debian leaves it out; pens work as mice without it.
set(FEATURE_tabletevent OFF CACHE BOOL "")
# Text is drawn by DirectWrite where the display wants it, but there is no need of a second platform plugin.
set(FEATURE_direct2d1_1 OFF CACHE BOOL "")

# Everything else comes from Qt's own tree, whatever this machine has.
foreach(library doubleconversion freetype harfbuzz jpeg libb2 pcre2 png zlib)
  set(FEATURE_system_${library} OFF CACHE BOOL "")
endforeach()
foreach(feature glib icu zstd)
  set(FEATURE_${feature} OFF CACHE BOOL "")
endforeach()
