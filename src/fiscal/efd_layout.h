// The EFD ICMS/IPI layout: one declarative table per register type, shared by the writer
// (gerar_efd) and the validator (validar_efd). A layout fact is corrected here and both sides
// follow.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace infofiscal::efd {

// One field of a register, as the layout sheet gives it.
struct Campo {
  std::string_view nome;
  // 'C' alphanumeric, 'N' numeric (digits and a decimal comma), 'D' a date ddmmaaaa,
  // 'M' a month mmaaaa (both numeric of fixed size in the sheet).
  char tipo;
  int tamanho;       // maximum characters (exact when `exato`); 0 = no limit (255 for 'C')
  bool exato;        // the size is exact: codes written with all their digits
  int decimais;      // maximum decimals of an 'N' field; 0 = whole number or code
  bool obrigatorio;  // O (always filled); otherwise OC (filled when the information exists)
  std::string_view valores = {};  // allowed codes separated by '|'; empty = any

  // A value field: 'N' without a fixed size, written without leading zeros.
  bool valor() const { return tipo == 'N' && !exato; }
  // Whether `v` is one of the allowed codes (any value when the field lists none).
  bool permite(std::string_view v) const;
};

// One register type. The table of all of them stands in file order, so a register's index
// is its place in the file.
struct Registro {
  std::string_view reg;
  int nivel;               // 0 file, 1 block opening/closing, 2.. data records
  std::string_view pai;    // the parent register (levels 2 and more); empty otherwise
  int minimo, maximo;      // occurrences under one parent (the file for levels 0 and 1); maximo 0 = n
  std::span<const Campo> campos;  // REG included, in layout order

  int indice() const;      // place in the file order
  bool abertura() const { return nivel == 1 && reg.substr(1) == "001"; }
  bool fechamento() const { return nivel == 1 && reg.substr(1) == "990"; }
  char bloco() const { return reg[0]; }
};

// Every register type the converter writes or the validator accepts, in file order; fewer
// than kMaxRegistros, so that counts per type fit a fixed array.
std::span<const Registro> registros();
inline constexpr int kMaxRegistros = 64;
// The register of that code; nullptr when the layout has none.
const Registro* registro(std::string_view reg);
// The register of that code. REQUIRES: it exists.
const Registro& R(std::string_view reg);

// The blocks, in file order.
inline constexpr std::string_view kBlocos = "0BCDEGHK19";

// COD_VER of a period (table "Versão do Leiaute", chosen by DT_INI): empty when the table
// has no code for that year.
std::string_view cod_ver(int ano);

// Voided and denied numbers (COD_SIT 04/05) are booked only for periods before this year.
inline constexpr int kAnoSemInutilizadas = 2023;

// Brazil in the country table of 0150.
inline constexpr std::string_view kPaisBrasil = "1058";

// Where the ICMS of a C190 goes in E110: +1 debits (02: CFOP 5, 6, 7 but 5605, and 1605),
// -1 credits (06: CFOP 1, 2, 3 but 1605, and 5605), 0 nowhere.
int apuracao_cfop(std::string_view cfop);

// E110 fields by number (index 2 to 15, in hundredths). Completes 11, 13 and 14 from the
// others by the identity of the apuração: D = 02+03+04+05, C = 06+07+08+09+10,
// 11 = D-C when positive, 14 = C-D when positive, 13 = 11-12.
using CamposE110 = std::array<std::int64_t, 16>;
void completa_e110(CamposE110& e110);

// Models with an access key (CHV_NFE): NF-e 55 and NFC-e 65; other models have none.
inline bool modelo_eletronico(std::string_view cod_mod) { return cod_mod == "55" || cod_mod == "65"; }

// Electronic transport documents booked in D100: CT-e 57 and CT-e OS 67 (both with a key).
inline bool modelo_transporte(std::string_view cod_mod) { return cod_mod == "57" || cod_mod == "67"; }

// Entries whose ICMS the law does not let the company credit in the document's month: use and
// consumption (CFOP x556, x407; LC 87/96 art. 33 I) and fixed assets (x551, x406; art. 20 § 5:
// only through CIAP, 1/48 a month, block G). Their C170/C190/D190 carry base, rate and ICMS 0.
enum class SemCredito : std::uint8_t { Nao, UsoConsumo, Imobilizado };
SemCredito sem_credito(std::string_view cfop);

inline bool so_digitos(std::string_view s) { return s.find_first_not_of("0123456789") == std::string_view::npos; }

// Valid CST_ICMS: origin 0-8 followed by a situation (table 4.3.1), or a CSOSN.
bool cst_icms_valido(std::string_view cst);

}  // namespace infofiscal::efd
