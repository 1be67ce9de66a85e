#include "fiscal/arquivo_fiscal.h"

#include <algorithm>

#include "base/atomic_file.h"
#include "fiscal/efd.h"
#include "fiscal/sintegra.h"

namespace infofiscal {

void TOBJ_ArquivoFiscal::Gravar(const std::string& NomeArquivo, const std::string& bytes) {
  write_file_atomically(NomeArquivo, bytes);
  registros_ = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
}

void TOBJ_ArquivoFiscal::Exec_Sintegra(const std::string& NomeArquivo, const std::string& Texto) {
  Gravar(NomeArquivo, gerar_sintegra(Texto, LinhaInfo, Progresso));
}

void TOBJ_ArquivoFiscal::Exec_SPED_Fiscal_EFD(const std::string& NomeArquivo, const std::string& Texto,
                                              TRegFiscalVersao) {
  Gravar(NomeArquivo, gerar_efd(Texto, LinhaInfo, Progresso));
}

}  // namespace infofiscal
