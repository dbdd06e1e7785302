# The places of the installed files, and the packages that `cpack` makes of them. The window's own
# files are installed only when the window is built.

if(NOT TARGET gorbex)
  return()
endif()

include(GNUInstallDirs)

# A program for Windows is in one folder with everything that belongs to it.
if(WIN32)
  set(programs .)
  set(pages .)
  install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)
  install(FILES CHANGELOG.md DESTINATION .)
else()
  set(programs ${CMAKE_INSTALL_BINDIR})
  set(pages ${CMAKE_INSTALL_DATADIR}/doc/gorbexbuilder)
  install(FILES LICENSE DESTINATION ${pages} RENAME copyright)
  install(FILES include/gorbex_plugin.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endif()
install(TARGETS gorbex RUNTIME DESTINATION ${programs})
install(FILES README.md DESTINATION ${pages})
install(DIRECTORY docs DESTINATION ${pages})

# gorbex_install_compressed(FILE NAME FOLDER): FILE as NAME.gz. The same bytes give the same file.
function(gorbex_install_compressed file name folder)
  set(compressed ${CMAKE_BINARY_DIR}/packaging/${name}.gz)
  cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
  add_custom_command(
    OUTPUT ${compressed}
    COMMAND ${CMAKE_COMMAND} -E copy ${file} ${CMAKE_BINARY_DIR}/packaging/${name}
    COMMAND ${GORBEX_GZIP} -9nf ${CMAKE_BINARY_DIR}/packaging/${name}
    DEPENDS ${file}
    COMMENT "Compressing ${name}"
    VERBATIM)
  string(REPLACE "." "_" target gorbex_${name})
  add_custom_target(${target} ALL DEPENDS ${compressed})
  install(FILES ${compressed} DESTINATION ${folder})
endfunction()

if(UNIX)
  find_program(GORBEX_GZIP gzip REQUIRED)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging)
  gorbex_install_compressed(CHANGELOG.md changelog ${pages})
  gorbex_install_compressed(packaging/linux/gorbex.1 gorbex.1 ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES packaging/linux/gorbexbuilder-mail.service
    DESTINATION lib/systemd/user)
  # The program knows its own command line.
  set(completions)
  foreach(shell bash zsh)
    set(completion ${CMAKE_BINARY_DIR}/packaging/completion.${shell})
    add_custom_command(
      OUTPUT ${completion}
      COMMAND gorbex completion ${shell} > ${completion}
      DEPENDS gorbex
      COMMENT "Writing the completion for ${shell}"
      VERBATIM)
    list(APPEND completions ${completion})
  endforeach()
  add_custom_target(gorbex_completions ALL DEPENDS ${completions})
  install(FILES ${CMAKE_BINARY_DIR}/packaging/completion.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME gorbex)
  install(FILES ${CMAKE_BINARY_DIR}/packaging/completion.zsh
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions RENAME _gorbex)
endif()

if(TARGET gorbexbuilder)
  install(TARGETS gorbexbuilder RUNTIME DESTINATION ${programs})
  if(UNIX)
    gorbex_install_compressed(
      packaging/linux/gorbexbuilder.1 gorbexbuilder.1 ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES packaging/linux/gorbexbuilder.desktop
      DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES packaging/linux/gorbexbuilder.mime.xml
      DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME gorbexbuilder.xml)
    install(FILES src/ui/icons/gorbexbuilder.svg
      DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  endif()
endif()

set(CPACK_PACKAGE_NAME gorbexbuilder)
set(CPACK_PACKAGE_VENDOR "GorbexBuilder developers")
set(CPACK_PACKAGE_CONTACT "GorbexBuilder developers <gorbexbuilder@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "build manager for groups of Visual Basic component projects")
set(CPACK_PACKAGE_DESCRIPTION
"GorbexBuilder builds products that consist of dozens of Visual Basic
component projects: libraries, controls and executables that use one
another's binaries. It judges every reference against the registry, keeps
the build queue in an order that works, drives the compiler once per project,
judges its log, stamps versions and writes a registration script.
.
Windows paths lead into a prefix laid out as Wine lays one out.")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_INSTALL_DIRECTORY GorbexBuilder)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR ZIP)

if(WIN32)
  set(processor x86)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(processor x64)
  endif()
  set(CPACK_PACKAGE_FILE_NAME gorbexbuilder-${PROJECT_VERSION}-windows-${processor})
endif()
if(UNIX)
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION devel)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS git)
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS "default-mta | mail-transport-agent, graphviz, wine")
endif()

include(CPack)
