# Every target of this project is made here, so that warnings, sanitizers and the include
# rule (a layer sees its own folder and the folders of the layers it names) hold for all alike.

add_library(gorbex_flags INTERFACE)
if(MSVC)
  target_compile_options(gorbex_flags INTERFACE /W4 /permissive- /utf-8)
else()
  set(warnings -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror
    # GCC 12 sees an overlap in "text" + std::string that is not there.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  target_compile_options(gorbex_flags INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${warnings}>")
endif()
if(GORBEX_SANITIZE)
  target_compile_options(gorbex_flags INTERFACE
    -fsanitize=${GORBEX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(gorbex_flags INTERFACE -fsanitize=${GORBEX_SANITIZE})
endif()

# The fuzzing library finds its way by what the compiler adds for it; only its targets link it.
if(GORBEX_FUZZ)
  target_compile_options(gorbex_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(GORBEX_TIDY)
  find_program(GORBEX_CLANG_TIDY NAMES clang-tidy-16 REQUIRED)
  set(CMAKE_CXX_CLANG_TIDY ${GORBEX_CLANG_TIDY} --quiet)
endif()

# A layer's headers are reached as "layer/header.h" through a folder of links that holds only that
# layer's own headers: including a layer that was not named fails to compile.
function(gorbex_layer_includes target layer)
  string(REPLACE "/" "_" view ${layer})
  set(view ${CMAKE_BINARY_DIR}/layers/${view})
  file(REMOVE_RECURSE ${view})
  file(MAKE_DIRECTORY ${view}/${layer})
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${layer}/*.h)
  foreach(header ${headers})
    get_filename_component(name ${header} NAME)
    if(CMAKE_HOST_WIN32)
      configure_file(${header} ${view}/${layer}/${name} COPYONLY)  # links need a special right
    else()
      file(CREATE_LINK ${header} ${view}/${layer}/${name} SYMBOLIC)
    endif()
  endforeach()
  target_include_directories(${target} PUBLIC ${view})
endfunction()

# gorbex_layer(NAME FOLDER SOURCES... [USES targets...])
function(gorbex_layer target layer)
  cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
  add_library(${target} STATIC ${arg_SOURCES})
  gorbex_layer_includes(${target} ${layer})
  target_link_libraries(${target} PUBLIC ${arg_USES} PRIVATE gorbex_flags)
endfunction()
