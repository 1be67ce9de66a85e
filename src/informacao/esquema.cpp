#include "informacao/esquema.h"

namespace infofiscal::linha {

namespace {

struct NomeDeColuna {
  int tipo, coluna;
  std::string_view nome;
};

// In the table's order: the lines the export writes come before the stand-alone sales-return
// lines of the same types, whose columns they all have, so the first match names the column.
constexpr NomeDeColuna kNomes[] = {
#define LINHA(L, TIPO, TRAILER)
#define COLUNA(L, NOME, N) {L::kTipo, N, #NOME},
#include "informacao/linhas.def"
};

}  // namespace

std::string_view nome_da_coluna(int tipo, int coluna) {
  for (const NomeDeColuna& n : kNomes)
    if (n.tipo == tipo && n.coluna == coluna) return n.nome;
  return {};
}

}  // namespace infofiscal::linha
