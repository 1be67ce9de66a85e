// The SPED EFD ICMS/IPI file from the information file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fiscal/saida.h"
#include "host/framework.h"
#include "informacao/texto.h"

namespace infofiscal {

// What the run gives besides the information file, for block E.
struct OpcoesEfd {
  // E110 VL_SLD_CREDOR_ANT, in hundredths: the credit balance carried from the month before.
  std::int64_t saldo_credor_anterior = 0;
  // Last month's EFD file; when given, its E110 VL_SLD_CREDOR_TRANSPORTAR is the balance
  // carried, once its 0000 shows the same company (CNPJ, IE) and the month before.
  std::string efd_anterior;
  // E116 COD_REC, the state's revenue code; empty: "000", and an info line asks to confirm it.
  std::string codigo_receita;
  // E116 DT_VCTO as yyyymmdd; 0: the 10th of the following month, and the same info line.
  std::int32_t vencimento = 0;
};

// Writes the EFD file of the information text into `saida`, a piece at a time, and checks it
// with the validator as it goes. Throws Error naming the information line or note at fault, or
// "Arquivo SPED EFD ICMS/IPI inválido; nada foi gravado:" with each finding and the record it
// is about; `saida` then holds a refused file, which the caller must not keep. The text is read
// twice: once for the catalogues, once for the rest. Memory stays bounded by the catalogues
// and the validator's keys, whatever the number of notes.
void gerar_efd(TextoDeInformacao& informacao, SaidaFiscal& saida, const TProcLinhaInfo& info,
               const TProcProgresso& progresso, const OpcoesEfd& opcoes = {});
// The same from a text in memory into memory, for tests and benchmarks.
std::string gerar_efd(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso,
                      const OpcoesEfd& opcoes = {});

// Every rule of the layout that the file alone can show; one finding per line, empty when the
// file is valid (efd::ValidadorEfd reads a file a piece at a time).
std::vector<std::string> validar_efd(std::string_view arquivo);

}  // namespace infofiscal
