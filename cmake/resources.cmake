# The resources of a Windows program: icon, version and manifest.

# gorbex_program_resources(TARGET DESCRIPTION [TOOLKIT]); TOOLKIT adds the resources that the window
# toolkit looks for.
function(gorbex_program_resources target description)
  cmake_parse_arguments(arg "TOOLKIT" "" "" ${ARGN})
  set(GORBEX_PROGRAM ${target})
  set(GORBEX_DESCRIPTION ${description})
  string(REPLACE "." "," GORBEX_VERSION_NUMBERS ${PROJECT_VERSION})
  set(GORBEX_TOOLKIT_RESOURCES "")
  if(arg_TOOLKIT)
    set(GORBEX_TOOLKIT_RESOURCES "#define wxUSE_NO_MANIFEST 1\n#include \"wx/msw/wx.rc\"")
  endif()
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${script} @ONLY)
  target_sources(${target} PRIVATE ${script})
  set(folder ${CMAKE_SOURCE_DIR}/packaging/windows)
  set_source_files_properties(${script} TARGET_DIRECTORY ${target} PROPERTIES
    OBJECT_DEPENDS "${folder}/program.manifest;${folder}/gorbexbuilder.ico"
    INCLUDE_DIRECTORIES ${folder})
endfunction()
