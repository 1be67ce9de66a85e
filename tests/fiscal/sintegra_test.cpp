// The SINTEGRA converter on hand-built information files: exact records, the info lines and
// progress it reports, and the errors of bad input.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/code_page.h"
#include "fiscal/sintegra.h"
#include "fiscal/linha_informacao.h"
#include "fiscal/sintegra_dados.h"
#include "base/error.h"
#include "support/cli.h"
#include "fiscal/lido_uma_vez.h"
#include "fiscal/saida.h"
#include "support/golden.h"

namespace infofiscal {
namespace {

using namespace testing;
using namespace linha;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::StartsWith;

struct Conversao {
  std::vector<std::string> registros, info;
  std::vector<std::pair<int, int>> progresso;
};

// Converts `informacao` as the command line does, or, `uma_vez`, as the export hands it over
// while it writes it.
Conversao converter(const std::string& informacao, bool uma_vez = false) {
  Conversao c;
  const TProcLinhaInfo info = [&](const std::string& l) { c.info.push_back(l); };
  const TProcProgresso progresso = [&](int p, int m) { c.progresso.emplace_back(p, m); };
  std::string arquivo;
  if (uma_vez) {
    SaidaEmMemoria saida;
    gerar_sintegra(*lido_uma_vez(informacao), saida, info, progresso);
    arquivo = saida.bytes();
  } else {
    arquivo = gerar_sintegra(informacao, info, progresso);
  }
  for (std::size_t p = 0, e; (e = arquivo.find("\r\n", p)) != std::string::npos; p = e + 2)
    c.registros.push_back(arquivo.substr(p, e - p));
  EXPECT_EQ(arquivo, arquivo_de(c.registros)) << "every record ends with CR LF";
  return c;
}

std::string erro_de(const std::string& informacao) {
  try {
    gerar_sintegra(informacao, [](const std::string&) {}, [](int, int) {});
  } catch (const Error& e) {
    return e.what();
  }
  return "(sem erro)";
}

// Lines 01, 02 and 03 of a month of March 2024 with finalidade `finalidade`, then `resto`.
std::string mes(const std::vector<std::string>& resto, const std::string& finalidade = "1") {
  std::string t =
      linha_informacao(L01::kTipo, L01::kTrailer,
                       {{L01::TipoRegistro, "1"}, {L01::DataInicial, "01/03/2024"}, {L01::DataFinal, "31/03/2024"},
                        {L01::InventarioFinalMes, "N"}, {L01::InventarioFinalAno, "N"}, {L01::Finalidade, finalidade},
                        {L01::CriterioEscrituracao, ""}}) +
      "\r\n" +
      linha_informacao(L02::kTipo, L02::kTrailer,
                       {{L02::Codigo, "1"}, {L02::RazaoSocial, "Empresa Ltda"}, {L02::Cnpj, "11222333000181"},
                        {L02::Uf, "SP"}, {L02::Ie, "ISENTO"}, {L02::NomeCidade, "Campinas"}, {L02::Endereco, "Rua A"},
                        {L02::Numero, "S/N"}, {L02::Fone, "1933334444"}, {L02::IbgePais, ""}}) +
      "\r\n" + linha_informacao(L03::kTipo, L03::kTrailer, {{L03::Codigo, "1"}, {L03::IbgeCidade, ""}}) + "\r\n";
  for (const auto& l : resto) t += l + "\r\n";
  return t;
}

// A purchase header (kind 2, counter 1) with the columns that vary.
std::string compra(const std::string& numero, const std::string& cfop, const std::string& total,
                   const std::string& base = "0,00", const std::string& icms = "0,00") {
  return linha_informacao(
      L04::kTipo, L04::kTrailer,
      {{L04::TipoNota, "2"}, {L04::Contador, "1"}, {L04::Numero, numero}, {L04::Cfop, cfop}, {L04::Modelo, "55"},
       {L04::Serie, "1"}, {L04::Emissao, "04/03/2024"}, {L04::EntradaSaida, "05/03/2024"}, {L04::Total, total},
       {L04::Desconto, "0,00"}, {L04::TotalProdutos, total}, {L04::Frete, "0,00"}, {L04::Seguro, "0,00"},
       {L04::OutrasDespesas, "0,00"}, {L04::IcmsBase, base}, {L04::IcmsValor, icms}, {L04::IcmsStBase, "0,00"},
       {L04::IcmsStValor, "0,00"}, {L04::IpiValor, "0,00"}, {L04::PisValor, "0,00"}, {L04::CofinsValor, "0,00"},
       {L04::Fixo, "1"}, {L04::Situacao, "0"}, {L04::IbgeDestino, ""}});
}

std::string fornecedor(const std::string& cnpj, const std::string& ie, const std::string& uf) {
  return linha_informacao(L05::kTipo, L05::kTrailer,
                          {{L05::TipoNota, "2"}, {L05::Contador, "1"}, {L05::Papel, "2"}, {L05::Codigo, "9"},
                           {L05::CnpjCpf, cnpj}, {L05::Ie, ie}, {L05::Uf, uf}});
}

std::string item(const std::string& n, const std::string& preco, const std::string& cst, const std::string& cfop,
                 const std::string& base, const std::string& aliquota, const std::string& icms) {
  return linha_informacao(
      L06::kTipo, L06::kTrailer,
      {{L06::TipoNota, "2"}, {L06::Contador, "1"}, {L06::Produto, "8"}, {L06::Item, n}, {L06::Descricao, "Porca"},
       {L06::Unidade, "UN"}, {L06::Quantidade, "1,00"}, {L06::PrecoTotal, preco}, {L06::Desconto, "0,00"},
       {L06::Frete, "0,00"}, {L06::Seguro, "0,00"}, {L06::OutrasDespesas, "0,00"}, {L06::TipoItem, "2"},
       {L06::IcmsCst, cst}, {L06::Cfop, cfop}, {L06::IcmsBase, base}, {L06::IcmsAliquota, aliquota},
       {L06::IcmsValor, icms}, {L06::IcmsStBase, "0,00"}, {L06::IcmsStValor, "0,00"}, {L06::IpiBase, "0,00"},
       {L06::IpiValor, "0,00"}, {L06::PisBase, "0,00"}, {L06::PisAliquota, "0,00"}, {L06::PisQuantidade, "0,00"},
       {L06::PisValorUnidade, "0,00"}, {L06::PisValor, "0,00"}, {L06::CofinsBase, "0,00"},
       {L06::CofinsAliquota, "0,00"}, {L06::CofinsQuantidade, "0,00"}, {L06::CofinsValorUnidade, "0,00"},
       {L06::CofinsValor, "0,00"}});
}

const std::string kPorca = linha_informacao(L12::kTipo, L12::kTrailer,
                                            {{L12::TipoItem, "2"}, {L12::Codigo, "8"}, {L12::Descricao, "Porca"},
                                             {L12::Unidade, "UN"}, {L12::Ncm, "7318.16.00"}, {L12::Cest, ""}});

// The example month: its records, its steps, and the progress of the notes and then of the
// inventory's lines.
TEST(SintegraConversor, TheExampleMonthGivesTheseRecordsStepsAndProgress) {
  const auto c = converter(informacao_exemplo());
  EXPECT_TRUE(matches_golden("sintegra_marco_2024.txt", arquivo_de(c.registros)));
  EXPECT_THAT(c.info, ElementsAre("Lendo o arquivo de informações", "Gerando registros 10 e 11",
                                  "Gerando registros 50 e 54", "Gerando registro 74", "Gerando registro 75", "Gerando registro 90",
                                  "Conferindo o arquivo SINTEGRA"));
  constexpr int kNotas = 7, kInventario = 2;
  ASSERT_EQ(c.progresso.size(), static_cast<std::size_t>(kNotas + kInventario));
  for (int k = 0; k < kNotas; ++k) EXPECT_EQ(c.progresso[k], std::pair(k + 1, kNotas));
  EXPECT_EQ(c.progresso[kNotas], std::pair(1, kInventario));
  EXPECT_EQ(c.progresso.back(), std::pair(kInventario, kInventario));
}

// Small months, each with the records that differ from the plain case written out.
TEST(SintegraConversor, EdgeCasesGiveTheseRecords) {
  const struct {
    const char* caso;
    std::string informacao;
    const char* esperado;
  } casos[] = {
      {"a month without movement: 10, 11 and 90; no contact but the company's own; finalidade blank is normal",
       mes({}, ""), "sintegra_sem_movimento.txt"},
      {"finalidade 0 is normal too", mes({}, "0"), "sintegra_sem_movimento.txt"},
      {"finalidade 5 is kept", mes({}, "5"), "sintegra_finalidade_5.txt"},
      {"a foreign supplier: EX, CNPJ zeros, ISENTO; a 9-digit NF-e number keeps its last 6 digits",
       mes({compra("123456789", "3102", "100,00"), fornecedor("", "", ""), item("1", "100,00", "041", "3102", "0,00", "0,00", "0,00"),
            kPorca}),
       "sintegra_exterior.txt"},
      {"items adding to less than the total: the rest goes to Outras of the largest part; CST 40 is exempt",
       mes({compra("77", "1102", "130,00", "80,00", "9,60"), fornecedor("44555666000181", "ISENTO", "SP"),
            item("1", "20,00", "040", "1102", "0,00", "0,00", "0,00"),
            item("2", "80,00", "000", "1102", "80,00", "12,00", "9,60"), kPorca}),
       "sintegra_rateio.txt"},
  };
  for (const auto& c : casos) EXPECT_TRUE(matches_golden(c.esperado, arquivo_de(converter(c.informacao).registros))) << c.caso;
}

// Read once, as the export hands it over, a month gives the same records and steps (the
// catalogue comes after the notes; it is needed only for the records 75), but no progress.
TEST(SintegraConversor, ATextReadOnceGivesTheSameFile) {
  const std::string meses[] = {
      informacao_exemplo(),
      mes({compra("77", "1102", "130,00", "80,00", "9,60"), fornecedor("44555666000181", "ISENTO", "SP"),
           item("1", "20,00", "040", "1102", "0,00", "0,00", "0,00"),
           item("2", "80,00", "000", "1102", "80,00", "12,00", "9,60"), kPorca}),
  };
  for (const std::string& m : meses) {
    const Conversao duas = converter(m), uma = converter(m, true);
    EXPECT_EQ(uma.registros, duas.registros);
    EXPECT_EQ(uma.info, duas.info);
    EXPECT_TRUE(uma.progresso.empty());
  }
}

TEST(SintegraConversor, BadInformationIsAClearError) {
  const std::string inventario =
      linha_informacao(L18::kTipo, L18::kTrailer, {{L18::Codigo, "1"}, {L18::Data, "31/12/2023"}, {L18::Total, "10,00"}}) +
      "\r\n" +
      linha_informacao(L19::kTipo, L19::kTrailer,
                       {{L19::TipoInventario, "1"}, {L19::Inventario, "1"}, {L19::Produto, "99"}, {L19::Quantidade, "1,00"},
                        {L19::PrecoUnitario, "10,00"}, {L19::PrecoTotal, "10,00"}, {L19::Unidade, "UN"},
                        {L19::TipoItem, "2"}});
  // `tipo`: the kind of a problem of one note or product, which the month lists; without
  // it, the error stops the month at once.
  const struct {
    std::string informacao, erro, tipo{};
  } casos[] = {
      {"", "O arquivo de informações não tem a linha 01 (registro fiscal)"},
      {linha_informacao(L01::kTipo, L01::kTrailer,
                        {{L01::TipoRegistro, "1"}, {L01::DataInicial, "01/03/2024"}, {L01::DataFinal, "31/03/2024"}}),
       "O arquivo de informações não tem a linha 02 (empresa)"},
      {"lixo\r\n", "Linha 1 do arquivo de informações: a linha não começa com [C00], e sim com 'lixo': a continuação de "
                   "uma linha partida por uma quebra de linha dentro de um valor?"},
      {mes({item("1", "1,00", "000", "1102", "0,00", "0,00", "0,00")}),
       "Linha 4 do arquivo de informações: linha 06 sem a linha 04 da sua nota"},
      {mes({linha_informacao(20, 0, {})}), "Linha 4 do arquivo de informações: tipo de linha 20 desconhecido"},
      {mes({}, "4"), "Finalidade do arquivo (C06 da linha 01) '4' não tem código no SINTEGRA"},
      {mes({linha_informacao(L04::kTipo, L04::kTrailer, {{L04::TipoNota, "3"}, {L04::Contador, "1"}, {L04::Numero, "5"}})}),
       "Linha 4 do arquivo de informações: tipo de nota '3' desconhecido", "tipo de nota desconhecido"},
      {mes({compra("5", "1102", "10,00"), fornecedor("44555666000181", "", "SP"),
            item("1", "-5,00", "000", "1102", "0,00", "0,00", "0,00"), kPorca}),
       "Nota 5 (linha 4 do arquivo de informações): item 1 com valor total negativo: '-5,00'", "valor negativo num item"},
      {mes({linha_informacao(L04::kTipo, L04::kTrailer,
                             {{L04::TipoNota, "2"}, {L04::Contador, "1"}, {L04::Numero, "5"}, {L04::Cfop, "1102"},
                              {L04::Modelo, ""}})}),
       "Linha 4 do arquivo de informações: nota 5 sem modelo (C06)", "nota sem modelo"},
      {mes({compra("5", "1102", "10,00")}), "Nota 5 (linha 4 do arquivo de informações): nota sem a linha 05 da sua parte",
       "nota sem participante"},
      {mes({inventario}), "Linha 5 do arquivo de informações: o produto 99 não está no cadastro (linhas 12)",
       "produto fora do cadastro (linhas 12)"},
      // The identities of a party, each named with the line 05 that gives them.
      {mes({compra("5", "1102", "10,00"), fornecedor("44555666000182", "", "SP"),
            item("1", "10,00", "000", "1102", "0,00", "0,00", "0,00"), kPorca}),
       "Linha 5 do arquivo de informações: CNPJ/CPF da parte 2-9 '44555666000182': dígito verificador inválido",
       "CNPJ inválido"},
      {mes({compra("5", "1102", "10,00"), fornecedor("12.ABC.345/01DE-35", "", "SP"),
            item("1", "10,00", "000", "1102", "0,00", "0,00", "0,00"), kPorca}),
       "Linha 5 do arquivo de informações: CNPJ da parte 2-9 '12.ABC.345/01DE-35': o campo CNPJ do SINTEGRA é "
       "numérico e não leva letras",
       "CNPJ alfanumérico, sem lugar no SINTEGRA"},
      {mes({compra("5", "1102", "10,00"), fornecedor("44555666000181", "123.456.789.110", "SP"),
            item("1", "10,00", "000", "1102", "0,00", "0,00", "0,00"), kPorca}),
       "Linha 5 do arquivo de informações: IE da parte 2-9 (SP) '123.456.789.110': dígito verificador inválido",
       "IE inválida"},
      // Codes with a letter are never read as other digits.
      {mes({compra("5", "1102", "10,00"), fornecedor("44555666000181", "", "SP"),
            item("1", "10,00", "1A0", "1102", "0,00", "0,00", "0,00"), kPorca}),
       "Nota 5 (linha 4 do arquivo de informações): item 1 (linha 6), CST do ICMS '1A0': caractere 'A' na posição 2 "
       "não permitido: o código é numérico",
       "código com caractere não numérico"},
      {mes({compra("5", "1102", "10,00"), fornecedor("44555666000181", "", "SP"),
            item("1", "10,00", "000", "11O2", "0,00", "0,00", "0,00"), kPorca}),
       "Nota 5 (linha 4 do arquivo de informações): item 1 (linha 6), CFOP '11O2': caractere 'O' na posição 3 não "
       "permitido: o código é numérico",
       "código com caractere não numérico"},
      {mes({compra("5", "1102", "10,00"), fornecedor("44555666000181", "", "SP"),
            item("1", "10,00", "000", "1102", "0,00", "0,00", "0,00"),
            linha_informacao(L12::kTipo, L12::kTrailer,
                             {{L12::TipoItem, "2"}, {L12::Codigo, "8"}, {L12::Descricao, "Porca"},
                              {L12::Unidade, "UN"}, {L12::Ncm, "7318I600"}, {L12::Cest, ""}})}),
       "Produto 8 (linha 7 do arquivo de informações): NCM '7318I600': caractere 'I' na posição 5 não permitido: o "
       "código é numérico",
       "código com caractere não numérico"},
  };
  for (const auto& c : casos)
    EXPECT_EQ(erro_de(c.informacao), c.tipo.empty() ? c.erro
                                                    : "1 problema no mês; o arquivo SINTEGRA não foi gravado:\n" + c.tipo +
                                                          " (1):\n  " + c.erro);
}

// A person's identity card number is never an IE: the record says ISENTO, beside a CNPJ of zeros.
TEST(SintegraConversor, APersonHasNoIe) {
  const Conversao c = converter(mes({compra("5", "1102", "10,00"), fornecedor("529.982.247-25", "12.345.678-9", "SP"),
                                     item("1", "10,00", "000", "1102", "0,00", "0,00", "0,00"), kPorca}));
  ASSERT_GE(c.registros.size(), 3u);
  EXPECT_EQ(c.registros[2].substr(0, 30), "5000000000000000ISENTO        ");
}

// The command line: the converter reads the saved (Windows-1252) file and writes the file;
// the validator prints the findings and exits 1 when there are any.
TEST(SintegraCli, ConvertsAndValidates) {
  const std::string dir = fresh_dir("sintegra-cli");
  write_file(dir + "/SpedInformacao.txt", utf8_to_windows1252(informacao_exemplo()));
  auto r = run_cli({"converter", "--tipo", "1", "--informacao", dir + "/SpedInformacao.txt", "--arquivo-fiscal",
                    dir + "/SINTEGRA.txt", "--progresso", "nada"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_THAT(r.out, StartsWith("Lendo o arquivo de informações\n"));
  EXPECT_EQ(read_file(dir + "/SINTEGRA.txt"), arquivo_de(registros_exemplo()));

  r = run_cli({"validar", "--tipo", "1", "--arquivo-fiscal", dir + "/SINTEGRA.txt"});
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.out, "");

  auto registros = registros_exemplo();
  registros[1].pop_back();
  write_file(dir + "/quebrado.txt", arquivo_de(registros));
  r = run_cli({"validar", "--tipo", "1", "--arquivo-fiscal", dir + "/quebrado.txt"});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "Registro 2: tem 125 caracteres; todo registro tem 126\n");
}

TEST(SintegraCli, AMissingOrUnreadableInformationFileIsAClearError) {
  const std::string dir = fresh_dir("sintegra-cli-erro");
  write_file(dir + "/SINTEGRA.txt", "anterior\r\n");
  write_file(dir + "/binario.txt", std::string("\x01\x02\xff", 3));
  // `tipo`: the kind of a problem of one note or product, which the month lists; without
  // it, the error stops the month at once.
  const struct {
    std::string informacao, erro, tipo{};
  } casos[] = {
      {dir + "/sumiu.txt", "Não foi possível ler o arquivo '" + dir + "/sumiu.txt': arquivo ou pasta inexistente\n"},
      {dir + "/binario.txt", "Linha 1 do arquivo de informações: a linha não começa com [C00], e sim com "
                             "'\\x01\\x02ÿ': a continuação de uma linha partida por uma quebra de linha dentro de um "
                             "valor?\n"},
  };
  for (const auto& c : casos) {
    const auto r = run_cli({"converter", "--tipo", "1", "--informacao", c.informacao, "--arquivo-fiscal",
                            dir + "/SINTEGRA.txt", "--progresso", "nada"});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, c.erro);
    EXPECT_EQ(read_file(dir + "/SINTEGRA.txt"), "anterior\r\n") << "the earlier file stays";
  }
}

}  // namespace
}  // namespace infofiscal
