# Compiler settings and the helpers with which every folder declares its part.
include_guard(GLOBAL)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

if(NOT MSVC)
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wno-float-conversion)
  if(FENTO_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
  endif()
endif()

# Where systems differ, a source comes as a pair, NAME_posix.cpp and NAME_windows.cpp.
if(WIN32)
  set(FENTO_SYSTEM windows)
  add_compile_definitions(WIN32_LEAN_AND_MEAN NOMINMAX)  # some names of the whole header are ours as well
else()
  set(FENTO_SYSTEM posix)
endif()

# What keeps a fault from becoming somebody's door. tools/check_hardening.sh looks for it in the program.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
if(FENTO_SYSTEM STREQUAL "posix" AND NOT APPLE)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
  if(NOT "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_DEBUG}" MATCHES "-fsanitize")
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  endif()
endif()

# A library of this folder: every source named, headers found as "folder/header.h".
function(fento_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LIBS})
endfunction()

# Sources whose loops run over pixels: fast in every build.
function(fento_hot)
  if(NOT MSVC)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS "-O3")
  endif()
endfunction()

# A test program, its cases known to CTest one by one.
function(fento_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE
    FENTO_SOURCE_DIR="${PROJECT_SOURCE_DIR}" FENTO_BUILD_DIR="${CMAKE_CURRENT_BINARY_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
