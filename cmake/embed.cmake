# Builds files into the program. Included, this file offers gorbex_embed(); run as a script by the
# build, it writes the source that gorbex_embed() compiles.

# Bytes as character literals: string literals have a size limit in some compilers.
function(gorbex_bytes_of file result)
  file(READ "${file}" bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}00")
  string(REPEAT "'[^']*'," 12 line)
  string(REGEX REPLACE "(${line})" "\\1\n    " bytes "${bytes}")
  string(REGEX REPLACE ",[ \n]*$" "" bytes "${bytes}")
  set(${result} "${bytes}" PARENT_SCOPE)
endfunction()

function(gorbex_write_embedded output files)
  set(arrays "")
  set(entries "")
  set(number 0)
  foreach(file IN LISTS files)
    cmake_path(GET file STEM LAST_ONLY name)
    gorbex_bytes_of("${file}" bytes)
    string(APPEND arrays "constexpr char kBytes${number}[] = {\n    ${bytes}};\n\n")
    string(APPEND entries "    {\"${name}\", {kBytes${number}, sizeof(kBytes${number}) - 1}},\n")
    math(EXPR number "${number} + 1")
  endforeach()
  file(WRITE "${output}" "// Generated from the files it holds; changes are lost.
#include \"ui/embedded_files.h\"

namespace gorbex::ui {
namespace {

struct Embedded {
  std::string_view name;
  std::string_view bytes;
};

${arrays}constexpr Embedded kFiles[] = {
${entries}};

}  // namespace

std::string_view EmbeddedFile(std::string_view name) {
  for (const Embedded& file : kFiles) {
    if (file.name == name) return file.bytes;
  }
  return {};
}

}  // namespace gorbex::ui
")
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  file(STRINGS "${GORBEX_EMBED_LIST}" files ENCODING UTF-8)
  gorbex_write_embedded("${GORBEX_EMBED_OUTPUT}" "${files}")
  return()
endif()

set(GORBEX_EMBED_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

# gorbex_embed(TARGET FILES...): TARGET gets gorbex::ui::EmbeddedFile() over these files. Paths are
# relative to the current source folder. Only for one target of a program.
function(gorbex_embed target)
  if(NOT ARGN)
    message(FATAL_ERROR "gorbex_embed(${target}): no files")
  endif()
  set(files "")
  set(names "")
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    cmake_path(GET file STEM LAST_ONLY name)
    if(NOT name MATCHES "^[A-Za-z0-9_.-]+$")
      message(FATAL_ERROR "gorbex_embed(${target}): the name '${name}' needs other characters")
    elseif(name IN_LIST names)
      message(FATAL_ERROR "gorbex_embed(${target}): two files are named '${name}'")
    endif()
    list(APPEND files "${file}")
    list(APPEND names "${name}")
  endforeach()

  # The list is a separate file, so that adding and leaving out files writes the source anew.
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${target}_embedded_files.cpp)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}_embedded_files.txt)
  list(JOIN files "\n" lines)
  file(CONFIGURE OUTPUT ${list} CONTENT "${lines}\n" @ONLY)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -D GORBEX_EMBED_LIST=${list} -D GORBEX_EMBED_OUTPUT=${output}
      -P ${GORBEX_EMBED_SCRIPT}
    DEPENDS ${files} ${list} ${GORBEX_EMBED_SCRIPT}
    COMMENT "Embedding files into ${target}"
    VERBATIM)

  # A separate library keeps clang-tidy off the generated source.
  add_library(${target}_embedded OBJECT ${output})
  set_target_properties(${target}_embedded PROPERTIES CXX_CLANG_TIDY "")
  target_include_directories(${target}_embedded
    PRIVATE $<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>)
  target_link_libraries(${target}_embedded PRIVATE gorbex_flags)
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:${target}_embedded>)
endfunction()
