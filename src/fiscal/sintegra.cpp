#include "fiscal/sintegra.h"

#include <utility>

#include "base/error.h"
#include "fiscal/sintegra_conversor.h"
#include "fiscal/sintegra_validador.h"
#include "informacao/leitor.h"

namespace infofiscal {

namespace {

// A text read once: the notes to the converter and, as they come, the catalogue lines, which
// the converter needs only at the end. The converter gets no counts, for the progress.
class LeituraUnica final : public LeitorDeInformacao {
 public:
  LeituraUnica(sintegra::ConversorSintegra& conversor, sintegra::CatalogoSintegra& catalogo)
      : conversor_(conversor), catalogo_(catalogo) {}
  void cabecalho(const CabecalhoInformacao& c) override { conversor_.cabecalho(c); }
  void nota(const NotaInformacao& n) override { conversor_.nota(n); }
  void cadastro(const LinhaInformacao& l) override { catalogo_.cadastro(l); }
  void inventario(const InventarioInformacao& i) override { conversor_.inventario(i); }

 private:
  sintegra::ConversorSintegra& conversor_;
  sintegra::CatalogoSintegra& catalogo_;
};

}  // namespace

void gerar_sintegra(TextoDeInformacao& informacao, SaidaFiscal& saida, const TProcLinhaInfo& info,
                    const TProcProgresso& progresso) {
  if (info) info("Lendo o arquivo de informações");
  sintegra::CatalogoSintegra catalogo;
  const bool uma_vez = informacao.uma_vez();
  const ContagemDeLinhas contagem = uma_vez ? ContagemDeLinhas{} : ler_informacao(informacao, catalogo, Leitura::cadastros);
  sintegra::ConversorSintegra conversor(contagem, saida.pasta_temporaria(), info, progresso);
  if (uma_vez) {
    LeituraUnica leitura(conversor, catalogo);
    ler_informacao(informacao, leitura);
  } else {
    ler_informacao(informacao, conversor);
  }
  conversor.conclui(std::move(catalogo));
  if (info) info("Conferindo o arquivo SINTEGRA");
  sintegra::ValidadorSintegra validador;
  LeitorEmParalelo em_paralelo(validador);
  SaidaConferida conferida(saida, em_paralelo);
  conversor.emitir(conferida);
  em_paralelo.espera();
  const std::vector<std::string> achados = validador.conclui();
  if (!achados.empty()) {
    std::string mensagem = "O arquivo SINTEGRA gerado não passou na conferência:";
    for (const auto& a : achados) mensagem += "\n" + a;
    throw Error(mensagem);
  }
}

std::string gerar_sintegra(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso) {
  TextoEmMemoria texto(informacao);
  SaidaEmMemoria saida;
  gerar_sintegra(texto, saida, info, progresso);
  return saida.bytes();
}

std::vector<std::string> validar_sintegra(std::string_view arquivo) {
  sintegra::ValidadorSintegra validador;
  validador.le(arquivo);
  return validador.conclui();
}

}  // namespace infofiscal
