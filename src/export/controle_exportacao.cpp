#include "export/controle_exportacao.h"

#include <filesystem>

#include <fmt/format.h>

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/renderings.h"
#include "base/system.h"
#include "fiscal/arquivo_fiscal.h"
#include "informacao/texto.h"

namespace infofiscal {

namespace {

std::string absoluto(const std::string& caminho) {
  return utf8_of(std::filesystem::absolute(path_of(caminho)).lexically_normal());
}

const char* nome_do_fiscal(TRegistroFiscal tipo) { return tipo == 1 ? "SINTEGRA" : "SPED EFD ICMS/IPI"; }

std::string linha_do_resumo(const ArquivoGravado& a) {
  switch (a.tipo) {
    case ArquivoGravado::Tipo::informacao:
      return fmt::format("  {}: {} ({})", a.descricao, a.caminho, counted(a.linhas, "linha", "linhas"));
    case ArquivoGravado::Tipo::fiscal:
      return fmt::format("  {}: {} ({})", a.descricao, a.caminho, counted(a.linhas, "registro", "registros"));
    case ArquivoGravado::Tipo::relatorio:
      return fmt::format("  {}: {}", a.descricao, a.caminho);
  }
  return {};
}

}  // namespace

ArquivoGravado ArquivoGravado::Fiscal(TRegistroFiscal tipo, const std::string& caminho, std::size_t registros) {
  return {nome_do_fiscal(tipo), absoluto(caminho), registros, Tipo::fiscal};
}

ArquivoGravado ArquivoGravado::Relatorio(const std::string& caminho) {
  return {"relatório", absoluto(caminho), 0, Tipo::relatorio};
}

std::vector<std::string> resumo_dos_gravados(const std::vector<ArquivoGravado>& gravados, std::string cabecalho) {
  std::vector<std::string> linhas{cabecalho.empty()
                                      ? "Resumo: " + counted(gravados.size(), "arquivo gravado", "arquivos gravados")
                                      : std::move(cabecalho)};
  for (const ArquivoGravado& a : gravados) linhas.push_back(linha_do_resumo(a));
  return linhas;
}

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

void ControleExportacao::ExigirDestinosLivres(const std::string& NomeArquivo) const {
  std::vector<NamedFile> entradas;
  for (std::string& arquivo : conexao_.Conexao.files()) entradas.push_back({std::move(arquivo), "a fonte de dados"});
  if (!caminho_informacao_.empty()) entradas.push_back({caminho_informacao_, "o arquivo de informações"});
  std::vector<NamedFile> destinos{{NomeArquivo, "o arquivo fiscal"}};
  if (!Relatorio.empty()) destinos.push_back({Relatorio, "o relatório"});
  if (const auto conflito = overwrite_conflict(destinos, entradas)) throw Error(*conflito);
}

std::string ControleExportacao::NomeDoRelatorio(const std::string& NomeArquivo) {
  std::filesystem::path caminho(NomeArquivo);
  return caminho.replace_extension(".relatorio.html").string();
}

void ControleExportacao::Relatar(int APosicao, int AMaximo) {
  if (Progresso) Progresso(APosicao, AMaximo);
  if (cancelado_) throw ExecucaoCancelada();
}

std::string ControleExportacao::GerarInformacao(const std::string& base, int ACodNFeCompra, int ACodNFeVenda) {
  cancelado_ = false;
  gravados_.clear();
  relatorio_gravado_.clear();
  informacao_.reset();
  oExportaInfoFiscal.PROC_LinhaInfo_B(LinhaInfo);
  oExportaInfoFiscal.PROC_Progresso_B([this](int APosicao, int AMaximo) { Relatar(APosicao, AMaximo); });
  // Only a register with a converter needs the file to wait for it, and the text back when the
  // converter takes the text.
  const bool converte = !SomenteInformacao && TemConversor();
  // The file is written while the run fills the list; a run that fails leaves no file.
  const std::string caminho = CaminhoInformacao(base);
  auto gravacao = std::make_unique<ListSaver>(caminho, oExportaInfoFiscal.oArquivo, converte && !ConverteDoArquivo);
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
  gravados_.insert(gravados_.begin(), {"informações", absoluto(caminho_informacao_), informacao_->lines(),
                                       ArquivoGravado::Tipo::informacao});
  informacao_.reset();
}

void ControleExportacao::SalvarArquivoFiscal_A(const std::string& NomeArquivo, const std::string& Texto) {
  Converter(NomeArquivo, &Texto);
}

void ControleExportacao::SalvarArquivoFiscal_A(const std::string& NomeArquivo) {
  if (!informacao_) return;  // no converter follows: the file is already in place
  Converter(NomeArquivo, nullptr);
}

std::unique_ptr<TextoDeInformacao> ControleExportacao::AbrirInformacao(const std::string* Texto) const {
  if (Texto) return std::make_unique<TextoEmMemoria>(*Texto);
  return std::make_unique<ArquivoDeInformacao>(caminho_informacao_, informacao_->saved_path());
}

void ControleExportacao::Converter(const std::string& NomeArquivo, const std::string* Texto) {
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  if (tipo != 1 && tipo != 2) return ConfirmarInformacao();
  TOBJ_ArquivoFiscal conversor;
  conversor.LinhaInfo = LinhaInfo;
  conversor.Progresso = [this](int APosicao, int AMaximo) { Relatar(APosicao, AMaximo); };
  conversor.Relatorio = Relatorio;
  try {
    ExigirDestinosLivres(NomeArquivo);
    // Local to the try: the saved file is closed before it is put in place or removed.
    const std::unique_ptr<TextoDeInformacao> informacao = AbrirInformacao(Texto);
    if (tipo == 1)
      conversor.Exec_Sintegra(NomeArquivo, *informacao);
    else
      conversor.Exec_SPED_Fiscal_EFD(NomeArquivo, *informacao, TRegFiscalVersao::v1, OpcoesEFD);
  } catch (const ExecucaoCancelada&) {
    informacao_.reset();
    throw;
  } catch (...) {
    if (conversor.RelatorioGravado()) relatorio_gravado_ = Relatorio;
    ConfirmarInformacao();
    throw;
  }
  ConfirmarInformacao();
  gravados_.push_back(ArquivoGravado::Fiscal(tipo, NomeArquivo, conversor.Registros()));
  if (conversor.RelatorioGravado()) {
    relatorio_gravado_ = Relatorio;
    gravados_.push_back(ArquivoGravado::Relatorio(Relatorio));
  }
}

std::vector<std::string> ControleExportacao::Resumo() const {
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  if (gravados_.size() > 1) return resumo_dos_gravados(gravados_);
  if (TemConversor())
    return resumo_dos_gravados(
        gravados_, fmt::format("Resumo: só o arquivo de informações foi gravado; o arquivo {} não foi pedido",
                               nome_do_fiscal(tipo)));
  return resumo_dos_gravados(gravados_,
                             fmt::format("Resumo: só o arquivo de informações foi gravado; o tipo {} ({}) não tem "
                                         "arquivo fiscal a gerar",
                                         tipo, tipo == 3 ? "SPED Contribuições" : "indefinido"));
}

}  // namespace infofiscal
