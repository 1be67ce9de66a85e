#include "fiscal/efd.h"

#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

#include "base/code_page.h"
#include "fiscal/efd_escrita.h"
#include "fiscal/efd_layout.h"
#include "informacao/informacao.h"
#include "base/error.h"

namespace infofiscal {

namespace {

using namespace efd;

// The note kinds of lines 04 (C01) and how the file books them.
struct Especie {
  int codigo;
  std::string_view nome;
  char ind_oper;  // 0 entry, 1 exit
  char ind_emit;  // 0 own document, 1 third party's
};
constexpr Especie kEspecies[] = {
    {1, "compra de equipamentos", '0', '1'},  {2, "compra de produtos", '0', '1'},
    {4, "compra de produtos de consumo", '0', '1'}, {9, "devolução de compra", '1', '0'},
    {10, "venda de produtos", '1', '0'},      {11, "transferência de produtos", '1', '0'},
    {12, "devolução de venda", '0', '0'},     {17, "venda de equipamentos", '1', '0'},
    {21, "número inutilizado", '1', '0'},
};

// C24 of line 04 -> COD_SIT.
std::string_view cod_sit(std::string_view situacao) {
  if (situacao == "0") return "00";
  if (situacao == "2") return "02";
  if (situacao == "5") return "05";
  return {};
}

// The item kinds of lines 12 (C01), 06 (C15) and 17 (C08) -> TIPO_ITEM.
std::string_view tipo_item(std::string_view especie) {
  if (especie == "1") return "08";  // equipment: fixed asset
  if (especie == "2") return "00";  // product: goods for resale
  if (especie == "3") return "07";  // consumption product: use and consumption
  return {};
}

std::string digitos(std::string_view s) {
  std::string out;
  for (const char c : s)
    if (c >= '0' && c <= '9') out.push_back(c);
  return out;
}

// A code of `n` digits: masks dropped, left-padded with zeros when shorter; empty stays empty.
std::string codigo(std::string_view s, std::size_t n) {
  std::string d = digitos(s);
  if (!d.empty() && d.size() < n) d.insert(0, n - d.size(), '0');
  return d;
}

// A participant or item code of the file: the kind and the code of the information file
// joined, so that a client and a supplier (or a product and an equipment) of the same
// number stay apart.
std::string chave(std::string_view especie, std::string_view codigo) {
  std::string k(especie);
  k.push_back('-');
  k.append(codigo);
  return k;
}

std::int64_t centesimos_de(const LinhaInformacao& l, int n) {
  const std::string_view s = l.texto(n);
  std::int64_t v = 0;
  if (s.empty() || ler_numero(s, 2, v)) return v;  // the usual "1234,50"
  return std::llround(l.valor(n) * 100);          // any other amount the reader accepts
}

// Codes the file refers to, in the order of first use, with their catalogue line (which
// stands for the code: one line per code).
struct Usados {
  std::vector<std::pair<std::string, const LinhaInformacao*>> ordem;
  std::unordered_set<const LinhaInformacao*> vistos;
  // True when the code is new.
  bool Usa(std::string_view codigo, const LinhaInformacao* linha) {
    if (!vistos.insert(linha).second) return false;
    ordem.emplace_back(codigo, linha);
    return true;
  }
};

struct Nota {
  const LinhaInformacao* l04;
  const LinhaInformacao* l05 = nullptr;
  std::vector<const LinhaInformacao*> itens;
};

struct Inventario {
  const LinhaInformacao* cabecalho;
  std::vector<const LinhaInformacao*> itens;
};

// One C190 group of a document: (CST, CFOP, rate) and its sums, in hundredths.
struct Grupo {
  std::string cst, cfop;
  std::int64_t aliq = 0, opr = 0, bc = 0, icms = 0, bc_st = 0, st = 0, red_bc = 0, ipi = 0;
};

// The sums of a document's items that C100 carries.
struct Totais {
  std::int64_t doc = 0, desc = 0, merc = 0, frt = 0, seg = 0, out = 0, bc = 0, icms = 0, bc_st = 0, st = 0, ipi = 0,
               pis = 0, cofins = 0;
};

class GeradorEfd {
 public:
  GeradorEfd(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso)
      : linhas_(ler_informacao(informacao)), info_(info), progresso_(progresso) {
    Indexa();
  }

  std::string Gera() {
    Info(fmt::format("SPED EFD ICMS/IPI: período de {} a {}", l01_->texto(2), l01_->texto(3)));
    if (l01_->texto(9) == "0") Info("Estabelecimento industrial (IND_ATIV 0): a apuração do IPI (E500) não é gerada");
    BlocoC();
    BlocoH();
    Bloco0();
    BlocoE();
    for (const char b : std::string_view("BDGK")) out_.Encerra(b);
    out_.Registro("1010", {texto("N"), texto("N"), texto("N"), texto("N"), texto("N"), texto("N"), texto("N"),
                           texto("N"), texto("N"), texto("N"), texto("N"), texto("N"), texto("N")});
    out_.Encerra('1');
    Info(fmt::format("SPED EFD ICMS/IPI: {} documentos escriturados", documentos_));
    return out_.Conclui();
  }

 private:
  void Info(const std::string& s) const {
    if (info_) info_(s);
  }

  [[noreturn]] static void Falha(const LinhaInformacao& l, const std::string& why) {
    throw Error(fmt::format("Linha {} do arquivo de informações: {}", l.numero, why));
  }

  // Notes with their party and items, inventories with their items, and the catalogues.
  void Indexa() {
    for (const auto& l : linhas_) {
      switch (l.tipo) {
        case 1: l01_ = l01_ ? l01_ : &l; break;
        case 2: l02_ = l02_ ? l02_ : &l; break;
        case 3: l03_ = l03_ ? l03_ : &l; break;
        case 4: notas_.push_back(Nota{&l, nullptr, {}}); break;
        case 5:
        case 6:
          if (notas_.empty()) Falha(l, fmt::format("linha {:02} fora de uma nota", l.tipo));
          if (l.tipo == 5) notas_.back().l05 = &l;
          else notas_.back().itens.push_back(&l);
          break;
        case 12: itens_.emplace(chave(l.texto(1), l.texto(2)), &l); break;
        case 13: unidades_.emplace(l.texto(2), &l); break;
        case 14: participantes_.emplace(chave(l.texto(1), l.texto(2)), &l); break;
        case 16:
        case 18: inventarios_.push_back(Inventario{&l, {}}); break;
        case 17:
        case 19:
          if (inventarios_.empty() || inventarios_.back().cabecalho->tipo != l.tipo - 1)
            Falha(l, fmt::format("linha {:02} sem a linha {:02} do inventário", l.tipo, l.tipo - 1));
          inventarios_.back().itens.push_back(&l);
          break;
        default: break;
      }
    }
    for (const auto& [tipo, linha] : {std::pair{1, l01_}, std::pair{2, l02_}, std::pair{3, l03_}})
      if (!linha) throw Error(fmt::format("Arquivo de informações sem a linha {:02}", tipo));
    const TimeStamp ini = l01_->data(2), fim = l01_->data(3);
    ano_ = ini.year;
    mes_ = ini.month;
    dt_ini_ = dia(ini);
    dt_fin_ = dia(fim);
    if (cod_ver(ano_).empty())
      Falha(*l01_, fmt::format("o leiaute do SPED EFD não tem versão para o ano {}", ano_));
  }

  // ---- block C

  void BlocoC() {
    const int total = static_cast<int>(notas_.size());
    int n = 0, inutilizados = 0;
    for (const Nota& nota : notas_) {
      if (progresso_) progresso_(++n, total);
      inutilizados += Documento(nota) ? 0 : 1;
    }
    if (inutilizados)
      Info(fmt::format("Números inutilizados não escriturados (a partir de {} não se escrituram): {}",
                       kAnoSemInutilizadas, inutilizados));
    out_.Encerra('C');
  }

  static std::string Descreve(const LinhaInformacao& h, const Especie& e) {
    return fmt::format("Nota {} de {} (linha {} do arquivo de informações)", h.texto(3), e.nome, h.numero);
  }

  // Books one note; false for a voided number of a period that no longer books them.
  bool Documento(const Nota& nota) {
    const LinhaInformacao& h = *nota.l04;
    const auto codigo_especie = h.inteiro(1);
    const Especie* e = nullptr;
    for (const auto& x : kEspecies)
      if (x.codigo == codigo_especie) e = &x;
    if (!e) Falha(h, fmt::format("espécie de nota {} desconhecida", codigo_especie));
    const std::string_view sit = cod_sit(h.texto(24));
    if (sit.empty()) Falha(h, fmt::format("situação '{}' da nota desconhecida", h.texto(24)));
    const std::string mod = codigo(h.texto(6), 2);
    if (!R("C100").campos[4].permite(mod)) {
      Info(Descreve(h, *e) + fmt::format(": modelo {} não se escritura no registro C100; não escriturada", h.texto(6)));
      return true;
    }
    if (sit == "05" && ano_ >= kAnoSemInutilizadas) return false;
    if (e->ind_emit == '1' && sit != "00") {
      Info(Descreve(h, *e) + ": cancelada, de terceiros; não escriturada");
      return true;
    }
    ++documentos_;
    std::string num = digitos(h.texto(3));
    num.erase(0, std::min(num.find_first_not_of('0'), num.size()));
    const Valor oper = texto(std::string_view(&e->ind_oper, 1)), emit = texto(std::string_view(&e->ind_emit, 1));
    if (sit != "00") {  // cancelled or voided: the reduced record, without children
      const Valor chv = sit == "05" || !modelo_eletronico(mod) ? vazio() : texto(h.texto(5));
      out_.Registro("C100", {oper, emit, vazio(), texto(mod), texto(sit), texto(h.texto(7)), texto(num), chv,
                             vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(),
                             vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio()});
      return true;
    }
    Regular(nota, *e, oper, emit, mod, num);
    return true;
  }

  const LinhaInformacao* Participante(const Nota& nota, const Especie& e) {
    const LinhaInformacao& h = *nota.l04;
    if (!nota.l05) throw Error(Descreve(h, e) + ": sem a linha 05 do participante");
    const std::string cod = chave(nota.l05->texto(3), nota.l05->texto(4));
    const auto it = participantes_.find(cod);
    if (it == participantes_.end())
      throw Error(Descreve(h, e) + fmt::format(": participante {} não consta das linhas 14", cod));
    participantes_usados_.Usa(cod, it->second);
    return it->second;
  }

  // `onde()` describes the user of the code, for the error.
  template <class Onde>
  void Item(const std::string& cod, const Onde& onde) {
    const auto it = itens_.find(cod);
    if (it == itens_.end()) throw Error(onde() + fmt::format(": item {} não consta das linhas 12", cod));
    if (itens_usados_.Usa(cod, it->second)) Unidade(it->second->texto(4), onde);
  }

  template <class Onde>
  void Unidade(std::string_view unid, const Onde& onde) {
    const auto it = unidades_.find(unid);
    if (it == unidades_.end()) throw Error(onde() + fmt::format(": unidade '{}' não consta das linhas 13", unid));
    unidades_usadas_.Usa(unid, it->second);
  }

  // The C190 groups and the C100 sums of a note's items.
  void Agrupa(const Nota& nota, const Especie& e, std::vector<Grupo>& grupos, Totais& t) const {
    for (const LinhaInformacao* i : nota.itens) {
      std::string cst = codigo(i->texto(16), 3), cfop = codigo(i->texto(17), 4);
      if (!cst_icms_valido(cst))
        throw Error(Descreve(*nota.l04, e) + fmt::format(": item {} com CST do ICMS '{}' inválido", i->texto(4), i->texto(16)));
      const int destino = cfop.size() == 4 ? apuracao_cfop(cfop) : 0;
      if (destino == 0)
        throw Error(Descreve(*nota.l04, e) + fmt::format(": item {} com CFOP '{}' inválido", i->texto(4), i->texto(17)));
      if ((destino > 0) != (e.ind_oper == '1') && cfop != "1605" && cfop != "5605")
        throw Error(Descreve(*nota.l04, e) + fmt::format(": item {} com CFOP {} de {} numa nota de {}", i->texto(4), cfop,
                                                         destino > 0 ? "saída" : "entrada",
                                                         e.ind_oper == '1' ? "saída" : "entrada"));
      const std::int64_t aliq = centesimos_de(*i, 19);
      Grupo* g = nullptr;
      for (auto& x : grupos)
        if (x.cst == cst && x.cfop == cfop && x.aliq == aliq) g = &x;
      if (!g) g = &grupos.emplace_back(Grupo{std::move(cst), std::move(cfop), aliq});
      const std::int64_t item = centesimos_de(*i, 8), desc = centesimos_de(*i, 9), frt = centesimos_de(*i, 10),
                         seg = centesimos_de(*i, 11), out = centesimos_de(*i, 12), bc = centesimos_de(*i, 18),
                         icms = centesimos_de(*i, 20), bc_st = centesimos_de(*i, 21), st = centesimos_de(*i, 22),
                         ipi = centesimos_de(*i, 26);
      const std::int64_t base_cheia = item - desc + frt + seg + out;
      const std::int64_t opr = base_cheia + st + ipi;
      const bool reducao = g->cst.ends_with("20") || g->cst.ends_with("70");
      g->opr += opr;
      g->bc += bc;
      g->icms += icms;
      g->bc_st += bc_st;
      g->st += st;
      g->ipi += ipi;
      g->red_bc += reducao && base_cheia > bc ? base_cheia - bc : 0;
      t.doc += opr;
      t.desc += desc;
      t.merc += item;
      t.frt += frt;
      t.seg += seg;
      t.out += out;
      t.bc += bc;
      t.icms += icms;
      t.bc_st += bc_st;
      t.st += st;
      t.ipi += ipi;
      t.pis += centesimos_de(*i, 32);
      t.cofins += centesimos_de(*i, 38);
    }
  }

  void Regular(const Nota& nota, const Especie& e, const Valor& oper, const Valor& emit, const std::string& mod,
               const std::string& num) {
    const LinhaInformacao& h = *nota.l04;
    if (nota.itens.empty()) throw Error(Descreve(h, e) + ": sem itens (linhas 06)");
    Participante(nota, e);
    std::vector<Grupo> grupos;
    Totais t;
    Agrupa(nota, e, grupos, t);
    if (std::llabs(centesimos_de(h, 10) - t.doc) > 1)
      Info(Descreve(h, e) + fmt::format(": total da nota {} difere da soma dos itens; escriturada a soma dos itens",
                                        h.texto(10)));
    const Dia dt_doc = dia(h.data(8));
    if (dt_doc > dt_fin_) throw Error(Descreve(h, e) + fmt::format(": emitida em {}, depois do período", h.texto(8)));
    if (modelo_eletronico(mod) && !chave_nfe_valida(digitos(h.texto(5))))
      throw Error(Descreve(h, e) + fmt::format(": chave de acesso '{}' inválida", h.texto(5)));
    const Dia dt_es = h.texto(9).empty() ? 0 : dia(h.data(9));
    // An entry or exit date outside the document's date and the period is left out (optional field).
    const Valor dt_e_s = dt_es >= dt_doc && dt_es <= dt_fin_ ? data(dt_es) : vazio();
    const std::string cod_part = chave(nota.l05->texto(3), nota.l05->texto(4));
    out_.Registro("C100", {oper, emit, texto(cod_part), texto(mod), texto("00"), texto(h.texto(7)), texto(num),
                           modelo_eletronico(mod) ? texto(h.texto(5)) : vazio(), data(dt_doc), dt_e_s, centesimos(t.doc), texto("2"), centesimos(t.desc),
                           centesimos(0), centesimos(t.merc), texto(t.frt ? "0" : "9"), centesimos(t.frt),
                           centesimos(t.seg), centesimos(t.out), centesimos(t.bc), centesimos(t.icms),
                           centesimos(t.bc_st), centesimos(t.st), centesimos(t.ipi), centesimos(t.pis),
                           centesimos(t.cofins), vazio(), vazio()});
    // Items (C170) only on third-party documents: an own NF-e's items are in its XML.
    if (e.ind_emit == '1')
      for (const LinhaInformacao* i : nota.itens) C170(*i, h, e);
    for (const Grupo& g : grupos) {
      out_.Registro("C190", {texto(g.cst), texto(g.cfop), centesimos(g.aliq), centesimos(g.opr), centesimos(g.bc),
                             centesimos(g.icms), centesimos(g.bc_st), centesimos(g.st), centesimos(g.red_bc),
                             centesimos(g.ipi), vazio()});
      const int destino = apuracao_cfop(g.cfop);
      if (destino > 0) debitos_ += g.icms;
      if (destino < 0) creditos_ += g.icms;
    }
  }

  // A quantity-based PIS/COFINS field: only when not zero.
  static Valor Opcional(const LinhaInformacao& i, int n) {
    const std::int64_t v = centesimos_de(i, n);
    return v ? centesimos(v) : vazio();
  }

  void C170(const LinhaInformacao& i, const LinhaInformacao& h, const Especie& e) {
    const std::string cod = chave(i.texto(15), i.texto(3));
    const auto onde = [&] { return Descreve(h, e) + fmt::format(", item {}", i.texto(4)); };
    Item(cod, onde);
    Unidade(i.texto(6), onde);
    const auto c = [&i](int n) { return centesimos(centesimos_de(i, n)); };
    const std::string cst = codigo(i.texto(16), 3), cfop = codigo(i.texto(17), 4), cst_ipi = codigo(i.texto(23), 2),
                      cst_pis = codigo(i.texto(27), 2), cst_cofins = codigo(i.texto(33), 2);
    out_.Registro("C170", {inteiro(i.inteiro(4)), texto(cod), vazio(), c(7), texto(i.texto(6)), c(8), c(9), texto("0"),
                           texto(cst), texto(cfop), vazio(), c(18), c(19), c(20), c(21), vazio(), c(22), vazio(),
                           texto(cst_ipi), vazio(), c(25), vazio(), c(26), texto(cst_pis), c(28), c(29), Opcional(i, 30),
                           Opcional(i, 31), c(32), texto(cst_cofins), c(34), c(35), Opcional(i, 36), Opcional(i, 37),
                           c(38), vazio(), vazio()});
  }

  // ---- block H

  void BlocoH() {
    for (const Inventario& inv : inventarios_) H005(inv);
    out_.Encerra('H');
  }

  void H005(const Inventario& inv) {
    const LinhaInformacao& h = *inv.cabecalho;
    const auto onde = [&h] { return fmt::format("Inventário da linha {} do arquivo de informações", h.numero); };
    if (h.texto(3).empty()) throw Error(onde() + ": sem data");
    struct Linha010 {
      std::string cod;
      const LinhaInformacao* linha;
      std::int64_t qtd, total;
    };
    std::vector<Linha010> itens;  // one per item: duplicates merged
    std::unordered_map<std::string, std::size_t> posicao;
    std::int64_t total = 0;
    for (const LinhaInformacao* l : inv.itens) {
      std::string cod = chave(l->texto(8), l->texto(3));
      Item(cod, onde);
      Unidade(l->texto(7), onde);
      const std::int64_t qtd = centesimos_de(*l, 4), valor = centesimos_de(*l, 6);
      total += valor;
      const auto [it, novo] = posicao.emplace(cod, itens.size());
      if (novo) itens.push_back({std::move(cod), l, qtd, valor});
      else itens[it->second].qtd += qtd, itens[it->second].total += valor;
    }
    out_.Registro("H005", {data(dia(h.data(3))), centesimos(total), texto("01")});
    for (const auto& i : itens)
      out_.Registro("H010", {texto(i.cod), texto(i.linha->texto(7)), centesimos(i.qtd),
                             centesimos(centesimos_de(*i.linha, 5)), centesimos(i.total), texto("0"), vazio(), vazio(),
                             vazio(), vazio()});
  }

  // ---- block 0

  void Bloco0() {
    const LinhaInformacao &r = *l01_, &e = *l02_, &c = *l03_;
    out_.Registro("0000", {texto(cod_ver(ano_)), texto(r.texto(6).empty() ? "0" : r.texto(6)), data(dt_ini_),
                           data(dt_fin_), texto(e.texto(2)), texto(e.texto(4)), vazio(), texto(e.texto(5)),
                           texto(digitos(e.texto(6))), texto(e.texto(18)), texto(e.texto(7)), texto(e.texto(8)),
                           texto(r.texto(8)), texto(r.texto(9))});
    out_.Registro("0001", {texto("0")});
    out_.Registro("0005", {texto(e.texto(3)), texto(e.texto(11)), texto(e.texto(10)), texto(e.texto(13)),
                           texto(e.texto(12)), texto(e.texto(14)), texto(digitos(e.texto(15))),
                           texto(digitos(e.texto(16))), texto(e.texto(17))});
    out_.Registro("0100", {texto(c.texto(2)), texto(c.texto(3)), texto(c.texto(4)), texto(c.texto(5)),
                           texto(c.texto(9)), texto(c.texto(6)), texto(c.texto(7)), texto(c.texto(8)),
                           texto(c.texto(10)), texto(digitos(c.texto(11))), texto(digitos(c.texto(12))),
                           texto(c.texto(13)), texto(c.texto(14))});
    for (const auto& [cod, l] : participantes_usados_.ordem) R0150(cod, *l);
    for (const auto& [unid, l] : unidades_usadas_.ordem)
      out_.Registro("0190", {texto(unid), texto(l->texto(3).empty() ? l->texto(2) : l->texto(3))});
    for (const auto& [cod, l] : itens_usados_.ordem) {
      const std::string ncm = digitos(l->texto(5)), cest = digitos(l->texto(6));
      out_.Registro("0200", {texto(cod), texto(l->texto(3)), vazio(), vazio(), texto(l->texto(4)),
                             texto(tipo_item(l->texto(1))), ncm.size() == 8 ? texto(ncm) : vazio(), vazio(), vazio(),
                             vazio(), vazio(), cest.size() == 7 && cest != "0000000" ? texto(cest) : vazio()});
    }
    out_.Fecha('0');
  }

  void R0150(const std::string& cod, const LinhaInformacao& p) {
    std::string pais = digitos(p.texto(11));
    if (pais.empty() || pais == "0") pais = kPaisBrasil;
    const bool brasil = pais == kPaisBrasil;
    const std::string doc = brasil ? digitos(p.texto(4)) : std::string();
    const bool cnpj = doc.size() == 14;
    out_.Registro("0150", {texto(cod), texto(p.texto(3)), texto(pais), cnpj ? texto(doc) : vazio(),
                           doc.size() == 11 ? texto(doc) : vazio(), cnpj ? texto(digitos(p.texto(5))) : vazio(),
                           brasil ? texto(p.texto(10)) : vazio(), vazio(), texto(p.texto(7)), texto(p.texto(8)), vazio(),
                           texto(p.texto(9))});
  }

  // ---- block E

  void BlocoE() {
    out_.Registro("E100", {data(dt_ini_), data(dt_fin_)});
    CamposE110 f{};
    f[2] = debitos_;
    f[6] = creditos_;
    completa_e110(f);
    out_.Registro("E110", {centesimos(f[2]), centesimos(f[3]), centesimos(f[4]), centesimos(f[5]), centesimos(f[6]),
                           centesimos(f[7]), centesimos(f[8]), centesimos(f[9]), centesimos(f[10]), centesimos(f[11]),
                           centesimos(f[12]), centesimos(f[13]), centesimos(f[14]), centesimos(f[15])});
    if (f[13] > 0) {
      const int mes = mes_ % 12 + 1, ano = mes_ == 12 ? ano_ + 1 : ano_;
      out_.Registro("E116", {texto("000"), centesimos(f[13]), data(ano * 10000 + mes * 100 + 10), texto("000"),
                             vazio(), vazio(), vazio(), vazio(), mes_ano(ano_, mes_)});
    }
    out_.Encerra('E');
  }

  std::vector<LinhaInformacao> linhas_;
  const TProcLinhaInfo& info_;
  const TProcProgresso& progresso_;
  const LinhaInformacao *l01_ = nullptr, *l02_ = nullptr, *l03_ = nullptr;
  std::vector<Nota> notas_;
  std::vector<Inventario> inventarios_;
  std::unordered_map<std::string, const LinhaInformacao*> itens_, participantes_;
  std::unordered_map<std::string_view, const LinhaInformacao*> unidades_;
  Usados participantes_usados_, itens_usados_, unidades_usadas_;
  int ano_ = 0, mes_ = 0, documentos_ = 0;
  Dia dt_ini_ = 0, dt_fin_ = 0;
  std::int64_t debitos_ = 0, creditos_ = 0;
  EscritorEfd out_;
};

}  // namespace

std::string gerar_efd(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso) {
  std::string arquivo = GeradorEfd(informacao, info, progresso).Gera();
  const auto achados = validar_efd(arquivo);
  if (achados.empty()) return arquivo;
  // The file is not written, so each finding shows the record it is about.
  std::vector<std::string_view> registros;
  for (std::size_t pos = 0; pos < arquivo.size();) {
    const std::size_t fim = arquivo.find("\r\n", pos);
    registros.push_back(std::string_view(arquivo).substr(pos, fim - pos));
    pos = fim + 2;
  }
  std::string msg = "Arquivo SPED EFD ICMS/IPI inválido; nada foi gravado:";
  for (const auto& a : achados) {
    const std::size_t n = std::stoul(a.substr(6));
    msg += "\n" + a;
    if (n >= 1 && n <= registros.size()) msg += " em " + windows1252_to_utf8(registros[n - 1]);
  }
  throw Error(msg);
}

}  // namespace infofiscal
