# The include check of the floors: a file of src/ includes only headers of its own floor or of
# the floors below it. Run by ctest (the test "andares"): cmake -DSRC=<src folder> -P andares.cmake
#
# Each folder of src/ and its floor, from the bottom up; folders of one floor stand side by
# side and include neither each other:
#   0 base        errors, values, renderings, code page, atomic file, string list, and what
#                 differs between Linux and Windows (system.h)
#   1 host        the host framework: record source, datasets, services
#   2 informacao  the information file: its schema and its reader
#   3 registers   the generators that write it
#   3 fiscal      the converters and validators that read it
#   4 export      the run: orchestrator and controller
#   5 cli         the command line
#   6 gui         the dialog (its launcher shares the command line's options)
set(andar_base 0)
set(andar_host 1)
set(andar_informacao 2)
set(andar_registers 3)
set(andar_fiscal 3)
set(andar_export 4)
set(andar_cli 5)
set(andar_gui 6)

file(GLOB_RECURSE arquivos RELATIVE "${SRC}" "${SRC}/*.h" "${SRC}/*.cpp" "${SRC}/*.def")
set(erros "")
foreach(arquivo IN LISTS arquivos)
  string(REGEX REPLACE "/.*" "" de "${arquivo}")
  if(NOT DEFINED andar_${de})
    string(APPEND erros "  ${arquivo}: a pasta '${de}' não tem andar em cmake/andares.cmake\n")
    continue()
  endif()
  file(STRINGS "${SRC}/${arquivo}" includes REGEX "^#include \"[a-z_]+/")
  foreach(inc IN LISTS includes)
    string(REGEX REPLACE "^#include \"([a-z_]+)/.*" "\\1" para "${inc}")
    if(NOT DEFINED andar_${para})
      string(APPEND erros "  ${arquivo}: inclui '${inc}', de uma pasta sem andar\n")
    elseif(andar_${para} GREATER andar_${de} OR (andar_${para} EQUAL andar_${de} AND NOT para STREQUAL de))
      string(APPEND erros "  ${arquivo} (${de}, andar ${andar_${de}}) inclui ${inc} (${para}, andar ${andar_${para}})\n")
    endif()
  endforeach()
endforeach()
if(erros)
  message(FATAL_ERROR "Inclusões que sobem ou atravessam os andares:\n${erros}")
endif()
list(LENGTH arquivos quantos)
message(STATUS "Andares: ${quantos} arquivos, nenhuma inclusão sobe")
