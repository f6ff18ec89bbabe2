# What of SDL the program for Windows needs: sound. Preloaded into SDL's cache (cmake -C).
set(CMAKE_BUILD_TYPE Release CACHE STRING "")
set(SDL_STATIC OFF CACHE BOOL "")

# Windows stay on, since the table of all its functions names some that are found there only.
foreach(part DIRECTX DUMMYVIDEO HAPTIC HIDAPI JOYSTICK LOCALE MISC OFFSCREEN OPENGL OPENGLES POWER RENDER SENSOR TEST VULKAN XINPUT)
  set(SDL_${part} OFF CACHE BOOL "")
endforeach()
