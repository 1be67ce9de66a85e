// Information files built by hand for the EFD converter's tests and benchmark.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "fiscal/efd_layout.h"

namespace infofiscal::testing {

// A register line: "[C00]tt[/C00]", columns C01.. in order, the trailer, CR LF.
inline std::string linha_info(int tipo, std::initializer_list<std::string_view> colunas) {
  std::string s = fmt::format("[C00]{:02}[/C00]", tipo);
  int n = 0;
  for (const auto c : colunas) {
    ++n;
    s += fmt::format("[C{0:02}]{1}[/C{0:02}]", n, c);
  }
  return s + fmt::format("[C99]{:02}[/C99]\r\n", n);
}

// The access key of an NF-e of March 2024 in São Paulo, series 1, of that issuer and number.
inline std::string chave_nfe(std::string_view cnpj, int numero) {
  const std::string k = fmt::format("352403{}55001{:09}1{:08}", cnpj, numero, numero);
  for (char d = '0'; d <= '9'; ++d)
    if (efd::chave_nfe_valida(k + d)) return k + d;
  return k;
}

// Line 01 of a period (dd/mm/yyyy) with profile A, activity 1 (trade).
inline std::string l01(std::string_view ini, std::string_view fim) {
  return linha_info(1, {"2", ini, fim, "S", "N", "0", "", "A", "1", "", "", "", "", "", ""});
}

inline std::string l02_l03() {
  return linha_info(2, {"1", "EMPRESA EXEMPLO LTDA", "EXEMPLO", "11.222.333/0001-81", "SP", "123.456.789.012", "", "",
                        "SAO PAULO", "RUA A", "01001-000", "SALA 1", "10", "CENTRO", "(11) 3333-4444", "",
                        "contato@exemplo.com", "3550308", "1058"}) +
         linha_info(3, {"1", "FULANO DE TAL", "123.456.789-09", "1SP123456", "", "RUA B", "20", "", "01002000",
                        "CENTRO", "1133334444", "", "fulano@exemplo.com", "3550308"});
}

// Line 04 of a note: kind, row, number, key, model, issue and entry dates, total, situation.
inline std::string l04(std::string_view especie, std::string_view linha, std::string_view num, std::string_view chave,
                       std::string_view modelo, std::string_view emissao, std::string_view entrada,
                       std::string_view total, std::string_view situacao) {
  return linha_info(4, {especie, linha, num, "1", chave, modelo, "1", emissao, entrada, total, "0,00", total, "0,00",
                        "0,00", "0,00", "0,00", "0,00", "0,00", "0,00", "0,00", "0,00", "0,00",
                        especie == "2" ? "1" : "0", situacao, "", ""});
}

// Line 05: the party (role 1 client, 2 supplier) of a note.
inline std::string l05(std::string_view especie, std::string_view linha, std::string_view papel, std::string_view codigo) {
  return linha_info(5, {especie, linha, papel, codigo, "", "", "SP"});
}

// Line 06: an item with its ICMS; every other amount zero.
inline std::string l06(std::string_view especie, std::string_view linha, std::string_view codigo, std::string_view n,
                       std::string_view unid, std::string_view qtd, std::string_view total, std::string_view tipo,
                       std::string_view cst, std::string_view cfop, std::string_view bc, std::string_view aliq,
                       std::string_view icms) {
  return linha_info(6, {especie, linha, codigo, n, "DESCRICAO", unid, qtd, total, "0,00", "0,00", "0,00", "0,00", "",
                        "", tipo, cst, cfop, bc, aliq, icms, "0,00", "0,00", "", "", "0,00", "0,00", "", "0,00", "0,00",
                        "0,00", "0,00", "0,00", "", "0,00", "0,00", "0,00", "0,00", "0,00"});
}

// The catalogues: products 15 and 16, a consumption product 15, units UN, CX and KG,
// client 15, supplier 15 and client 16.
inline std::string cadastros() {
  return linha_info(12, {"2", "15", "PARAFUSO", "UN", "7318.15.00", "00.000.00"}) +
         linha_info(12, {"2", "16", "PORCA", "CX", "73181600", ""}) +
         linha_info(12, {"3", "15", "CANETA", "UN", "", ""}) +
         linha_info(13, {"1", "UN", "UNIDADE"}) + linha_info(13, {"2", "CX", "CAIXA"}) +
         linha_info(13, {"3", "KG", "QUILO"}) +
         linha_info(14, {"1", "15", "JOSE DA SILVA", "529.982.247-25", "12345678", "F", "RUA C", "30", "VILA",
                         "3550308", "1058"}) +
         linha_info(14, {"2", "15", "FORNECEDOR SA", "11.444.777/0001-61", "123.456.789.110", "J", "RUA D", "40",
                         "BRAS", "3550308", "1058"}) +
         linha_info(14, {"1", "16", "OUTRO CLIENTE", "52998224725", "", "F", "RUA E", "", "", "3550308", "1058"});
}

}  // namespace infofiscal::testing
