# The libraries of other makers that come as headers or as source.

# gorbex_header_library(TARGET FOLDER): cross-compiled, a library of headers is seen through a folder
# of links that holds nothing else, so that the host's own headers stay out.
function(gorbex_header_library target folder)
  find_path(GORBEX_HOST_${folder} ${folder} PATHS /usr/include /usr/local/include
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
  file(CREATE_LINK ${GORBEX_HOST_${folder}}/${folder} ${CMAKE_BINARY_DIR}/headers/${folder}
    SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/headers)
endfunction()

# gorbex_use_header(TARGET HEADER): as gorbex_header_library, for a library that is one header.
function(gorbex_use_header target header)
  find_path(GORBEX_HOST_${header} ${header} PATHS /usr/include /usr/local/include
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
  file(CREATE_LINK ${GORBEX_HOST_${header}}/${header} ${CMAKE_BINARY_DIR}/headers/${header} SYMBOLIC)
  target_include_directories(${target} SYSTEM PRIVATE ${CMAKE_BINARY_DIR}/headers)
endfunction()

set(GORBEX_TOOLKIT "" CACHE PATH
  "Cross-compiled: where scripts/toolkit has put the window toolkit; without it the window is left out")

# gorbex_find_toolkit(): the window toolkit as gorbex_toolkit. Its headers are not held to this
# project's warnings.
function(gorbex_find_toolkit)
  if(CMAKE_CROSSCOMPILING)
    if(NOT GORBEX_TOOLKIT)
      return()
    endif()
    unset(wxWidgets_DIR CACHE)
    find_package(wxWidgets 3.2 CONFIG REQUIRED COMPONENTS core base
      PATHS ${GORBEX_TOOLKIT}/lib/cmake/wxWidgets NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  else()
    find_package(wxWidgets 3.2 REQUIRED COMPONENTS core base)
  endif()
  add_library(gorbex_toolkit INTERFACE)
  target_include_directories(gorbex_toolkit SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
  target_compile_definitions(gorbex_toolkit INTERFACE ${wxWidgets_DEFINITIONS})
  target_compile_options(gorbex_toolkit INTERFACE ${wxWidgets_CXX_FLAGS})
  target_link_libraries(gorbex_toolkit INTERFACE ${wxWidgets_LIBRARIES})
endfunction()

macro(gorbex_find_command_line_libraries)
  if(CMAKE_CROSSCOMPILING)
    gorbex_header_library(CLI11::CLI11 CLI)
    gorbex_header_library(nlohmann_json::nlohmann_json nlohmann)
  else()
    find_package(CLI11 REQUIRED)
    find_package(nlohmann_json REQUIRED)
  endif()
endmacro()

macro(gorbex_find_test_library)
  if(CMAKE_CROSSCOMPILING)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  else()
    find_package(GTest REQUIRED)
  endif()
  include(GoogleTest)
endmacro()

# gorbex_tests(TARGET): the tests of a program, each on its own; cross-compiled all in one, because
# starting the emulator anew for each takes longer than the tests.
function(gorbex_tests target)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES TIMEOUT 300)
  else()
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60)
  endif()
endfunction()
