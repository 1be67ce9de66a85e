#include "fiscal/numeros_do_mes.h"

#include "base/code_page.h"
#include "fiscal/efd_escrita.h"
#include "fiscal/sintegra_layout.h"

namespace infofiscal {

namespace {

using efd::Dia;

// Where types 50 and 70 keep a document's figures.
struct CamposDoDocumento {
  const sintegra::Layout& layout;
  int data, cfop, valor, base, icms;
};
const CamposDoDocumento kDocumento50{sintegra::k50, sintegra::r50::Data, sintegra::r50::Cfop, sintegra::r50::Valor,
                                     sintegra::r50::Base, sintegra::r50::Icms};
const CamposDoDocumento kDocumento70{sintegra::k70, sintegra::r70::Data, sintegra::r70::Cfop, sintegra::r70::Valor,
                                     sintegra::r70::Base, sintegra::r70::Icms};

// A record's figures that did not read: the record is counted, its values left out.
struct Ilegivel {};

// A value field of the EFD ("1234,56", "0", "" for none).
std::int64_t valor_efd(std::string_view campo) {
  if (campo.empty()) return 0;
  std::int64_t v = 0;
  if (!efd::ler_numero(campo, 2, v)) throw Ilegivel{};
  return v;
}

// A number field of SINTEGRA: digits, its implied decimals kept (an amount is in hundredths).
std::int64_t numero_sintegra(std::string_view campo) {
  std::int64_t v = 0;
  if (!efd::ler_numero(campo, 0, v)) throw Ilegivel{};
  return v;
}

// AAAAMMDD as yyyymmdd; 0 when it is not a date.
Dia data_sintegra(std::string_view campo) {
  std::int64_t v = 0;
  if (!efd::ler_numero(campo, 0, v) || campo.size() != 8) return 0;
  const int ano = static_cast<int>(v / 10000), mes = static_cast<int>(v / 100 % 100), dia = static_cast<int>(v % 100);
  return mes >= 1 && mes <= 12 && dia >= 1 && dia <= days_in_month(mes, ano) ? static_cast<Dia>(v) : 0;
}

std::string aparado(std::string_view s) {
  const auto fim = s.find_last_not_of(' ');
  return std::string(fim == std::string_view::npos ? std::string_view() : s.substr(0, fim + 1));
}

// Whether a CFOP is of an entry (1, 2, 3) or an exit (5, 6, 7): '0' entry, '1' exit, else 0.
char operacao_do_cfop(std::string_view cfop) {
  if (cfop.empty()) return 0;
  if (cfop[0] >= '1' && cfop[0] <= '3') return '0';
  if (cfop[0] >= '5' && cfop[0] <= '7') return '1';
  return 0;
}

}  // namespace

LeitorDeNumeros::LeitorDeNumeros(int tipo) {
  n_.tipo = tipo;
  n_.cst_com_icms = tipo == 2;
}

void LeitorDeNumeros::le(std::string_view pedaco) {
  divisor_.le(pedaco, [this](std::string_view linha, bool) { registro(linha); });
}

NumerosDoMes LeitorDeNumeros::conclui() {
  divisor_.fim([this](std::string_view linha, bool) { registro(linha); });
  if (n_.tipo == 1) {
    n_.apuracao[2] = debitos_;
    n_.apuracao[6] = creditos_;
    efd::completa_e110(n_.apuracao);
  }
  return std::move(n_);
}

void LeitorDeNumeros::registro(std::string_view linha) {
  if (!linha.empty() && linha.back() == '\r') linha.remove_suffix(1);
  try {
    if (n_.tipo == 2)
      efd(linha);
    else
      sintegra(linha);
  } catch (const Ilegivel&) {
    ++n_.ilegiveis;
  }
}

void LeitorDeNumeros::conta(std::string_view tipo) {
  ++n_.total_de_registros;
  // Consecutive records are mostly of one type.
  if (!n_.registros.empty() && n_.registros.back().first == tipo) {
    ++n_.registros.back().second;
    return;
  }
  const auto [it, novo] = posicao_.try_emplace(std::string(tipo), n_.registros.size());
  if (novo) n_.registros.emplace_back(tipo, 0);
  ++n_.registros[it->second].second;
}

void LeitorDeNumeros::documento(char oper, Dia data, std::int64_t valor) {
  MovimentoDoDia* m = &n_.fora_do_periodo;
  if (data / 100 == n_.inicio / 100 && data >= n_.inicio && data <= n_.fim) m = &n_.por_dia[data % 100];
  (oper == '0' ? m->entradas : m->saidas) += valor;
}

void LeitorDeNumeros::analitico(std::string_view cst, std::string_view cfop, std::int64_t valor, std::int64_t base,
                                std::int64_t icms) {
  for (auto* t : {&n_.por_cfop[std::string(cfop)], cst.empty() ? nullptr : &n_.por_cst[std::string(cst)]}) {
    if (!t) continue;
    ++t->registros;
    t->valor += valor;
    t->base += base;
    t->icms += icms;
  }
}

// An EFD record: |REG|field|...|, fields numbered as in the layout (REG is 1).
void LeitorDeNumeros::efd(std::string_view linha) {
  campos_.clear();
  for (std::size_t pos = 0; pos < linha.size();) {
    const std::size_t barra = linha.find('|', pos);
    campos_.push_back(linha.substr(pos, barra - pos));
    if (barra == std::string_view::npos) break;
    pos = barra + 1;
  }
  if (campos_.size() < 3) return conta("?");
  const std::string_view reg = campos_[1];
  conta(reg);
  const auto campo = [this](std::size_t n) { return n < campos_.size() ? campos_[n] : std::string_view(); };
  if (reg == "0000") {
    n_.inicio = efd::ler_data(campo(4));
    n_.fim = efd::ler_data(campo(5));
    n_.empresa = windows1252_to_utf8(campo(6));
    n_.cnpj = std::string(campo(7));
  } else if (reg == "C100" || reg == "D100") {
    // C100: IND_OPER 2, DT_DOC 10, DT_E_S 11, VL_DOC 12; D100: DT_DOC 11, DT_A_P 12, VL_DOC 15.
    // A cancelled or voided document has no value.
    const bool c = reg == "C100";
    const std::string_view oper = campo(2), vl_doc = campo(c ? 12 : 15);
    if (vl_doc.empty()) return;
    const std::string_view entrada = campo(c ? 11 : 12);
    const Dia data = efd::ler_data(oper == "0" && !entrada.empty() ? entrada : campo(c ? 10 : 11));
    documento(oper == "0" ? '0' : '1', data, valor_efd(vl_doc));
  } else if (reg == "C190" || reg == "D190") {
    // CST_ICMS 2, CFOP 3, VL_OPR 5, VL_BC_ICMS 6, VL_ICMS 7 in both.
    analitico(campo(2), campo(3), valor_efd(campo(5)), valor_efd(campo(6)), valor_efd(campo(7)));
  } else if (reg == "E110") {
    efd::CamposE110 lidos{};
    for (int f = 2; f <= 15; ++f) lidos[f] = valor_efd(campo(f));
    for (int f = 2; f <= 15; ++f) n_.apuracao[f] += lidos[f];
  } else if (reg == "9999") {
    n_.completo = true;
  }
}

// A SINTEGRA record: 126 characters, its type in the first two.
void LeitorDeNumeros::sintegra(std::string_view r) {
  using namespace sintegra;
  conta(r.substr(0, 2));
  if (static_cast<int>(r.size()) != kTamanhoRegistro) throw Ilegivel{};
  const std::string_view tipo = r.substr(0, 2);
  if (tipo == "10") {
    n_.cnpj = std::string(k10.texto(r, r10::Cnpj));
    n_.empresa = aparado(k10.texto(r, r10::Nome));
    n_.inicio = data_sintegra(k10.texto(r, r10::DataInicial));
    n_.fim = data_sintegra(k10.texto(r, r10::DataFinal));
  } else if (tipo == "50" || tipo == "70") {
    const CamposDoDocumento& c = tipo == "50" ? kDocumento50 : kDocumento70;
    const std::string_view cfop = c.layout.texto(r, c.cfop);
    const std::int64_t valor = numero_sintegra(c.layout.texto(r, c.valor));
    const std::int64_t icms = numero_sintegra(c.layout.texto(r, c.icms));
    analitico({}, cfop, valor, numero_sintegra(c.layout.texto(r, c.base)), icms);
    // The CFOP rule of E110's debits (02) and credits (06).
    if (const int destino = efd::apuracao_cfop(cfop); destino > 0)
      debitos_ += icms;
    else if (destino < 0)
      creditos_ += icms;
    if (const char oper = operacao_do_cfop(cfop); oper != 0)
      documento(oper, data_sintegra(c.layout.texto(r, c.data)), valor);
  } else if (tipo == "54") {
    // Items 991-999 (freight, insurance, other expenses) have no CST: they stay out of its totals.
    const std::string cst = aparado(k54.texto(r, r54::Cst));
    if (cst.empty()) return;
    const std::int64_t valor =
        numero_sintegra(k54.texto(r, r54::ValorProduto)) - numero_sintegra(k54.texto(r, r54::Desconto));
    auto& t = n_.por_cst[cst];
    ++t.registros;
    t.valor += valor;
    t.base += numero_sintegra(k54.texto(r, r54::Base));
  } else if (tipo == "90") {
    ++registros90_;
    n_.completo = registros90_ == r.back() - '0';
  }
}

}  // namespace infofiscal
