#include "fiscal/arquivo_fiscal.h"

#include "base/atomic_file.h"
#include "fiscal/efd.h"
#include "fiscal/sintegra.h"

namespace infofiscal {

void TOBJ_ArquivoFiscal::Exec_Sintegra(const std::string& NomeArquivo, const std::string& Texto) {
  write_file_atomically(NomeArquivo, gerar_sintegra(Texto, LinhaInfo, Progresso));
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, const std::string& Texto,
                                              TRegFiscalVersao) {
  write_file_atomically(NomeArquivo, gerar_efd(Texto, LinhaInfo, Progresso));
}

}  // namespace infofiscal
