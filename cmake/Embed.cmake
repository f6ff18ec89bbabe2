# Files that the program carries inside its own file.
include_guard(GLOBAL)

# The tool runs while building, so it is built for this machine also when the program
# is built for another one.
if(CMAKE_CROSSCOMPILING)
  find_program(FENTO_HOST_CXX NAMES g++ c++ clang++ REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  set(FENTO_EMBED ${PROJECT_BINARY_DIR}/embed-host)
  add_custom_command(OUTPUT ${FENTO_EMBED}
    COMMAND ${FENTO_HOST_CXX} -std=c++20 -O1 -o ${FENTO_EMBED} ${PROJECT_SOURCE_DIR}/tools/embed.cpp
    DEPENDS ${PROJECT_SOURCE_DIR}/tools/embed.cpp VERBATIM)
else()
  add_executable(embed ${PROJECT_SOURCE_DIR}/tools/embed.cpp)
  set(FENTO_EMBED embed)
endif()

# fento_embed(OUTPUT NAME TYPE FILE [NAME TYPE FILE ...]) makes the source file OUTPUT,
# which defines EmbeddedFiles(). File names count from the source folder.
function(fento_embed output)
  set(words)
  set(files)
  set(rest ${ARGN})
  while(rest)
    list(POP_FRONT rest name type file)
    set(path ${PROJECT_SOURCE_DIR}/${file})
    if(NOT EXISTS ${path})
      message(FATAL_ERROR "${file} is missing; the program carries it")
    endif()
    list(APPEND words ${name} ${type} ${path})
    list(APPEND files ${path})
  endwhile()
  add_custom_command(OUTPUT ${output}
    COMMAND ${FENTO_EMBED} ${output} ${words}
    DEPENDS ${FENTO_EMBED} ${files}
    COMMENT "Embedding carried files" VERBATIM)
  # One string literal a file, longer than the language promises to take.
  if(NOT MSVC)
    set_source_files_properties(${output} PROPERTIES COMPILE_OPTIONS "-Wno-overlength-strings")
  endif()
endfunction()
