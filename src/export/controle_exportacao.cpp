#include "export/controle_exportacao.h"

#include <fmt/format.h>

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/list_saver.h"
#include "fiscal/arquivo_fiscal.h"

namespace infofiscal {

std::string ControleExportacao::NomeSugerido(TRegistroFiscal tipo, int mes, int ano) {
  const char* prefixo = tipo == 1 ? "SINTEGRA_" : tipo == 2 ? "SPED_FISCAL_EFD_" : tipo == 3 ? "SPED_FISCAL_EFD_CTB_" : nullptr;
  if (prefixo == nullptr) return {};
  return fmt::format("{}{:02}_{:02}.v1.txt", prefixo, mes, ano);
}

std::string ControleExportacao::CaminhoInformacao(const std::string& base) {
  std::string caminho = base;
  if (!caminho.empty() && caminho.back() != '/') caminho += '/';
  return caminho + "Arquivos/InfoFiscal/SpedInformacao.txt";
}

std::string ControleExportacao::GerarInformacao(const std::string& base, int ACodNFeCompra, int ACodNFeVenda) {
  oExportaInfoFiscal.PROC_LinhaInfo_B(LinhaInfo);
  oExportaInfoFiscal.PROC_Progresso_B(Progresso);
  // Only a register with a converter needs the text back.
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  const bool converte = !SomenteInformacao && (tipo == 1 || tipo == 2);
  // The file is written while the run fills the list; a run that fails leaves no file.
  ListSaver gravacao(CaminhoInformacao(base), oExportaInfoFiscal.oArquivo, converte);
  oExportaInfoFiscal.Executar(ACodNFeCompra, ACodNFeVenda);
  std::string texto = gravacao.commit();
  FCaminhoInformacao = CaminhoInformacao(base);
  return texto;
}

void ControleExportacao::ExigirDestinoLivre(const std::string& NomeArquivo) const {
  std::vector<NamedFile> entradas;
  for (std::string& arquivo : conexao_.Conexao.files()) entradas.push_back({std::move(arquivo), "a fonte de dados"});
  if (!FCaminhoInformacao.empty()) entradas.push_back({FCaminhoInformacao, "o arquivo de informações"});
  const NamedFile destino{NomeArquivo, "o arquivo fiscal"};
  if (const auto conflito = overwrite_conflict({&destino, 1}, entradas)) throw Error(*conflito);
}

void ControleExportacao::SalvarArquivoFiscal_A(const std::string& NomeArquivo, const std::string& Texto) const {
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  if (tipo != 1 && tipo != 2) return;
  ExigirDestinoLivre(NomeArquivo);
  TOBJ_ArquivoFiscal conversor;
  conversor.LinhaInfo = LinhaInfo;
  conversor.Progresso = Progresso;
  if (tipo == 1)
    conversor.Exec_Sintegra(NomeArquivo, Texto);
  else
    conversor.Exec_SPED_Fiscal_EFD(NomeArquivo, Texto, TRegFiscalVersao::v1);
}

}  // namespace infofiscal
