#include "registers/master/dtm_a_tablista.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace infofiscal {

TabelaListaPropria::TabelaListaPropria(std::vector<FieldDef> campos, std::vector<Column> colunas,
                                       const TabelaLista& lista)
    : campos_(std::move(campos)), colunas_(std::move(colunas)), lista_(lista) {
  lista_.campos = campos_;
  lista_.colunas = colunas_;
}

TDTM_A_TabLista::TDTM_A_TabLista(TDTM_ConexaoDS& conexao, const TabelaLista& tabela)
    : TDTM_A_Padrao(conexao),
      Lista(std::string(tabela.dataset), std::string(tabela.provider),
            std::vector<FieldDef>(tabela.campos.begin(), tabela.campos.end())),
      tabela_(tabela) {
  Bind(Lista);
}

void TDTM_A_TabLista::ConsLista() {
  Lista.Close();
  Lista.Open();
}

bool TDTM_A_TabLista::Ligada() const {
  return tabela_.chaves.empty() ||
         std::any_of(tabela_.chaves.begin(), tabela_.chaves.end(), [&](std::string_view c) { return SwitchOn(c); });
}

void TDTM_A_TabLista::GerarLista(TStringList& AArquivo) {
  ConsRegistroFiscal();
  if (!Ligada()) return;
  ConsLista();
  UnderErrorRule(tabela_.prefixo, [&] {
    const ColumnTable colunas(Lista, tabela_.colunas);
    ForEachRow(Lista, [&](int) {
      oLinha.Head(tabela_.tipo);
      colunas.Write(oLinha);
      if (tabela_.extra != nullptr) tabela_.extra(Lista, oLinha);
      oLinha.Trailer(tabela_.trailer);
      if (tabela_.adiciona) oLinha.AddTo(AArquivo);
    });
  });
}

}  // namespace infofiscal
