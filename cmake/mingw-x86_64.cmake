set(GORBEX_MINGW_CPU x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
