#include "fiscal/sintegra.h"

#include <utility>

#include "base/error.h"
#include "fiscal/sintegra_conversor.h"
#include "fiscal/sintegra_validador.h"
#include "informacao/leitor.h"

namespace infofiscal {

void gerar_sintegra(TextoDeInformacao& informacao, SaidaFiscal& saida, const TProcLinhaInfo& info,
                    const TProcProgresso& progresso) {
  if (info) info("Lendo o arquivo de informações");
  sintegra::CatalogoSintegra catalogo;
  const ContagemDeLinhas contagem = ler_informacao(informacao, catalogo, Leitura::cadastros);
  sintegra::ConversorSintegra conversor(contagem, saida.pasta_temporaria(), info, progresso);
  ler_informacao(informacao, conversor);
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
