// Information files built by hand, by column name, for the EFD converter's tests and benchmark.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "fiscal/efd_layout.h"
#include "fiscal/identidade.h"
#include "fiscal/linha_informacao.h"

namespace infofiscal::testing {

// A line of that line type with the columns given, and CR LF.
inline std::string linha_info(int tipo, int trailer, std::initializer_list<Coluna> colunas) {
  return linha_informacao(tipo, trailer, colunas) + "\r\n";
}

// The access key of an NF-e of March 2024 in São Paulo, series 1, of that issuer and number.
inline std::string chave_nfe(std::string_view cnpj, int numero) {
  const std::string k = fmt::format("352403{}55001{:09}1{:08}", cnpj, numero, numero);
  for (char d = '0'; d <= '9'; ++d)
    if (identidade::verificar_chave(k + d)) return k + d;
  return k;
}

// Line 01 of a period (dd/mm/yyyy) with profile A, activity 1 (trade).
inline std::string l01(std::string_view ini, std::string_view fim) {
  using namespace linha;
  return linha_info(L01::kTipo, L01::kTrailer,
                    {{L01::TipoRegistro, "2"},
                     {L01::DataInicial, ini},
                     {L01::DataFinal, fim},
                     {L01::InventarioFinalMes, "S"},
                     {L01::InventarioFinalAno, "N"},
                     {L01::Finalidade, "0"},
                     {L01::Perfil, "A"},
                     {L01::TipoAtividade, "1"}});
}

inline std::string l02_l03() {
  using namespace linha;
  return linha_info(L02::kTipo, L02::kTrailer,
                    {{L02::Codigo, "1"},
                     {L02::RazaoSocial, "EMPRESA EXEMPLO LTDA"},
                     {L02::NomeFantasia, "EXEMPLO"},
                     {L02::Cnpj, "11.222.333/0001-81"},
                     {L02::Uf, "SP"},
                     {L02::Ie, "123.456.785.016"},
                     {L02::NomeCidade, "SAO PAULO"},
                     {L02::Endereco, "RUA A"},
                     {L02::Cep, "01001-000"},
                     {L02::Complemento, "SALA 1"},
                     {L02::Numero, "10"},
                     {L02::Bairro, "CENTRO"},
                     {L02::Fone, "(11) 3333-4444"},
                     {L02::Email, "contato@exemplo.com"},
                     {L02::IbgeCidade, "3550308"},
                     {L02::IbgePais, "1058"}}) +
         linha_info(L03::kTipo, L03::kTrailer,
                    {{L03::Codigo, "1"},
                     {L03::Nome, "FULANO DE TAL"},
                     {L03::Cpf, "123.456.789-09"},
                     {L03::Crc, "1SP123456"},
                     {L03::Endereco, "RUA B"},
                     {L03::Numero, "20"},
                     {L03::Cep, "01002000"},
                     {L03::Bairro, "CENTRO"},
                     {L03::Fone, "1133334444"},
                     {L03::Email, "fulano@exemplo.com"},
                     {L03::IbgeCidade, "3550308"}});
}

// Line 04 of a note: kind, row, number, key, model, issue and entry dates, total, situation;
// every other amount zero.
inline std::string l04(std::string_view especie, std::string_view linha, std::string_view num, std::string_view chave,
                       std::string_view modelo, std::string_view emissao, std::string_view entrada,
                       std::string_view total, std::string_view situacao) {
  using namespace linha;
  return linha_info(L04::kTipo, L04::kTrailer,
                    {{L04::TipoNota, especie},
                     {L04::Contador, linha},
                     {L04::Numero, num},
                     {L04::Cfop, "1"},
                     {L04::Chave, chave},
                     {L04::Modelo, modelo},
                     {L04::Serie, "1"},
                     {L04::Emissao, emissao},
                     {L04::EntradaSaida, entrada},
                     {L04::Total, total},
                     {L04::Desconto, "0,00"},
                     {L04::TotalProdutos, total},
                     {L04::Frete, "0,00"},
                     {L04::Seguro, "0,00"},
                     {L04::OutrasDespesas, "0,00"},
                     {L04::IcmsBase, "0,00"},
                     {L04::IcmsValor, "0,00"},
                     {L04::IcmsStBase, "0,00"},
                     {L04::IcmsStValor, "0,00"},
                     {L04::IpiValor, "0,00"},
                     {L04::PisValor, "0,00"},
                     {L04::CofinsValor, "0,00"},
                     {L04::Fixo, especie == "2" ? "1" : "0"},
                     {L04::Situacao, situacao},
                     {L04::IbgeDestino, ""}});
}

// Line 05: the party (role 1 client, 2 supplier) of a note.
inline std::string l05(std::string_view especie, std::string_view linha, std::string_view papel,
                       std::string_view codigo) {
  using namespace linha;
  return linha_info(
      L05::kTipo, L05::kTrailer,
      {{L05::TipoNota, especie}, {L05::Contador, linha}, {L05::Papel, papel}, {L05::Codigo, codigo}, {L05::Uf, "SP"}});
}

// Line 06: an item with its ICMS; every other amount zero.
inline std::string l06(std::string_view especie, std::string_view linha, std::string_view codigo, std::string_view n,
                       std::string_view unid, std::string_view qtd, std::string_view total, std::string_view tipo,
                       std::string_view cst, std::string_view cfop, std::string_view bc, std::string_view aliq,
                       std::string_view icms) {
  using namespace linha;
  return linha_info(L06::kTipo, L06::kTrailer,
                    {{L06::TipoNota, especie},
                     {L06::Contador, linha},
                     {L06::Produto, codigo},
                     {L06::Item, n},
                     {L06::Descricao, "DESCRICAO"},
                     {L06::Unidade, unid},
                     {L06::Quantidade, qtd},
                     {L06::PrecoTotal, total},
                     {L06::Desconto, "0,00"},
                     {L06::Frete, "0,00"},
                     {L06::Seguro, "0,00"},
                     {L06::OutrasDespesas, "0,00"},
                     {L06::TipoItem, tipo},
                     {L06::IcmsCst, cst},
                     {L06::Cfop, cfop},
                     {L06::IcmsBase, bc},
                     {L06::IcmsAliquota, aliq},
                     {L06::IcmsValor, icms},
                     {L06::IcmsStBase, "0,00"},
                     {L06::IcmsStValor, "0,00"},
                     {L06::IpiBase, "0,00"},
                     {L06::IpiValor, "0,00"},
                     {L06::PisBase, "0,00"},
                     {L06::PisAliquota, "0,00"},
                     {L06::PisQuantidade, "0,00"},
                     {L06::PisValorUnidade, "0,00"},
                     {L06::PisValor, "0,00"},
                     {L06::CofinsBase, "0,00"},
                     {L06::CofinsAliquota, "0,00"},
                     {L06::CofinsQuantidade, "0,00"},
                     {L06::CofinsValorUnidade, "0,00"},
                     {L06::CofinsValor, "0,00"}});
}

// Line 12: an item of a catalogue (kind 2 product, 3 consumption product).
inline std::string l12(std::string_view tipo, std::string_view codigo, std::string_view descricao,
                       std::string_view unidade, std::string_view ncm, std::string_view cest) {
  using namespace linha;
  return linha_info(L12::kTipo, L12::kTrailer,
                    {{L12::TipoItem, tipo},
                     {L12::Codigo, codigo},
                     {L12::Descricao, descricao},
                     {L12::Unidade, unidade},
                     {L12::Ncm, ncm},
                     {L12::Cest, cest}});
}

// Lines 16 and 17 of the month-end inventory `codigo`; 18 and 19 of the year-end one.
inline std::string l16(std::string_view codigo, std::string_view data, std::string_view total) {
  using namespace linha;
  return linha_info(L16::kTipo, L16::kTrailer, {{L16::Codigo, codigo}, {L16::Data, data}, {L16::Total, total}});
}
inline std::string l18(std::string_view codigo, std::string_view data, std::string_view total) {
  using namespace linha;
  return linha_info(L18::kTipo, L18::kTrailer, {{L18::Codigo, codigo}, {L18::Data, data}, {L18::Total, total}});
}
// An item of an inventory: line 17 (of the month) or 19 (of the year), kind 2 (product).
inline std::string l17_l19(int tipo, std::string_view inventario, std::string_view produto, std::string_view qtd,
                           std::string_view unitario, std::string_view total, std::string_view unidade) {
  using namespace linha;
  return linha_informacao(tipo, L17::kTrailer,
                          {{L17::TipoInventario, tipo == L17::kTipo ? "1" : "2"},
                           {L17::Inventario, inventario},
                           {L17::Produto, produto},
                           {L17::Quantidade, qtd},
                           {L17::PrecoUnitario, unitario},
                           {L17::PrecoTotal, total},
                           {L17::Unidade, unidade},
                           {L17::TipoItem, "2"}}) +
         "\r\n";
}

// The catalogues: products 15 and 16, a consumption product 15, units UN, CX and KG,
// client 15, supplier 15 and client 16.
inline std::string cadastros() {
  using namespace linha;
  const auto l13 = [](std::string_view codigo, std::string_view sigla, std::string_view descricao) {
    return linha_info(L13::kTipo, L13::kTrailer,
                      {{L13::Codigo, codigo}, {L13::Sigla, sigla}, {L13::Descricao, descricao}});
  };
  const auto l14 = [](std::string_view papel, std::string_view codigo, std::string_view nome, std::string_view doc,
                      std::string_view ie, std::string_view pessoa, std::string_view endereco, std::string_view numero,
                      std::string_view bairro) {
    return linha_info(L14::kTipo, L14::kTrailer,
                      {{L14::Papel, papel},
                       {L14::Codigo, codigo},
                       {L14::RazaoSocial, nome},
                       {L14::CnpjCpf, doc},
                       {L14::IeRg, ie},
                       {L14::TipoPessoa, pessoa},
                       {L14::Endereco, endereco},
                       {L14::Numero, numero},
                       {L14::Bairro, bairro},
                       {L14::IbgeCidade, "3550308"},
                       {L14::IbgePais, "1058"}});
  };
  return l12("2", "15", "PARAFUSO", "UN", "7318.15.00", "00.000.00") + l12("2", "16", "PORCA", "CX", "73181600", "") +
         l12("3", "15", "CANETA", "UN", "", "") + l13("1", "UN", "UNIDADE") + l13("2", "CX", "CAIXA") +
         l13("3", "KG", "QUILO") +
         l14("1", "15", "JOSE DA SILVA", "529.982.247-25", "12345678", "F", "RUA C", "30", "VILA") +
         l14("2", "15", "FORNECEDOR SA", "11.444.777/0001-61", "123.456.785.119", "J", "RUA D", "40", "BRAS") +
         l14("1", "16", "OUTRO CLIENTE", "52998224725", "", "F", "RUA E", "", "");
}

}  // namespace infofiscal::testing
