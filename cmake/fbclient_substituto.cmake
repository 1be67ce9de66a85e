# Built for Windows and tested under Wine: the stand-in for Firebird's client
# (tests/windows/fbclient.c), a winelib library that forwards the program's Firebird calls to the
# build machine's libfbclient.so.2. Wine loads it in two parts: fbclient.dll beside the programs,
# a placeholder that marks the DLL as one of Wine's own, and fbclient.dll.so, the code, which
# Wine looks for in the folders of WINEDLLPATH. The placeholder goes beside the test programs
# only; the installer, made from `cmake --install`, never has it.
#
# The exports are listed in a Windows module-definition file (fbclient.def), which winegcc and
# winebuild both read. The test program runs with WINEDLLPATH naming that folder. Without
# winegcc (Debian's wine64-tools) or Firebird's headers, nothing is built, and the Firebird tests
# skip under Wine as they would on a Windows machine without Firebird.
find_program(WINEGCC winegcc)
find_program(WINEBUILD winebuild)
find_file(FB_HOST_HEADER ibase.h PATHS /usr/include /usr/include/firebird NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
if(NOT WINEGCC OR NOT WINEBUILD OR NOT FB_HOST_HEADER)
  message(STATUS "Sem winegcc, winebuild ou o ibase.h do Linux: os testes do Firebird são pulados no Wine")
  return()
endif()
set(substituto_exportacoes ${CMAKE_SOURCE_DIR}/tests/windows/fbclient.def)
set(substituto_c ${CMAKE_SOURCE_DIR}/tests/windows/fbclient.c)
set(substituto_pasta ${CMAKE_BINARY_DIR}/fbclient-substituto)
get_filename_component(fb_host_include ${FB_HOST_HEADER} DIRECTORY)
add_custom_command(
  OUTPUT ${substituto_pasta}/fbclient.dll.so ${CMAKE_BINARY_DIR}/fbclient.dll
  COMMAND ${CMAKE_COMMAND} -E make_directory ${substituto_pasta}
  COMMAND ${WINEGCC} -m64 -shared -O2 -Wall -I${fb_host_include} -o ${substituto_pasta}/fbclient.dll
          ${substituto_exportacoes} ${substituto_c} -lfbclient
  COMMAND ${WINEBUILD} -m64 --dll --fake-module -E ${substituto_exportacoes} -F fbclient.dll -o ${CMAKE_BINARY_DIR}/fbclient.dll
  DEPENDS ${substituto_exportacoes} ${substituto_c}
  COMMENT "O substituto do cliente do Firebird para os testes no Wine"
  VERBATIM)
add_custom_target(fbclient_substituto ALL DEPENDS ${substituto_pasta}/fbclient.dll.so ${CMAKE_BINARY_DIR}/fbclient.dll)
add_dependencies(infofiscal_tests fbclient_substituto)
set_target_properties(infofiscal_tests PROPERTIES
  CROSSCOMPILING_EMULATOR "env;WINEDLLPATH=${substituto_pasta};${CMAKE_CROSSCOMPILING_EMULATOR}")
