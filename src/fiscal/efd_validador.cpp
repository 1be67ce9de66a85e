// validar_efd: every rule of the layout that the file alone can show, read from the layout
// table (fields, sizes, decimals, codes, hierarchy) and from the rules of the apuração.
#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

#include "fiscal/efd_validador.h"

#include "fiscal/efd.h"
#include "fiscal/efd_escrita.h"
#include "fiscal/efd_layout.h"
#include "fiscal/identidade.h"
#include "fiscal/inscricao_estadual.h"
#include "base/value.h"

namespace infofiscal::efd {

namespace {

// Maps and sets of texts the validator keeps, looked up by views of the line being read.
struct HashTexto {
  using is_transparent = void;
  std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
};
template <class V>
using MapaDeTextos = std::unordered_map<std::string, V, HashTexto, std::equal_to<>>;
using ConjuntoDeTextos = std::unordered_set<std::string, HashTexto, std::equal_to<>>;

Dia dia_seguinte(Dia d) {
  const int a = d / 10000, m = d / 100 % 100, dd = d % 100;
  if (dd < days_in_month(m, a)) return d + 1;
  return m == 12 ? (a + 1) * 10000 + 101 : a * 10000 + (m + 1) * 100 + 1;
}

// A record as read: its register and its fields (0 = REG).
struct Lido {
  const Registro* r = nullptr;
  int linha = 0;
  std::vector<std::string_view> campos;
};

// One open parent of the hierarchy and the counts of its children.
struct Quadro {
  const Registro* r;
  int linha;
  std::array<int, kMaxRegistros> filhos{};
};

// The C100 (or D100) being read and what its children add up to.
struct Documento {
  std::string_view reg = "C100", filho = "C190";
  int linha = 0;
  bool reduzido = false, com_c170 = false, proibe_c170 = false, exige_c170 = false;
  char ind_oper = 0;
  std::string sit;
  std::array<std::int64_t, 6> c100{}, c190{};  // VL_DOC/VL_OPR, BC, ICMS, BC_ST, ST, IPI
  std::unordered_map<std::string, std::array<std::int64_t, 5>> c170, c190_grupo;
  ConjuntoDeTextos num_itens;
  std::vector<std::pair<std::string, int>> grupos;  // C190 key, line
  int c190s = 0;
};

}  // namespace

class ValidadorEfd::Estado {
 public:
  void le(std::string_view pedaco) {
    divisor_.le(pedaco, [this](std::string_view linha, bool quebra) { quebrada(linha, quebra); });
  }

  std::vector<std::string> conclui() {
    divisor_.fim([this](std::string_view linha, bool quebra) { quebrada(linha, quebra); });
    fim();
    return std::move(achados_);
  }

 private:
  // A line as the file cut it at LF.
  void quebrada(std::string_view linha, bool quebra) {
    ++linha_;
    if (!quebra || linha.empty() || linha.back() != '\r') achado("linha sem CR LF no fim");
    else linha.remove_suffix(1);
    le_linha(linha);
  }

  template <class... A>
  void achado(fmt::format_string<A...> f, A&&... a) {
    achado(linha_, fmt::format(f, std::forward<A>(a)...));
  }
  void achado(int linha, const std::string& s) { achados_.push_back(fmt::format("Linha {}: {}", linha, s)); }

  std::string_view campo(int i) const { return atual_.campos[i]; }
  std::int64_t valor(int i) const {
    std::int64_t v = 0;
    return ler_numero(campo(i), 2, v) ? v : 0;
  }
  std::string_view tipo_do_registro() const { return atual_.r->reg; }

  void le_linha(std::string_view linha) {
    if (depois_9999_) achado("registro depois do 9999");
    if (linha.size() < 2 || linha.front() != '|' || linha.back() != '|') {
      achado("a linha deve começar e terminar com '|'");
      return;
    }
    // ISO-8859-1 has no character at the control codes, DEL and 0x80-0x9F.
    const auto fora = std::find_if(linha.begin(), linha.end(), [](char ch) {
      const auto c = static_cast<unsigned char>(ch);
      return c < 0x20 || (c >= 0x7F && c < 0xA0);
    });
    if (fora != linha.end())
      achado("byte 0x{:02X} na posição {}, fora da página de código ISO-8859-1", static_cast<unsigned char>(*fora),
             fora - linha.begin() + 1);
    separa_campos(linha, atual_.campos);
    atual_.linha = linha_;
    atual_.r = registro(atual_.campos[0]);
    if (!atual_.r) {
      achado("registro '{}' desconhecido", atual_.campos[0]);
      return;
    }
    const Registro& r = *atual_.r;
    if (linha_ == 1 && r.reg != "0000") achado("o arquivo deve começar pelo registro 0000");
    ++por_tipo_[r.indice()];
    ++por_bloco_[kBlocos.find(r.reg == "0000" ? '0' : r.reg == "9999" ? '9' : r.bloco())];
    hierarquia(r);
    if (atual_.campos.size() != r.campos.size()) {
      if (r.abertura()) ind_mov_ = {};  // unknown: the block's content is not judged by it
      if (r.reg == "C100") {
        doc_ = Documento{};
        doc_.reduzido = true;  // its children are not checked against it
      }
      achado("{} com {} campos; o leiaute tem {}", r.reg, atual_.campos.size(), r.campos.size());
      return;
    }
    for (std::size_t i = 1; i < r.campos.size(); ++i) confere_formato(r.campos[i], atual_.campos[i]);
    regras(r);
  }

  // ---- fields

  void confere_formato(const Campo& c, std::string_view v) {
    const std::string_view reg = tipo_do_registro();
    if (v.empty()) {
      if (c.obrigatorio) achado("{} campo {} obrigatório vazio", reg, c.nome);
      return;
    }
    if (c.tipo == 'C') {
      if (v.front() == ' ' || v.back() == ' ') achado("{} campo {} com brancos nas pontas", reg, c.nome);
    } else if (c.tipo == 'D') {
      if (!ler_data(v)) achado("{} campo {} '{}' não é uma data ddmmaaaa", reg, c.nome, v);
    } else if (c.tipo == 'M') {
      if (v.size() != 6 || !so_digitos(v) || v.substr(0, 2) < "01" || v.substr(0, 2) > "12")
        achado("{} campo {} '{}' não é um mês mmaaaa", reg, c.nome, v);
    } else if (c.exato) {
      if (!so_digitos(v)) achado("{} campo {} '{}' deve ter só dígitos", reg, c.nome, v);
    } else {
      std::int64_t x = 0;
      if (!ler_numero(v, c.decimais, x))
        achado("{} campo {} '{}' não é um número com até {} decimais", reg, c.nome, v, c.decimais);
      else if (c.valor() && v.size() > 1 && v[0] == '0' && v[1] != ',')
        achado("{} campo {} '{}' com zeros à esquerda", reg, c.nome, v);
    }
    const int limite = c.tamanho ? c.tamanho : c.tipo == 'C' ? 255 : 0;
    if (c.exato && static_cast<int>(v.size()) != c.tamanho)
      achado("{} campo {} '{}' deve ter exatamente {} caracteres", reg, c.nome, v, c.tamanho);
    else if (!c.exato && limite && static_cast<int>(v.size()) > limite)
      achado("{} campo {} com {} caracteres; o máximo é {}", reg, c.nome, v.size(), limite);
    if (!c.permite(v)) achado("{} campo {} '{}' fora dos valores permitidos ({})", reg, c.nome, v, c.valores);
  }

  // ---- hierarchy, order and occurrences

  void hierarquia(const Registro& r) {
    const int nivel = r.nivel;
    while (static_cast<int>(pilha_.size()) > nivel) fecha();
    if (nivel == 0) {
      if (r.reg == "9999") depois_9999_ = true;
      else if (linha_ != 1) achado("0000 deve ser a primeira linha");
    } else if (static_cast<int>(pilha_.size()) < nivel ||
               (nivel >= 2 && pilha_[nivel - 1].r->reg != r.pai)) {
      achado("{} fora do seu registro pai {}", r.reg, nivel >= 2 ? r.pai : "0000");
      return;
    } else {
      if (r.indice() < ultimo_[nivel]) achado("{} fora de ordem", r.reg);
      ultimo_[nivel] = r.indice();
      if (nivel >= 2) ++pilha_.back().filhos[r.indice()];
    }
    pilha_.push_back({&r, linha_});
    if (nivel + 1 < static_cast<int>(ultimo_.size())) ultimo_[nivel + 1] = 0;
  }

  // Closes the innermost open record: its children's counts and the checks that need them all.
  void fecha() {
    const Quadro q = pilha_.back();
    pilha_.pop_back();
    for (const Registro& filho : registros())
      if (filho.nivel >= 2 && filho.pai == q.r->reg) {
        const int n = q.filhos[filho.indice()];
        if (n < filho.minimo) achado(q.linha, fmt::format("{} sem o registro {} obrigatório", q.r->reg, filho.reg));
        if (filho.maximo && n > filho.maximo)
          achado(q.linha, fmt::format("{} com {} registros {}; o leiaute permite {}", q.r->reg, n, filho.reg, filho.maximo));
      }
    if (q.r->reg == "C100" || q.r->reg == "D100") fecha_documento();
    if (q.r->reg == "E110") fecha_e110(q.linha);
    if (q.r->reg == "H005") fecha_h005(q.linha);
  }

  // ---- the rules of each register

  void regras(const Registro& r) {
    const std::string_view reg = r.reg;
    if (reg == "0000") r0000();
    else if (reg == "0150") r0150();
    else if (reg == "0190") define(unidades_, campo(1), "0190 UNID");
    else if (reg == "0200") r0200();
    else if (reg == "C100") rc100();
    else if (reg == "C170") rc170();
    else if (reg == "C190") rc190();
    else if (reg == "D100") rd100();
    else if (reg == "D190") rd190();
    else if (reg == "E100") re100();
    else if (reg == "E110") re110();
    else if (reg == "E116") e116_ += valor(2);
    else if (reg == "H005") rh005();
    else if (reg == "H010") rh010();
    else if (reg == "9900") nove_mil_.push_back({std::string(campo(1)), valor(2) / 100, linha_});
    else if (reg == "9999") r9999();
    if (r.abertura()) ind_mov_ = campo(1);
    if (r.fechamento()) fechamento(r);
  }

  struct Definido {
    int linha;
    bool usado = false;
    std::string extra = {};
    std::string_view uf = {};  // of a participant, by its municipality
  };
  using Tabela = MapaDeTextos<Definido>;

  // False (and a finding) when the code was defined already.
  bool define(Tabela& t, std::string_view codigo, std::string_view nome, std::string_view extra = {}) {
    if (t.try_emplace(std::string(codigo), Definido{linha_, false, std::string(extra)}).second) return true;
    achado("{} '{}' repetido", nome, codigo);
    return false;
  }
  // The definition of a code that a record uses; nullptr (and a finding) when missing.
  Definido* usa(Tabela& t, std::string_view codigo, std::string_view campo, std::string_view tabela) {
    const auto it = t.find(codigo);
    if (it == t.end()) {
      achado("{} {} '{}' não consta do registro {}", tipo_do_registro(), campo, codigo, tabela);
      return nullptr;
    }
    it->second.usado = true;
    return &it->second;
  }

  void r0000() {
    dt_ini_ = ler_data(campo(3));
    dt_fin_ = ler_data(campo(4));
    proximo_e100_ = dt_ini_;
    if (dt_ini_ && dt_fin_) {
      const int a = dt_ini_ / 10000, m = dt_ini_ / 100 % 100;
      if (dt_fin_ / 100 != dt_ini_ / 100 || dt_fin_ < dt_ini_)
        achado("0000 DT_INI e DT_FIN devem estar no mesmo mês");
      if (campo(1) != cod_ver(a)) achado("0000 COD_VER '{}' não é o do período {:02}/{} ('{}')", campo(1), m, a, cod_ver(a));
    }
    confere_documento(campo(6), campo(7), "0000");
    confere_ie(campo(9), campo(8), "0000");
    cnpj_proprio_ = campo(6);
    uf_propria_ = campo(8);
  }

  void confere_documento(std::string_view cnpj, std::string_view cpf, std::string_view reg) {
    if (cnpj.empty() == cpf.empty()) achado("{} deve ter CNPJ ou CPF, e só um deles", reg);
    if (const auto v = identidade::verificar_cnpj(cnpj); !cnpj.empty() && !v)
      achado("{} CNPJ '{}': {}", reg, cnpj, v.motivo);
    if (const auto v = identidade::verificar_cpf(cpf); !cpf.empty() && !v)
      achado("{} CPF '{}': {}", reg, cpf, v.motivo);
  }

  // An IE (empty: none) by the rule of the state `uf`.
  void confere_ie(std::string_view ie, std::string_view uf, std::string_view reg) {
    if (ie.empty()) return;
    if (const auto v = identidade::verificar_inscricao_estadual(uf, ie); !v)
      achado("{} IE '{}' ({}): {}", reg, ie, uf, v.motivo);
  }

  void r0150() {
    const std::string_view uf = identidade::uf_do_municipio(campo(7));
    if (define(participantes_, campo(1), "0150 COD_PART", campo(4)))
      participantes_.find(campo(1))->second.uf = uf;
    if (campo(3) == kPaisBrasil) {
      confere_documento(campo(4), campo(5), "0150");
      if (campo(7).empty()) achado("0150 de participante do Brasil sem COD_MUN");
      else if (uf.empty()) achado("0150 COD_MUN '{}' não é um município de uma UF", campo(7));
      if (!campo(5).empty() && !campo(6).empty()) achado("0150 de pessoa física (CPF) com IE '{}'", campo(6));
      else if (!uf.empty()) confere_ie(campo(6), uf, "0150");
    } else if (!campo(4).empty() || !campo(5).empty() || !campo(6).empty() || !campo(7).empty()) {
      achado("0150 de participante do exterior com CNPJ, CPF, IE ou COD_MUN");
    }
  }

  void r0200() {
    define(itens_, campo(1), "0200 COD_ITEM", campo(5));
    usa(unidades_, campo(5), "UNID_INV", "0190");
  }

  bool no_periodo(Dia d) const { return d >= dt_ini_ && d <= dt_fin_; }

  void rc100() {
    doc_ = Documento{};
    doc_.linha = linha_;
    doc_.ind_oper = campo(1).empty() ? 0 : campo(1)[0];
    doc_.sit = campo(5);
    const std::string_view mod = campo(4);
    doc_.reduzido = doc_.sit == "02" || doc_.sit == "03" || doc_.sit == "04" || doc_.sit == "05";
    doc_.proibe_c170 = mod == "65" || (campo(2) == "0" && mod == "55");
    doc_.exige_c170 = campo(2) == "1";  // a third party's document is booked item by item
    if (campo(2) == "1" && campo(1) != "0") achado("C100 de terceiros (IND_EMIT 1) deve ser de entrada (IND_OPER 0)");
    if ((doc_.sit == "04" || doc_.sit == "05") && dt_ini_ / 10000 >= kAnoSemInutilizadas)
      achado("C100 de COD_SIT {} não se escritura a partir de {}", doc_.sit, kAnoSemInutilizadas);
    std::string chave;
    for (int i = 1; i <= 8; ++i) (chave += campo(i)) += '|';
    if (!chaves_c100_.insert(chave).second) achado("C100 repetido (mesmo participante, modelo, situação, série e número)");
    if (doc_.reduzido) {
      if (!campo(3).empty()) achado("C100 de COD_SIT {} com o campo COD_PART preenchido", doc_.sit);
      if (doc_.sit == "05" && !campo(8).empty()) achado("C100 de COD_SIT 05 com o campo CHV_NFE preenchido");
      if (identidade::verificar_chave(campo(8))) confere_chave(cnpj_proprio_, uf_propria_);
      for (std::size_t i = 9; i < atual_.campos.size(); ++i)
        if (!campo(static_cast<int>(i)).empty())
          achado("C100 de COD_SIT {} com o campo {} preenchido", doc_.sit, atual_.r->campos[i].nome);
      return;
    }
    for (const int i : {9, 11, 12, 16})
      if (campo(i).empty()) achado("C100 campo {} obrigatório vazio", atual_.r->campos[i].nome);
    if (mod != "65" && campo(3).empty()) achado("C100 campo COD_PART obrigatório vazio");
    if (mod == "65" && !campo(3).empty()) achado("C100 de NFC-e (65) com COD_PART");
    if (mod == "65" && (campo(1) != "1" || campo(2) != "0")) achado("C100 de NFC-e (65) que não é saída própria");
    const Definido* participante = campo(3).empty() ? nullptr : usa(participantes_, campo(3), "COD_PART", "0150");
    const identidade::Verificacao chv = identidade::verificar_chave(campo(8));
    if (modelo_eletronico(mod) && campo(8).empty())
      achado("C100 CHV_NFE ausente");
    else if (modelo_eletronico(mod) && !chv)
      achado("C100 CHV_NFE '{}': {}", campo(8), chv.motivo);
    else if (!campo(8).empty() && !modelo_eletronico(mod))
      achado("C100 de modelo {} com CHV_NFE", mod);
    else if (!campo(8).empty() && campo(2) == "0")
      confere_chave(cnpj_proprio_, uf_propria_);
    else if (!campo(8).empty())
      confere_chave(participante ? std::string_view(participante->extra) : std::string_view(),
                    participante ? participante->uf : std::string_view());
    const Dia doc = ler_data(campo(9)), es = ler_data(campo(10));
    if (doc && doc > dt_fin_) achado("C100 DT_DOC {} depois do fim do período", campo(9));
    if (es && (es < doc || es > dt_fin_)) achado("C100 DT_E_S {} fora de DT_DOC a fim do período", campo(10));
    doc_.c100 = {valor(11), valor(20), valor(21), valor(22), valor(23), valor(24)};
  }

  // The access key repeats the issuer's state code (positions 1-2), CNPJ (7-20), the model
  // (21-22), the series (23-25) and the number (26-34) of the document. An issuer without a CNPJ
  // or a known state is not compared on that part.
  void confere_chave(std::string_view cnpj_emitente, std::string_view uf_emitente) {
    const std::string_view chave = campo(8);
    const auto sem_zeros = [](std::string_view v) { return v.substr(std::min(v.find_first_not_of('0'), v.size())); };
    const std::pair<std::string_view, bool> partes[] = {
        {"código da UF do emitente",
         uf_emitente.empty() || identidade::uf_do_codigo(chave.substr(0, 2)) == uf_emitente},
        {"CNPJ do emitente", cnpj_emitente.empty() || chave.substr(6, 14) == cnpj_emitente},
        {"COD_MOD", chave.substr(20, 2) == campo(4)},
        {"SER", sem_zeros(chave.substr(22, 3)) == sem_zeros(campo(6))},
        {"NUM_DOC", sem_zeros(chave.substr(25, 9)) == sem_zeros(campo(7))},
    };
    for (const auto& [parte, confere] : partes)
      if (!confere) achado("C100 CHV_NFE não confere com o {}", parte);
  }

  bool confere_cfop(std::string_view cfop) {
    if (!apuracao_cfop(cfop)) {
      achado("{} CFOP '{}' inválido", tipo_do_registro(), cfop);
      return false;
    }
    const bool entrada = cfop[0] >= '1' && cfop[0] <= '3';
    if ((doc_.ind_oper == '0') != entrada) achado("{} CFOP {} incompatível com IND_OPER {}", tipo_do_registro(), cfop, doc_.ind_oper);
    return true;
  }

  void confere_cst(std::string_view cst) {
    if (!cst_icms_valido(cst)) achado("{} CST_ICMS '{}' inválido", tipo_do_registro(), cst);
  }

  // The key of a C190 group: CST, CFOP and rate.
  static std::string chave_do_grupo(std::string_view cst, std::string_view cfop, std::int64_t aliq) {
    std::string k(cst);
    ((k += '|') += cfop) += '|';
    return k += std::to_string(aliq);
  }

  bool filho_valido() {
    if (doc_.reduzido) achado("{} sob C100 de COD_SIT {}, que não tem registros filhos", tipo_do_registro(), doc_.sit);
    return !doc_.reduzido;
  }

  void rc170() {
    if (!filho_valido()) return;
    doc_.com_c170 = true;
    if (doc_.proibe_c170) achado("C170 sob C100 de NF-e própria ou NFC-e");
    if (!doc_.num_itens.emplace(campo(1)).second) achado("C170 NUM_ITEM {} repetido no documento", campo(1));
    const Definido* item = usa(itens_, campo(2), "COD_ITEM", "0200");
    usa(unidades_, campo(5), "UNID", "0190");
    if (item && item->extra != campo(5))
      achado("C170 UNID '{}' difere da UNID_INV '{}' do item (exige 0220, não gerado)", campo(5), item->extra);
    confere_cst(campo(9));
    confere_cfop(campo(10));
    auto& s = doc_.c170[chave_do_grupo(campo(9), campo(10), valor(13))];
    for (const auto& [i, campo] : {std::pair{0, 12}, {1, 14}, {2, 15}, {3, 17}, {4, 23}}) s[i] += valor(campo);
  }

  void rc190() {
    if (!filho_valido()) return;
    ++doc_.c190s;
    confere_cst(campo(1));
    const bool cfop = confere_cfop(campo(2));
    std::string chave = chave_do_grupo(campo(1), campo(2), valor(3));
    if (doc_.c190_grupo.count(chave)) achado("C190 repetido no documento (mesmos CST, CFOP e alíquota)");
    doc_.c190_grupo[chave] = {valor(5), valor(6), valor(7), valor(8), valor(10)};
    doc_.grupos.emplace_back(std::move(chave), linha_);
    const std::array<std::int64_t, 6> v{valor(4), valor(5), valor(6), valor(7), valor(8), valor(10)};
    for (std::size_t i = 0; i < v.size(); ++i) doc_.c190[i] += v[i];
    apura(cfop, 6);
  }

  // The ICMS of a C190 or D190 (field `icms`) into the debits or credits of E110; an entry the
  // law gives no credit for must carry none.
  void apura(bool cfop_valido, int icms) {
    const int destino = cfop_valido ? apuracao_cfop(campo(2)) : 0;
    const bool extemporaneo = doc_.sit == "01" || doc_.sit == "07";
    if (destino > 0 && !extemporaneo) debitos_ += valor(icms);
    if (destino < 0) creditos_ += valor(icms);
    const SemCredito s = destino < 0 ? sem_credito(campo(2)) : SemCredito::Nao;
    if (s != SemCredito::Nao && (valor(icms) || valor(icms - 1) || valor(3)))
      achado("{} de CFOP {} com ICMS creditado: entrada {} sem direito a crédito no documento", tipo_do_registro(), campo(2),
             s == SemCredito::UsoConsumo ? "para uso e consumo" : "para o ativo imobilizado (crédito só pelo CIAP)");
  }

  void rd100() {
    doc_ = Documento{};
    doc_.reg = "D100";
    doc_.filho = "D190";
    doc_.linha = linha_;
    doc_.ind_oper = campo(1).empty() ? 0 : campo(1)[0];
    doc_.sit = campo(5);
    const std::string_view mod = campo(4);
    std::string chave = "D100|";
    for (int i = 1; i <= 8; ++i) (chave += campo(i)) += '|';
    if (!chaves_c100_.insert(chave).second) achado("D100 repetido (mesmo participante, modelo, situação, série e número)");
    const Definido* participante = campo(3).empty() ? nullptr : usa(participantes_, campo(3), "COD_PART", "0150");
    if (modelo_transporte(mod) || mod == "63") {
      const identidade::Verificacao v = identidade::verificar_chave(campo(9));
      if (!v) achado("D100 CHV_CTE '{}': {}", campo(9), v.motivo);
      else confere_chave_cte(campo(2) == "0" ? cnpj_proprio_ : participante ? participante->extra : std::string_view());
    } else if (!campo(9).empty()) {
      achado("D100 de modelo {} com CHV_CTE", mod);
    }
    const Dia doc = ler_data(campo(10)), ap = ler_data(campo(11));
    if (doc && doc > dt_fin_) achado("D100 DT_DOC {} depois do fim do período", campo(10));
    if (ap && (ap < doc || ap > dt_fin_)) achado("D100 DT_A_P {} fora de DT_DOC a fim do período", campo(11));
    doc_.c100 = {valor(14), valor(18), valor(19), 0, 0, 0};
  }

  // A CT-e key repeats the issuer's CNPJ, the model, the series and the number of the document.
  void confere_chave_cte(std::string_view cnpj_emitente) {
    const identidade::ChaveDeAcesso k = identidade::partes_da_chave(campo(9));
    const auto sem_zeros = [](std::string_view v) { return v.substr(std::min(v.find_first_not_of('0'), v.size())); };
    const std::pair<std::string_view, bool> partes[] = {
        {"CNPJ do emitente", cnpj_emitente.empty() || k.cnpj == cnpj_emitente},
        {"COD_MOD", k.modelo == campo(4)},
        {"SER", sem_zeros(k.serie) == sem_zeros(campo(6))},
        {"NUM_DOC", sem_zeros(k.numero) == sem_zeros(campo(8))},
    };
    for (const auto& [parte, confere] : partes)
      if (!confere) achado("D100 CHV_CTE não confere com o {}", parte);
  }

  void rd190() {
    ++doc_.c190s;
    confere_cst(campo(1));
    const bool cfop = confere_cfop(campo(2));
    std::string chave = chave_do_grupo(campo(1), campo(2), valor(3));
    if (doc_.c190_grupo.count(chave)) achado("D190 repetido no documento (mesmos CST, CFOP e alíquota)");
    doc_.c190_grupo[chave] = {};
    const std::array<std::int64_t, 6> v{valor(4), valor(5), valor(6), 0, 0, 0};
    for (std::size_t i = 0; i < v.size(); ++i) doc_.c190[i] += v[i];
    apura(cfop, 6);
  }

  void fecha_documento() {
    if (doc_.reduzido) return;
    if (doc_.c190s == 0) achado(doc_.linha, fmt::format("{} regular sem registro {}", doc_.reg, doc_.filho));
    if (doc_.exige_c170 && !doc_.com_c170) achado(doc_.linha, "C100 de terceiros sem os itens (C170)");
    static constexpr std::string_view kCampos[] = {"VL_DOC", "VL_BC_ICMS", "VL_ICMS", "VL_BC_ICMS_ST", "VL_ICMS_ST", "VL_IPI"};
    for (std::size_t i = 0; i < std::size(kCampos); ++i)
      if (doc_.c100[i] != doc_.c190[i])
        achado(doc_.linha, fmt::format("{} {} {} difere da soma dos {} ({})", doc_.reg, kCampos[i],
                                       valor_texto(doc_.c100[i]), doc_.filho, valor_texto(doc_.c190[i])));
    if (!doc_.com_c170) return;
    static constexpr std::string_view kSomas[] = {"VL_BC_ICMS", "VL_ICMS", "VL_BC_ICMS_ST", "VL_ICMS_ST", "VL_IPI"};
    for (const auto& [chave, linha] : doc_.grupos) {
      const auto it = doc_.c170.find(chave);
      const std::array<std::int64_t, 5> itens = it == doc_.c170.end() ? std::array<std::int64_t, 5>{} : it->second;
      const auto& grupo = doc_.c190_grupo[chave];
      for (std::size_t i = 0; i < std::size(kSomas); ++i)
        if (grupo[i] != itens[i])
          achado(linha, fmt::format("C190 {} {} difere da soma dos C170 do grupo ({})", kSomas[i],
                                    valor_texto(grupo[i]), valor_texto(itens[i])));
    }
    for (const auto& [chave, somas] : doc_.c170)
      if (!doc_.c190_grupo.count(chave)) achado(doc_.linha, fmt::format("C170 do grupo {} sem C190", chave));
  }

  void re100() {
    const Dia ini = ler_data(campo(1)), fim = ler_data(campo(2));
    if (!ini || !fim) return;
    if (ini != proximo_e100_ || fim < ini || !no_periodo(fim))
      achado("E100 de {} a {} não continua o período do 0000 sem lacunas", campo(1), campo(2));
    e100_inteiro_ = ini == dt_ini_ && fim == dt_fin_;
    proximo_e100_ = dia_seguinte(fim);
  }

  void re110() {
    for (int i = 2; i <= 15; ++i) e110_[i] = valor(i - 1);
    e116_ = 0;
    if (e100_inteiro_) {
      if (e110_[2] != debitos_)
        achado("E110 VL_TOT_DEBITOS {} difere do ICMS dos C190 de saída ({})", valor_texto(e110_[2]), valor_texto(debitos_));
      if (e110_[6] != creditos_)
        achado("E110 VL_TOT_CREDITOS {} difere do ICMS dos C190 de entrada ({})", valor_texto(e110_[6]),
               valor_texto(creditos_));
    }
    CamposE110 esperado = e110_;
    completa_e110(esperado);
    for (const auto& [i, nome] : {std::pair{11, "VL_SLD_APURADO"}, {13, "VL_ICMS_RECOLHER"}, {14, "VL_SLD_CREDOR_TRANSPORTAR"}})
      if (esperado[i] != e110_[i])
        achado("E110 {} {} não fecha com a apuração ({})", nome, valor_texto(e110_[i]), valor_texto(esperado[i]));
    if (e110_[12] > e110_[11]) achado("E110 VL_TOT_DED maior que VL_SLD_APURADO");
  }

  void fecha_e110(int linha) {
    const std::int64_t devido = e110_[13] + e110_[15];
    if (e116_ != devido)
      achado(linha, fmt::format("E110: soma dos E116 ({}) difere de VL_ICMS_RECOLHER + DEB_ESP ({})", valor_texto(e116_),
                                valor_texto(devido)));
  }

  void rh005() {
    const Dia d = ler_data(campo(1));
    if (d && d > dt_fin_) achado("H005 DT_INV {} depois do fim do período", campo(1));
    h005_ = valor(2);
    h010_ = 0;
    h010s_ = 0;
    h010_chaves_.clear();
  }

  void rh010() {
    ++h010s_;
    h010_ += valor(5);
    usa(itens_, campo(1), "COD_ITEM", "0200");
    usa(unidades_, campo(2), "UNID", "0190");
    if (campo(6) == "0" && !campo(7).empty()) achado("H010 de IND_PROP 0 com COD_PART");
    if ((campo(6) == "1" || campo(6) == "2") && campo(7).empty()) achado("H010 de IND_PROP {} exige COD_PART", campo(6));
    if (!campo(7).empty()) usa(participantes_, campo(7), "COD_PART", "0150");
    if (!h010_chaves_.insert(fmt::format("{}|{}|{}", campo(1), campo(6), campo(7))).second)
      achado("H010 repetido no inventário (mesmos COD_ITEM, IND_PROP e COD_PART)");
  }

  void fecha_h005(int linha) {
    if (h005_ != h010_)
      achado(linha, fmt::format("H005 VL_INV {} difere da soma dos H010 ({})", valor_texto(h005_), valor_texto(h010_)));
    if (h005_ > 0 && h010s_ == 0) achado(linha, "H005 com VL_INV maior que zero sem H010");
  }

  // x990: the block's lines; with x001, whether the block has data records.
  void fechamento(const Registro& r) {
    const char bloco = r.bloco();
    const int linhas = por_bloco_[kBlocos.find(bloco)] + (bloco == '9' ? 1 : 0);
    if (valor(1) / 100 != linhas) achado("{} QTD_LIN {} difere das {} linhas do bloco", r.reg, campo(1), linhas);
    const int dados = linhas - 2 - (bloco == '0' ? 1 : 0) - (bloco == '9' ? 1 : 0);
    if (ind_mov_ == "1" && dados > 0) achado("bloco {} com IND_MOV 1 e {} registros de dados", bloco, dados);
    if (ind_mov_ == "0" && dados == 0) achado("bloco {} com IND_MOV 0 e nenhum registro de dados", bloco);
  }

  void r9999() {
    if (valor(1) / 100 != linha_) achado("9999 QTD_LIN {} difere das {} linhas do arquivo", campo(1), linha_);
  }

  struct Contagem {
    std::string reg;
    std::int64_t qtd;
    int linha;
  };

  void fim() {
    while (!pilha_.empty()) fecha();
    const auto regs = registros();
    for (const Registro& r : regs)
      if (r.nivel <= 1) {
        const int n = por_tipo_[r.indice()];
        if (n < r.minimo) achado(linha_, fmt::format("arquivo sem o registro {}", r.reg));
        if (r.maximo && n > r.maximo) achado(linha_, fmt::format("registro {} aparece {} vezes", r.reg, n));
      }
    std::unordered_set<std::string_view> contados;
    for (const Contagem& c : nove_mil_) {
      const Registro* r = registro(c.reg);
      if (!contados.insert(c.reg).second) achado(c.linha, fmt::format("9900 de {} repetido", c.reg));
      else if (!r || por_tipo_[r->indice()] == 0) achado(c.linha, fmt::format("9900 de {}, registro ausente do arquivo", c.reg));
      else if (por_tipo_[r->indice()] != c.qtd)
        achado(c.linha, fmt::format("9900 de {} conta {}; o arquivo tem {}", c.reg, c.qtd, por_tipo_[r->indice()]));
    }
    for (const Registro& r : regs)
      if (por_tipo_[r.indice()] > 0 && !contados.count(r.reg)) achado(linha_, fmt::format("registro {} sem 9900", r.reg));
    for (const auto* t : {&participantes_, &unidades_, &itens_})
      for (const auto& [codigo, d] : *t)
        if (!d.usado) achado(d.linha, fmt::format("'{}' não é usado por nenhum registro do arquivo", codigo));
    if (dt_fin_ && por_tipo_[R("E100").indice()] && proximo_e100_ != dia_seguinte(dt_fin_))
      achado(linha_, "os E100 não cobrem o período do 0000 até o fim");
    std::stable_sort(achados_.begin(), achados_.end(), [](const std::string& a, const std::string& b) {
      return std::stoi(a.substr(6)) < std::stoi(b.substr(6));
    });
  }

  DivisorDeLinhas divisor_;
  std::vector<std::string> achados_;
  int linha_ = 0;
  bool depois_9999_ = false;
  Lido atual_;
  std::vector<Quadro> pilha_;
  std::array<int, 8> ultimo_{};
  std::array<int, kMaxRegistros> por_tipo_{};
  std::array<int, kBlocos.size()> por_bloco_{};
  std::string ind_mov_, cnpj_proprio_, uf_propria_;
  Dia dt_ini_ = 0, dt_fin_ = 0, proximo_e100_ = 0;
  bool e100_inteiro_ = false;
  Tabela participantes_, unidades_, itens_;
  std::unordered_set<std::string> chaves_c100_;
  Documento doc_;
  std::int64_t debitos_ = 0, creditos_ = 0, e116_ = 0, h005_ = 0, h010_ = 0;
  int h010s_ = 0;
  std::unordered_set<std::string> h010_chaves_;
  CamposE110 e110_{};
  std::vector<Contagem> nove_mil_;
};

ValidadorEfd::ValidadorEfd() : estado_(std::make_unique<Estado>()) {}
ValidadorEfd::~ValidadorEfd() = default;
void ValidadorEfd::le(std::string_view pedaco) { estado_->le(pedaco); }
std::vector<std::string> ValidadorEfd::conclui() { return estado_->conclui(); }

}  // namespace infofiscal::efd

namespace infofiscal {

std::vector<std::string> validar_efd(std::string_view arquivo) {
  efd::ValidadorEfd validador;
  validador.le(arquivo);
  return validador.conclui();
}

}  // namespace infofiscal
