#include "export/controle_exportacao.h"

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>

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

// The conversion that runs beside the export (NomeAntecipado): the converter reads the saved
// bytes as the saver writes them, on a thread of its own. What it says waits here for the front,
// which is called from its own thread alone.
class ControleExportacao::ConversaoAntecipada {
 public:
  // Starts the conversion into the fiscal file `nome` on a thread of its own; throws
  // std::system_error when no thread can be started.
  ConversaoAntecipada(ControleExportacao& controle, std::string nome) : controle_(controle), nome_(std::move(nome)) {
    conversor_.Relatorio = controle.Relatorio;
    conversor_.Tentativa = true;
    conversor_.LinhaInfo = [this](const std::string& linha) {
      const std::lock_guard trava(mutex_);
      linhas_.push_back(linha);
      mudou_.notify_all();
    };
    // A text read once gives the converter no counts, so it reports no progress: the front sees
    // the text read instead (espera), and may cancel until the files are put in place.
    conversor_.AntesDeGravar = [this] {
      if (controle_.cancelado_) throw ExecucaoCancelada();
    };
    thread_ = std::thread([this, tipo = controle.oExportaInfoFiscal.CodTipoRegistroFiscal(),
                           opcoes = controle.OpcoesEFD] { converte(tipo, opcoes); });
  }
  // A conversion still running is stopped: its text will not be complete.
  ~ConversaoAntecipada() {
    texto_.abandona();
    thread_.join();
  }
  ConversaoAntecipada(const ConversaoAntecipada&) = delete;
  ConversaoAntecipada& operator=(const ConversaoAntecipada&) = delete;

  const std::string& nome() const { return nome_; }
  // The saver's side: a piece of the saved bytes, then, once the file is complete, the end.
  void entrega(std::string_view bytes) {
    entregues_ += bytes.size();
    texto_.entrega(bytes);
  }
  void termina() { texto_.termina(); }

  // Waits for the end of the conversion. Meanwhile the front hears the converter's lines, those
  // said during the export first, and sees the text read (in KiB, which an int holds for any
  // month); it may cancel. Returns the conversion's failure, if any. REQUIRES: termina().
  std::exception_ptr espera() {
    const int total = static_cast<int>(entregues_ / 1024) + 1;
    for (;;) {
      std::vector<std::string> novas;
      bool fim = false;
      {
        std::unique_lock trava(mutex_);
        mudou_.wait_for(trava, std::chrono::milliseconds(50), [&] { return fim_ || ditas_ < linhas_.size(); });
        novas.assign(linhas_.begin() + static_cast<std::ptrdiff_t>(ditas_), linhas_.end());
        ditas_ = linhas_.size();
        fim = fim_;
      }
      if (controle_.LinhaInfo)
        for (const std::string& linha : novas) controle_.LinhaInfo(linha);
      if (controle_.Progresso) controle_.Progresso(fim ? total : static_cast<int>(texto_.lidos() / 1024), total);
      if (fim) return falha_;
    }
  }
  const TOBJ_ArquivoFiscal& conversor() const { return conversor_; }
  // The converter's lines, all said to the front. REQUIRES: espera() returned.
  const std::vector<std::string>& linhas() const { return linhas_; }

 private:
  void converte(TRegistroFiscal tipo, const OpcoesEfd& opcoes) {
    std::exception_ptr falha;
    try {
      if (tipo == 1)
        conversor_.Exec_Sintegra(nome_, texto_);
      else
        conversor_.Exec_SPED_Fiscal_EFD(nome_, texto_, TRegFiscalVersao::v1, opcoes);
    } catch (...) {
      falha = std::current_exception();
    }
    texto_.desiste();
    const std::lock_guard trava(mutex_);
    falha_ = falha;
    fim_ = true;
    mudou_.notify_all();
  }

  ControleExportacao& controle_;
  const std::string nome_;
  TOBJ_ArquivoFiscal conversor_;
  TextoEmFila texto_;
  std::mutex mutex_;
  std::condition_variable mudou_;
  std::vector<std::string> linhas_;  // the converter's, in order
  std::size_t ditas_ = 0;             // of them, those the front has heard
  std::uint64_t entregues_ = 0;       // bytes handed over, by the saver's threads in turn
  bool fim_ = false;
  std::exception_ptr falha_;
  std::thread thread_;  // last: started once everything it uses exists
};

ControleExportacao::ControleExportacao(TDTM_ConexaoDS& conexao) : oExportaInfoFiscal(conexao), conexao_(conexao) {}

ControleExportacao::~ControleExportacao() = default;

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

void ControleExportacao::Antecipar(bool converte) {
  if (!converte || NomeAntecipado.empty()) return;
  try {
    ExigirDestinosLivres(NomeAntecipado);
  } catch (const Error&) {
    return;  // said, as it would be without a name known, after the export
  }
  try {
    antecipada_ = std::make_unique<ConversaoAntecipada>(*this, NomeAntecipado);
  } catch (const std::system_error&) {
    // No thread to spare: the conversion follows the export.
  }
}

std::string ControleExportacao::GerarInformacao(const std::string& base, int ACodNFeCompra, int ACodNFeVenda) {
  cancelado_ = false;
  gravados_.clear();
  relatorio_gravado_.clear();
  antecipada_.reset();
  informacao_.reset();
  oExportaInfoFiscal.PROC_LinhaInfo_B(LinhaInfo);
  oExportaInfoFiscal.PROC_Progresso_B([this](int APosicao, int AMaximo) { Relatar(APosicao, AMaximo); });
  // Only a register with a converter needs the file to wait for it, and the text back when the
  // converter takes the text.
  const bool converte = !SomenteInformacao && TemConversor();
  // The file is written while the run fills the list; a run that fails leaves no file.
  caminho_informacao_ = CaminhoInformacao(base);
  Antecipar(converte);
  std::function<void(std::string_view)> entrega;
  if (antecipada_) entrega = [a = antecipada_.get()](std::string_view bytes) { a->entrega(bytes); };
  auto gravacao = std::make_unique<ListSaver>(caminho_informacao_, oExportaInfoFiscal.oArquivo,
                                              converte && !ConverteDoArquivo, std::move(entrega));
  std::string texto;
  try {
    oExportaInfoFiscal.Executar(ACodNFeCompra, ACodNFeVenda);
    texto = gravacao->finish();
  } catch (...) {
    antecipada_.reset();  // before the saver, which may wait for it to take a piece
    throw;
  }
  informacao_ = std::move(gravacao);
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

void ControleExportacao::ConcluirAntecipada(const std::string& NomeArquivo) {
  antecipada_->termina();
  const std::exception_ptr falha = antecipada_->espera();
  if (!falha) {
    Concluir(NomeArquivo, antecipada_->conversor());
    antecipada_.reset();
    return;
  }
  std::vector<std::string> ditas = antecipada_->linhas();
  antecipada_.reset();
  try {
    std::rethrow_exception(falha);
  } catch (const ExecucaoCancelada&) {
    informacao_.reset();
    throw;
  } catch (...) {
    // What failed is said by the conversion from the saved file, exactly as without the name.
  }
  Converter(NomeArquivo, nullptr, std::move(ditas));
}

std::unique_ptr<TextoDeInformacao> ControleExportacao::AbrirInformacao(const std::string* Texto) const {
  if (Texto) return std::make_unique<TextoEmMemoria>(*Texto);
  return std::make_unique<ArquivoDeInformacao>(caminho_informacao_, informacao_->saved_path());
}

void ControleExportacao::Converter(const std::string& NomeArquivo, const std::string* Texto,
                                   std::vector<std::string> ditas) {
  if (antecipada_ && antecipada_->nome() == NomeArquivo) return ConcluirAntecipada(NomeArquivo);
  antecipada_.reset();  // another name: this conversion starts anew
  const TRegistroFiscal tipo = oExportaInfoFiscal.CodTipoRegistroFiscal();
  if (tipo != 1 && tipo != 2) return ConfirmarInformacao();
  TOBJ_ArquivoFiscal conversor;
  conversor.LinhaInfo = LinhaInfo;
  if (LinhaInfo && !ditas.empty())
    conversor.LinhaInfo = [this, ditas = std::move(ditas), repete = std::size_t{0}](const std::string& linha) mutable {
      if (repete < ditas.size() && linha == ditas[repete]) {
        ++repete;
        return;
      }
      repete = ditas.size();  // from the first line that differs, every line is new
      LinhaInfo(linha);
    };
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
  Concluir(NomeArquivo, conversor);
}

void ControleExportacao::Concluir(const std::string& NomeArquivo, const TOBJ_ArquivoFiscal& conversor) {
  ConfirmarInformacao();
  gravados_.push_back(ArquivoGravado::Fiscal(oExportaInfoFiscal.CodTipoRegistroFiscal(), NomeArquivo, conversor.Registros()));
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
