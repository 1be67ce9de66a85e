// A month with problems of several kinds: each converter reads all of it, lists every problem
// grouped by kind (the first examples in its message, all of them in the report beside the
// target) and writes no fiscal file.
#include "fiscal/problemas.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "base/error.h"
#include "fiscal/arquivo_fiscal.h"
#include "fiscal/efd_informacao.h"
#include "support/cli.h"

namespace infofiscal::testing {
namespace {

// A sale of one item of 1,00 to client 15, with its own access key (or `chave`).
std::string venda(int numero, std::string_view chave, std::string_view total_do_item = "1,00") {
  const std::string n = std::to_string(numero);
  return l04("10", n, n, chave, "55", "10/03/2024", "", "1,00", "0") + l05("10", n, "1", "15") +
         l06("10", n, "15", "1", "UN", "1,00", total_do_item, "2", "000", "5102", "0,00", "0,00", "0,00");
}

// The key of sale `numero` with its check digit changed.
std::string chave_errada(int numero) {
  std::string chave = chave_nfe("11222333000181", numero);
  chave.back() = chave.back() == '9' ? '0' : static_cast<char>(chave.back() + 1);
  return chave;
}

// Seven sales with a wrong key, a note of an unknown kind, a sale whose item total does not
// read, and two good sales.
std::string mes_com_problemas() {
  std::string mes = l01("01/03/2024", "31/03/2024") + l02_l03() + venda(1, chave_nfe("11222333000181", 1));
  for (int n = 2; n <= 8; ++n) mes += venda(n, chave_errada(n));
  mes += l04("7", "9", "9", chave_nfe("11222333000181", 9), "55", "10/03/2024", "", "1,00", "0");
  mes += venda(10, chave_nfe("11222333000181", 10), "1,0x");
  return mes + venda(11, chave_nfe("11222333000181", 11)) + cadastros();
}

std::string mes_sem_problemas() {
  return l01("01/03/2024", "31/03/2024") + l02_l03() + venda(1, chave_nfe("11222333000181", 1)) + cadastros();
}

struct Caso {
  const char* nome;
  int tipo;  // 1 SINTEGRA, 2 EFD
  std::string resumo, lista;
};

void converte(int tipo, const std::string& destino, const std::string& informacao, const TProcLinhaInfo& info = {}) {
  TOBJ_ArquivoFiscal conversor;
  conversor.LinhaInfo = info;
  if (tipo == 1)
    conversor.Exec_Sintegra(destino, informacao);
  else
    conversor.Exec_SPED_Fiscal_EFD(destino, informacao, TRegFiscalVersao::v1);
}

TEST(ProblemasDoMes, EveryProblemListedByKindAndNoFileWritten) {
  // The line of the value that does not read; SINTEGRA names its note too.
  const std::string ilegivel = "valor ilegível no arquivo de informações (1):\n  ";
  const std::string item = "Linha 31 do arquivo de informações: C08 da linha 06 não é um valor: '1,0x'";
  // The EFD names the note of the item as well.
  const std::string nota_efd = "Nota 10 de venda de produtos (linha 29 do arquivo de informações): ";
  std::string chaves;
  for (int n = 2; n <= 8; ++n) {
    const int linha = 4 + 3 * (n - 1);
    chaves += fmt::format("\n  Nota {} de venda de produtos (linha {} do arquivo de informações): chave de acesso '{}': "
                          "dígito verificador inválido",
                          n, linha, chave_errada(n));
  }
  const auto primeiras = [&](int quantas) {
    std::string s;
    for (std::size_t pos = 0, n = 0; n < static_cast<std::size_t>(quantas); ++n) {
      const std::size_t fim = chaves.find('\n', pos + 1);
      s += chaves.substr(pos, fim - pos);
      pos = fim;
    }
    return s;
  };
  const std::vector<Caso> casos = {
      {"SINTEGRA", 1,
       "2 problemas no mês; o arquivo SINTEGRA não foi gravado:\n"
       "tipo de nota desconhecido (1):\n"
       "  Linha 28 do arquivo de informações: tipo de nota '7' desconhecido\n" +
           ilegivel + "Nota 10 (linha 29 do arquivo de informações): " + item,
       ""},
      {"EFD", 2,
       "9 problemas no mês; o arquivo SPED EFD ICMS/IPI não foi gravado:\n"
       "chave de acesso inválida (7):" +
           primeiras(5) + "\n  ... e mais 2\n" +
           "espécie de nota desconhecida (1):\n"
           "  Linha 28 do arquivo de informações: espécie de nota 7 desconhecida\n" +
           ilegivel + nota_efd + item,
       "9 problemas no mês; o arquivo SPED EFD ICMS/IPI não foi gravado:\n"
       "chave de acesso inválida (7):" +
           chaves + "\n" +
           "espécie de nota desconhecida (1):\n"
           "  Linha 28 do arquivo de informações: espécie de nota 7 desconhecida\n" +
           ilegivel + nota_efd + item + "\n"},
  };
  for (const Caso& c : casos) {
    SCOPED_TRACE(c.nome);
    const std::string dir = fresh_dir(std::string("problemas-") + c.nome);
    const std::string destino = dir + "/fiscal.txt", relatorio = destino + ".problemas.txt";
    write_file(destino, "anterior\r\n");
    try {
      converte(c.tipo, destino, mes_com_problemas());
      ADD_FAILURE() << "sem erro";
    } catch (const Error& e) {
      EXPECT_EQ(e.what(), c.resumo + "\nA lista completa está em '" + relatorio + "'");
    }
    EXPECT_EQ(read_file(destino), "anterior\r\n");
    // With five examples or fewer of each kind, the report is the message.
    EXPECT_EQ(read_file(relatorio), c.lista.empty() ? c.resumo + "\n" : c.lista);

    // The month put right: the file is written and the stale list goes, said in a line.
    std::vector<std::string> linhas;
    converte(c.tipo, destino, mes_sem_problemas(), [&](const std::string& l) { linhas.push_back(l); });
    EXPECT_NE(read_file(destino), "anterior\r\n");
    EXPECT_FALSE(std::filesystem::exists(relatorio));
    EXPECT_EQ(linhas.back(), "Relatório de problemas de uma execução anterior apagado: '" + relatorio + "'");
  }
}

}  // namespace
}  // namespace infofiscal::testing
