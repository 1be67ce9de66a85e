// What the outgoing-note modules share below the data-module level: the fields of the note
// list, header and party datasets, the value columns of line 04 and the note-list request.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "registers/register_line.h"
#include "host/client_dataset.h"

namespace infofiscal::nf_saida {

// TabListaNotaFiscal: the two keys of each note.
std::vector<FieldDef> lista_campos();
// TabNF_Venda; the CFOP is a small integer in the full header, an integer in the short one.
std::vector<FieldDef> venda_campos(FieldClass cfop);
// TabNF_Cliente; `ibge` lists the declared city/country fields (they are fetched, never written).
std::vector<FieldDef> cliente_campos(std::initializer_list<FieldDef> ibge);

// The thirteen amounts of the note header, VALORTOTALNOTA to COFINS_VALOR, from column `first`.
std::vector<Column> valores_nota(int first);

// Clears `linha` and writes how every outgoing-note line begins: the head of line type
// `tipo_linha`, C01 the kind code, C02 the row counter of the note.
void abre_linha(TLinhaRegistro& linha, int tipo_linha, int tipo_processo, int registro);

// "Erro ano Gerar Registro Linha 0N : " for the line types 4 to 6.
std::string_view prefixo(int tipo_linha);

// One line of a note under the generator error rule with its line's prefix: the opening,
// `colunas`, then `fim()` (the columns the module computes itself, or a check that rejects the
// row by throwing), the trailer `trailer`, and the list. A rejected row adds nothing.
template <class Fim>
void escreve_linha(TLinhaRegistro& linha, int tipo_linha, int tipo_processo, int registro, const ColumnTable& colunas,
                   int trailer, TStringList& lista, Fim&& fim) {
  UnderErrorRule(prefixo(tipo_linha), [&] {
    abre_linha(linha, tipo_linha, tipo_processo, registro);
    colunas.Write(linha);
    fim();
    linha.Trailer(trailer);
    linha.AddTo(lista);
  });
}

// Closes `dataset`, sets its two parameters (note type code, note code) and opens it.
void consulta_nota(ClientDataSet& dataset, int tipo, int nota);

// Loads the note list of a fiscal register and kind by data request
// [kind of file (byte), register (32-bit), kind code (byte)].
void carrega_lista(ClientDataSet& lista, std::uint8_t tipo_registro, std::int32_t registro, std::uint8_t tipo_processo);

}  // namespace infofiscal::nf_saida
