#include "export/controle_exportacao.h"

#include <filesystem>

#include <fmt/format.h>

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/renderings.h"
#include "base/system.h"
#include "fiscal/arquivo_fiscal.h"

namespace infofiscal {

namespace {

std::string absoluto(const std::string& caminho) {
  return utf8_of(std::filesystem::absolute(path_of(caminho)).lexically_normal());
}

// A count and its noun: "1 linha", "3 linhas", "1.234 linhas" (format_count would pad 3 to "03").
std::string quantos(std::size_t n, const char* um, const char* varios) {
  const std::string numero = n < 10 ? std::to_string(n) : format_count(static_cast<std::int64_t>(n));
  return numero + " " + (n == 1 ? um : varios);
}

const char* nome_do_fiscal(TRegistroFiscal tipo) { return tipo == 1 ? "SINTEGRA" : "SPED EFD ICMS/IPI"; }

}  // namespace

const char* ExecucaoCancelada::what() const noexcept { return "Execução cancelada: nenhum arquivo foi alterado"; }

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

bool ControleExportacao::TemConversor() const {
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  return tipo == 1 || tipo == 2;
}

void ControleExportacao::ExigirDestinoLivre(const std::string& NomeArquivo) const {
  std::vector<NamedFile> entradas;
  for (std::string& arquivo : conexao_.Conexao.files()) entradas.push_back({std::move(arquivo), "a fonte de dados"});
  if (!caminho_informacao_.empty()) entradas.push_back({caminho_informacao_, "o arquivo de informações"});
  const NamedFile destino{NomeArquivo, "o arquivo fiscal"};
  if (const auto conflito = overwrite_conflict({&destino, 1}, entradas)) throw Error(*conflito);
}

void ControleExportacao::Relatar(int APosicao, int AMaximo) {
  if (Progresso) Progresso(APosicao, AMaximo);
  if (cancelado_) throw ExecucaoCancelada();
}

std::string ControleExportacao::GerarInformacao(const std::string& base, int ACodNFeCompra, int ACodNFeVenda) {
  cancelado_ = false;
  gravados_.clear();
  informacao_.reset();
  oExportaInfoFiscal.PROC_LinhaInfo_B(LinhaInfo);
  oExportaInfoFiscal.PROC_Progresso_B([this](int APosicao, int AMaximo) { Relatar(APosicao, AMaximo); });
  // Only a register with a converter needs the text back.
  const bool converte = !SomenteInformacao && TemConversor();
  // The file is written while the run fills the list; a run that fails leaves no file.
  const std::string caminho = CaminhoInformacao(base);
  auto gravacao = std::make_unique<ListSaver>(caminho, oExportaInfoFiscal.oArquivo, converte);
  oExportaInfoFiscal.Executar(ACodNFeCompra, ACodNFeVenda);
  std::string texto = gravacao->finish();
  informacao_ = std::move(gravacao);
  caminho_informacao_ = caminho;
  if (!converte) ConfirmarInformacao();
  return texto;
}

void ControleExportacao::ConfirmarInformacao() {
  if (!informacao_) return;
  informacao_->commit();
  gravados_.insert(gravados_.begin(), {"informações", absoluto(caminho_informacao_), informacao_->lines()});
  informacao_.reset();
}

void ControleExportacao::SalvarArquivoFiscal_A(const std::string& NomeArquivo, const std::string& Texto) {
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  if (tipo != 1 && tipo != 2) return ConfirmarInformacao();
  TOBJ_ArquivoFiscal conversor;
  conversor.LinhaInfo = LinhaInfo;
  conversor.Progresso = [this](int APosicao, int AMaximo) { Relatar(APosicao, AMaximo); };
  try {
    ExigirDestinoLivre(NomeArquivo);
    if (tipo == 1)
      conversor.Exec_Sintegra(NomeArquivo, Texto);
    else
      conversor.Exec_SPED_Fiscal_EFD(NomeArquivo, Texto, TRegFiscalVersao::v1);
  } catch (const ExecucaoCancelada&) {
    informacao_.reset();
    throw;
  } catch (...) {
    ConfirmarInformacao();
    throw;
  }
  ConfirmarInformacao();
  gravados_.push_back({nome_do_fiscal(tipo), absoluto(NomeArquivo), conversor.Registros(), true});
}

std::vector<std::string> ControleExportacao::Resumo() const {
  std::vector<std::string> linhas;
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  if (gravados_.size() > 1)
    linhas.push_back(fmt::format("Resumo: {} arquivos gravados", gravados_.size()));
  else if (TemConversor())
    linhas.push_back(fmt::format("Resumo: só o arquivo de informações foi gravado; o arquivo {} não foi pedido",
                                 nome_do_fiscal(tipo)));
  else
    linhas.push_back(fmt::format("Resumo: só o arquivo de informações foi gravado; o tipo {} ({}) não tem arquivo "
                                 "fiscal a gerar",
                                 tipo, tipo == 3 ? "SPED Contribuições" : "indefinido"));
  for (const ArquivoGravado& a : gravados_)
    linhas.push_back(fmt::format("  {}: {} ({})", a.descricao, a.caminho,
                                 a.fiscal ? quantos(a.linhas, "registro", "registros") : quantos(a.linhas, "linha", "linhas")));
  return linhas;
}

}  // namespace infofiscal
