// The SINTEGRA file's layout (Convênio ICMS 57/95, as amended by Conv. ICMS 76/03): one
// declarative table per record type, read by the writer and by the validator alike, so that a
// fact corrected here is corrected on both sides.
//
// Every record has exactly 126 characters and ends with CR LF. A field is numeric (N: digits
// only, right-aligned, zero-padded, implied decimals, no sign) or alphanumeric (X: ASCII,
// upper case, left-aligned, blank-padded). Positions are not written down: they follow from
// the sizes, and a compile-time check holds every table to 126.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/value.h"

namespace infofiscal::sintegra {

inline constexpr int kTamanhoRegistro = 126;
inline constexpr std::string_view kFimDeRegistro = "\r\n";

enum class Formato : std::uint8_t { N, X };

// What the validator checks in a field besides its format.
enum class Conteudo : std::uint8_t {
  Livre,            // anything of the format
  Texto,            // X, not blank
  Tipo,             // the record's own type
  Data,             // AAAAMMDD naming a real day
  DataDoPeriodo,    // a real day inside the period of type 10 (type 50: unless extemporaneous)
  Cnpj,             // 14 digits: zeros, or a CNPJ with valid check digits
  CnpjInformante,   // a CNPJ with valid check digits, never zeros
  Inscricao,        // the literal ISENTO, or letters and digits only
  Uf,               // one of kUfs
  UfOuExterior,     // one of kUfs, or EX
  Codigo,           // one of the blank-separated `codigos`
  Cfop,             // a code whose first digit is 1, 2, 3, 5, 6 or 7
  NumeroDoItem,     // 001-990, or one of the special numbers of k54Especiais
  Brancos,          // blanks only
  Pares90,          // the (type, count) pairs of type 90, see k90
};

struct Campo {
  int numero;             // the field's number in the manual's table, 1 = the type
  std::string_view nome;  // the manual's name, used in messages
  int tamanho;
  Formato formato;
  int decimais = 0;  // implied decimals of an N field
  Conteudo conteudo = Conteudo::Livre;
  std::string_view codigos = {};  // for Conteudo::Codigo
};

struct Layout {
  int tipo;
  std::span<const Campo> campos;
  std::span<const int> ordem;  // fields whose text sorts the records of the type, in priority

  const Campo& campo(int numero) const { return campos[numero - 1]; }
  // 0-based offset of field `numero` in the record.
  int inicio(int numero) const;
  // The text of field `numero` in a 126-character record.
  std::string_view texto(std::string_view registro, int numero) const {
    return registro.substr(inicio(numero), campo(numero).tamanho);
  }
};

// Field numbers, as in the manual, for the code that fills or reads a particular field.
namespace r10 {
enum : int { Tipo = 1, Cnpj, IE, Nome, Municipio, Uf, Fax, DataInicial, DataFinal, Convenio, Natureza, Finalidade };
}
namespace r11 {
enum : int { Tipo = 1, Logradouro, Numero, Complemento, Bairro, Cep, Contato, Telefone };
}
namespace r50 {
enum : int { Tipo = 1, Cnpj, IE, Data, Uf, Modelo, Serie, Numero, Cfop, Emitente, Valor, Base, Icms, Isenta, Outras,
             Aliquota, Situacao };
}
namespace r54 {
enum : int { Tipo = 1, Cnpj, Modelo, Serie, Numero, Cfop, Cst, Item, Produto, Quantidade, ValorProduto, Desconto,
             Base, BaseSt, Ipi, Aliquota };
}
namespace r70 {
enum : int { Tipo = 1, Cnpj, IE, Data, Uf, Modelo, Serie, Subserie, Numero, Cfop, Valor, Base, Icms, Isenta, Outras,
             Frete, Situacao };
}
namespace r74 {
enum : int { Tipo = 1, Data, Produto, Quantidade, Valor, Posse, Cnpj, IE, Uf, Brancos };
}
namespace r75 {
enum : int { Tipo = 1, DataInicial, DataFinal, Produto, Ncm, Descricao, Unidade, AliquotaIpi, AliquotaIcms, Reducao,
             BaseSt };
}
namespace r90 {
enum : int { Tipo = 1, Cnpj, IE, Pares, Brancos, Quantos90 };
}

extern const Layout k10, k11, k50, k54, k70, k74, k75, k90;

// The layout of a type this system writes and checks field by field; nullptr for any other.
const Layout* layout_do_tipo(int tipo);

// Every record type of the manual, in the order the file must keep: grouped by type, never
// interleaved; 10 first, 11 second, 90 last.
inline constexpr std::array<int, 21> kOrdemDosTipos = {10, 11, 50, 51, 53, 54, 55, 56, 57, 60, 61,
                                                       70, 71, 74, 75, 76, 77, 85, 86, 88, 90};
// Position of `tipo` in kOrdemDosTipos; -1 when the manual has no such type.
int ordem_do_tipo(int tipo);

// Type 90: up to 9 pairs of (type 2 N, count 8 N) in the Pares field, unused slots blank; one
// pair per type present except 10, 11 and 90 (counted only in the grand total: the usual
// reading of the manual); the last pair is 99 with the number of records of the whole file,
// every type-90 record included. Pairs that do not fit continue in a further type-90 record;
// Quantos90 of every type-90 record is the number of type-90 records.
inline constexpr int kParesPor90 = 9;
inline constexpr int kTamanhoTipoDoPar = 2;
inline constexpr int kTamanhoContaDoPar = 8;
inline constexpr int kTipoTotalGeral = 99;

// States, as field UF of types 10, 50 and 74 carries them; EX marks a foreign party.
inline constexpr std::string_view kUfs = "AC AL AM AP BA CE DF ES GO MA MG MS MT PA PB PE PI PR RJ RN RO RR RS SC SE SP TO";
inline constexpr std::string_view kExterior = "EX";
inline constexpr std::string_view kIsento = "ISENTO";

// Situation codes of type 50 (N normal, S cancelled, E and X the late entry of one, 2 NF-e
// denied, 4 NF-e number voided). Documents in these situations carry their key and no value.
inline constexpr std::string_view kSituacoesSemValor = "S X 2 4";
inline constexpr std::string_view kSituacoesExtemporaneas = "E X";
// Models that give type 54 items.
inline constexpr std::string_view kModelosComItens = "01 55";
// Special item numbers of type 54 (991 freight, 992 insurance, 993 PIS/COFINS of imports, 997
// complement, 998 service, 999 other expenses): document key and amount (Desconto field) only.
inline constexpr int kPrimeiroItemEspecial = 991;
inline constexpr std::string_view k54Especiais = "991 992 993 997 998 999";
inline constexpr int kItemFrete = 991, kItemSeguro = 992, kItemOutrasDespesas = 999;

// ---- How the information file maps onto the layout (the writer's choices) ----

// Type 10 field 10: the writer always declares the structure of Conv. ICMS 76/03.
inline constexpr std::string_view kConvenio = "3";
// Type 10 field 11: the information file carries every operation of the period.
inline constexpr std::string_view kNatureza = "3";
// Type 10 field 12 from FINALIDADEARQUIVO of line 01 (C06): blank or 0 (the original delivery
// in the other fiscal file's coding) is a normal file; 1, 2, 3 and 5 are the codes themselves.
// 4 (corrective rectification) is accepted by few states and is refused, like any other value.
struct Mapeamento {
  std::string_view de, para;
};
inline constexpr std::array<Mapeamento, 6> kFinalidades = {
    {{"", "1"}, {"0", "1"}, {"1", "1"}, {"2", "2"}, {"3", "3"}, {"5", "5"}}};
// Type 50 field 17 from C24 of line 04: 0 normal (purchases, own notes in state 2), 2 cancelled
// (own notes in state 3), 5 a voided NF-e number.
inline constexpr std::array<Mapeamento, 3> kSituacoes = {{{"0", "N"}, {"2", "S"}, {"5", "4"}}};
// Note kinds (C01 of lines 04, 05, 06): purchases, issued by the supplier (emitente T) and
// dated by receipt; the company's own notes (emitente P), dated by issue; 21 a voided NF-e
// number. Item lines of equipment sales (17) carry item kind 2 but list equipment.
inline constexpr std::string_view kNotasDeTerceiros = "1 2 4";
inline constexpr std::string_view kNotasProprias = "9 10 11 12 17 21";
inline constexpr int kNotaVendaEquipamento = 17;
// Item kinds (C15 of line 06, C01 of line 12) and the prefix of their codes in types 54, 74
// and 75: 1 equipment, 2 product, 3 consumption product. Inventory lines list products.
inline constexpr std::array<Mapeamento, 3> kPrefixosDeItem = {{{"1", "E"}, {"2", ""}, {"3", "C"}}};
inline constexpr std::string_view kItemProduto = "2";
// Type 74 field 06 of every inventory line: goods the informant owns and holds.
inline constexpr std::string_view kPossePropria = "1";

// Type 50 (and 70) field 06 from the model of line 04 (C06, read as a number). Other models
// (paper transport documents 07-11, 26-29, consumer notes) belong to types this writer does not
// produce.
inline constexpr std::array<Mapeamento, 8> kModelos = {{{"1", "01"},
                                                        {"4", "04"},
                                                        {"6", "06"},
                                                        {"21", "21"},
                                                        {"22", "22"},
                                                        {"55", "55"},
                                                        {"57", "57"},
                                                        {"67", "67"}}};
// Models of type 70: the electronic transport documents (CT-e, CT-e OS) the company took as
// the buyer of the goods carried; its own would be a carrier's, which this file does not write.
inline constexpr std::string_view kModelosDeTransporte = "57 67";
// Type 70 field 16: the freight of a purchase is hired by its receiver (FOB).
inline constexpr std::string_view kFreteFob = "2";

// ICMS tax codes whose amount outside the ICMS base is exempt or not taxed (Isenta of type
// 50); every other code's goes to Outras. CST: the two digits after the origin; CSOSN: the
// three digits of a Simples Nacional code (four with the origin).
inline constexpr std::string_view kCsts = "00 10 20 30 40 41 50 51 60 70 90";
inline constexpr std::string_view kCstsIsentos = "20 30 40 41";
inline constexpr std::string_view kCsosnsIsentos = "102 103 300 400";

// Finds `de` in a mapping table; nullptr when it is not there.
template <std::size_t N>
const std::string_view* mapear(const std::array<Mapeamento, N>& tabela, std::string_view de) {
  for (const auto& m : tabela)
    if (m.de == de) return &m.para;
  return nullptr;
}

// Whether `valor` is one of the blank-separated codes of `lista`.
bool na_lista(std::string_view lista, std::string_view valor);

// ---- Primitives that put a value into a field (the writer) ----

// A number with `casas` implied decimals (an amount of the information file is read in
// hundredths: casas = 2).
struct Numero {
  std::int64_t valor;
  int casas;
};

// Appends field `campo` holding the number, rescaled to the field's decimals (half away from
// zero). Throws Error naming the field when the number is negative or does not fit.
void por_numero(std::string& saida, const Campo& campo, Numero numero);
// Appends an N field holding the digits of `texto`, its mask ('.', '-', '/', blanks) dropped:
// "12.345-678" gives 12345678. Throws DataProblem when there are more digits than the field
// holds, or a letter or any other character: a numeric field never drops one in silence.
void por_digitos(std::string& saida, const Campo& campo, std::string_view texto);
// Appends an N date field as AAAAMMDD.
void por_data(std::string& saida, const Campo& campo, const TimeStamp& data);
// Appends an X field: the UTF-8 text folded to upper-case ASCII (accents dropped, any other
// character a '?'), trimmed, cut to the field's size and blank-padded.
void por_texto(std::string& saida, const Campo& campo, std::string_view texto);

// Text folded as por_texto does, without cutting or padding.
std::string ascii_maiusculo(std::string_view texto);

}  // namespace infofiscal::sintegra
