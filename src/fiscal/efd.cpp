#include "fiscal/efd.h"

#include <cerrno>
#include <fstream>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "base/code_page.h"
#include "base/error.h"
#include "base/renderings.h"
#include "base/system.h"
#include "fiscal/efd_escrita.h"
#include "fiscal/efd_layout.h"
#include "fiscal/efd_validador.h"
#include "fiscal/identidade.h"
#include "fiscal/inscricao_estadual.h"
#include "fiscal/problemas.h"
#include "informacao/esquema.h"
#include "informacao/leitor.h"

namespace infofiscal {

namespace {

using namespace efd;
using namespace linha;

// Lines 17 and 19 share one layout: inventory items are read by L17's names.
static_assert(L17::Produto == L19::Produto && L17::Quantidade == L19::Quantidade &&
              L17::PrecoUnitario == L19::PrecoUnitario && L17::PrecoTotal == L19::PrecoTotal &&
              L17::Unidade == L19::Unidade && L17::TipoItem == L19::TipoItem && L16::Data == L18::Data);

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

// The problem of a value that failed its check: `onde` names its line and owner and the field
// ("Linha 9 do arquivo de informações: participante 2-11 (Fulano), CPF"), then the value as
// stored and the reason.
DataProblem problema(std::string_view tipo, std::string_view onde, std::string_view valor,
                     const identidade::Verificacao& v) {
  return DataProblem(std::string(tipo), fmt::format("{} '{}': {}", onde, valor, v.motivo));
}

// A code of `n` digits as its field wants it: the mask ('.', '-', '/') dropped, zeros on the
// left when shorter; empty stays empty.
// REQUIRES: `s` passed identidade::verificar_codigo (through codigo, below, or confere_item).
std::string com_zeros(std::string_view s, std::size_t n) {
  std::string d = identidade::sem_mascara(s);
  if (!d.empty() && d.size() < n) d.insert(0, n - d.size(), '0');
  return d;
}

// The same, checked: a letter or any other character is a problem of `onde()` (the note and
// item) naming the field: a CST "1A0" never becomes 010.
template <class Onde>
std::string codigo(std::string_view s, std::size_t n, std::string_view campo, const Onde& onde) {
  return com_zeros(codigo_numerico(s, onde() + ", " + std::string(campo)), n);
}

// The phone of FONE and FAX (at most 11 digits, the country code 55 dropped).
std::string fone(std::string_view s, std::string_view onde) {
  identidade::Telefone t = identidade::telefone(s);
  if (t.verificacao && t.digitos.size() > 11)
    t.verificacao = {identidade::Defeito::Tamanho,
                     fmt::format("tem {} dígitos; o campo tem no máximo 11", t.digitos.size())};
  if (!t.verificacao) throw problema("telefone inválido", onde, s, t.verificacao);
  return t.digitos;
}

// Column `n` in units of 10^-casas, for a field of `casas` decimals; more significant decimals
// are a problem of `onde()`, never rounded away (0,004 is not 0,00).
template <class Onde>
std::int64_t quantidade(const LinhaInformacao& l, int n, int casas, std::string_view campo, const Onde& onde) {
  try {
    return l.decimal_sem_perda(n, casas);
  } catch (const DataProblem& p) {
    throw p.within(onde() + fmt::format(", {}: ", campo));
  }
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

// ---- the catalogues, read in a first pass

// What block 0 says of an item (0200), a unit (0190) and a participant (0150), kept by value.
// The problems of a catalogue line are kept with it and reported when a record uses it: a
// party or item no note of the month refers to stops nothing.
struct ItemCadastrado {
  std::string tipo, descricao, unidade, ncm, cest;
  std::vector<DataProblem> problemas;
};
struct ParticipanteCadastrado {
  std::string nome, cnpj, cpf, ie, uf, endereco, numero, bairro, municipio, pais;
  std::vector<DataProblem> problemas;
};

// Line 12 as 0200 writes it. NCM (8 digits) and CEST (7) without mask; the CEST of zeros is
// the catalogue's "none".
ItemCadastrado item_da_linha(const LinhaInformacao& l) {
  ItemCadastrado i{std::string(l.texto(L12::TipoItem)), std::string(l.texto(L12::Descricao)),
                   std::string(l.texto(L12::Unidade)), {}, {}, {}};
  const std::string onde = fmt::format("Linha {} do arquivo de informações: item {}-{}", l.numero,
                                       l.texto(L12::TipoItem), l.texto(L12::Codigo));
  const auto confere = [&](int coluna, std::string_view nome, std::size_t tamanho, std::string& out) {
    const std::string_view v = l.texto(coluna);
    identidade::Verificacao r = identidade::verificar_codigo(v);
    out = identidade::sem_mascara(v);
    if (r && !out.empty() && out.size() != tamanho)
      r = {identidade::Defeito::Tamanho, fmt::format("tem {} dígitos; o {} tem {}", out.size(), nome, tamanho)};
    if (!r) i.problemas.push_back(problema(fmt::format("{} inválido", nome), onde + ", " + std::string(nome), v, r));
  };
  confere(L12::Ncm, "NCM", 8, i.ncm);
  confere(L12::Cest, "CEST", 7, i.cest);
  if (i.cest == "0000000") i.cest.clear();
  return i;
}

// Line 14 as 0150 writes it. A party of Brazil carries a CNPJ or a CPF that passes its check
// digits, and its IE (empty or ISENTO: none) is checked with the state of its municipality. The
// registration of a person (TipoPessoa F, or a CPF) is an identity card number: never an IE.
ParticipanteCadastrado participante_da_linha(const LinhaInformacao& l) {
  ParticipanteCadastrado p;
  p.nome = l.texto(L14::RazaoSocial);
  p.endereco = l.texto(L14::Endereco);
  p.numero = l.texto(L14::Numero);
  p.bairro = l.texto(L14::Bairro);
  const std::string onde = fmt::format("Linha {} do arquivo de informações: participante {}-{} ({})", l.numero,
                                       l.texto(L14::Papel), l.texto(L14::Codigo), p.nome);
  const auto anota = [&](std::string_view tipo, std::string_view campo, std::string_view valor,
                         const identidade::Verificacao& v) {
    if (!v) p.problemas.push_back(problema(tipo, onde + ", " + std::string(campo), valor, v));
  };
  const std::string_view pais = l.texto(L14::IbgePais);
  anota("código com caractere não numérico", "país", pais, identidade::verificar_codigo(pais));
  p.pais = identidade::sem_mascara(pais);
  if (p.pais.empty() || p.pais == "0") p.pais = kPaisBrasil;
  if (p.pais != kPaisBrasil) return p;  // a foreign party: no CNPJ, CPF, IE or municipality
  p.municipio = l.texto(L14::IbgeCidade);
  p.uf = identidade::uf_do_municipio(p.municipio);
  if (p.uf.empty())
    anota("município inválido", "município", p.municipio,
          {identidade::Defeito::Uf, "não é um código IBGE de município de 7 dígitos de uma UF"});
  const std::string_view doc = l.texto(L14::CnpjCpf), tipo = l.texto(L14::TipoPessoa);
  std::string d = identidade::documento(doc);
  identidade::Verificacao v = identidade::verificar_documento(d);
  if (v && (tipo == "F" ? d.size() != 11 : tipo == "J" && d.size() != 14))
    v = {identidade::Defeito::Tamanho, fmt::format("a pessoa de tipo {} tem {}", tipo, tipo == "F" ? "CPF" : "CNPJ")};
  const bool cpf = tipo == "F" || (tipo != "J" && d.size() == 11);
  anota(cpf ? "CPF inválido" : "CNPJ inválido", cpf ? "CPF" : "CNPJ", doc, v);
  (cpf ? p.cpf : p.cnpj) = std::move(d);
  const std::string_view ie = l.texto(L14::IeRg);
  if (cpf || ie.empty() || ie == "ISENTO" || p.uf.empty()) return p;
  anota("IE inválida", fmt::format("IE ({})", p.uf), ie, identidade::verificar_inscricao_estadual(p.uf, ie));
  p.ie = identidade::sem_mascara(ie);
  return p;
}

// The accountant (0100) is required, and so is a layout for the year.
void confere_cabecalho(const CabecalhoInformacao& c) {
  if (!c.contador) throw Error("Arquivo de informações sem a linha 03");
  const int ano = c.registro.data(L01::DataInicial).year;
  if (cod_ver(ano).empty())
    throw Error(fmt::format("Linha {} do arquivo de informações: o leiaute do SPED EFD não tem versão para o ano {}",
                            c.registro.numero, ano));
}

// The information file gives lines 12 to 14 after the notes that use them, and checking a
// note's codes at once (and naming the first note at fault) needs them before: a first quick
// pass reads the header and these lines alone. It also checks what the header lacks.
class Cadastros final : public LeitorDeInformacao {
 public:
  void cabecalho(const CabecalhoInformacao& c) override { confere_cabecalho(c); }

  void cadastro(const LinhaInformacao& l) override {
    // The first line of a code stands for it.
    if (l.tipo == L12::kTipo) {
      std::string cod = chave(l.texto(L12::TipoItem), l.texto(L12::Codigo));
      if (!itens_.count(cod)) itens_.emplace(std::move(cod), item_da_linha(l));
    }
    if (l.tipo == L13::kTipo)
      unidades_.try_emplace(std::string(l.texto(L13::Sigla)),
                            l.texto(L13::Descricao).empty() ? l.texto(L13::Sigla) : l.texto(L13::Descricao));
    if (l.tipo == L14::kTipo) {
      std::string cod = chave(l.texto(L14::Papel), l.texto(L14::Codigo));
      if (!participantes_.count(cod)) participantes_.emplace(std::move(cod), participante_da_linha(l));
    }
  }

  const ItemCadastrado* item(const std::string& cod) const { return busca(itens_, cod); }
  const std::string* unidade(std::string_view unid) const { return busca(unidades_, std::string(unid)); }
  const ParticipanteCadastrado* participante(const std::string& cod) const { return busca(participantes_, cod); }

 private:
  template <class V>
  static const V* busca(const std::unordered_map<std::string, V>& m, const std::string& k) {
    const auto it = m.find(k);
    return it == m.end() ? nullptr : &it->second;
  }

  std::unordered_map<std::string, ItemCadastrado> itens_;
  std::unordered_map<std::string, std::string> unidades_;  // unit -> its description in 0190
  std::unordered_map<std::string, ParticipanteCadastrado> participantes_;
};

// Codes the file refers to, in the order of first use.
struct Usados {
  std::vector<std::string> ordem;
  std::unordered_set<std::string> vistos;
  // Of units, while the catalogues are still to come: the first uses in order, "U" and a unit
  // named by a line, or "I" and an item whose unit only its line 12 will tell.
  std::vector<std::string> a_resolver;
  // True when the code is new.
  bool usa(std::string_view codigo) {
    if (!vistos.emplace(codigo).second) return false;
    ordem.emplace_back(codigo);
    return true;
  }
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
  std::int64_t uso_consumo = 0, imobilizado = 0;  // the ICMS of the document not credited, by reason
};

// ---- the balance carried from last month's file

// The fields of a record line "|REG|f2|f3|...|" (CR LF dropped): [0] is REG.
std::vector<std::string_view> campos_do_registro(std::string_view linha) {
  if (!linha.empty() && linha.back() == '\r') linha.remove_suffix(1);
  std::vector<std::string_view> campos;
  if (linha.size() >= 2 && linha.front() == '|' && linha.back() == '|') separa_campos(linha, campos);
  return campos;
}

// A date field of the other file, ddmmaaaa, as dd/mm/aaaa; quoted as it stands when it is not
// eight characters.
std::string data_de(std::string_view ddmmaaaa) {
  return ddmmaaaa.size() == 8 ? fmt::format("{}/{}/{}", ddmmaaaa.substr(0, 2), ddmmaaaa.substr(2, 2), ddmmaaaa.substr(4))
                              : fmt::format("'{}'", ddmmaaaa);
}

// E110 VL_SLD_CREDOR_TRANSPORTAR of last month's file `caminho`, after checking that its 0000
// is the company of line 02 (CNPJ and IE) and the month before [dt_ini, dt_fin]. Reads up to its
// E110; throws Error naming the file and both values when it is another company or month.
std::int64_t saldo_da_efd_anterior(const std::string& caminho, const LinhaInformacao& empresa, Dia dt_ini, Dia dt_fin) {
  std::ifstream arquivo(path_of(caminho), std::ios::binary);
  if (!arquivo)
    throw Error(fmt::format("Não foi possível ler o arquivo EFD anterior '{}': {}", caminho, system_reason(errno)));
  const std::string nome = fmt::format("O arquivo EFD anterior '{}'", caminho);
  std::string linha;
  std::getline(arquivo, linha);
  const std::vector<std::string_view> r0000 = campos_do_registro(linha);
  if (r0000.size() < 10 || r0000[0] != "0000") throw Error(nome + " não começa pelo registro 0000");
  // As this file's own 0000 writes them.
  const std::string cnpj = identidade::documento(empresa.texto(L02::Cnpj)),
                    ie = identidade::sem_mascara(empresa.texto(L02::Ie));
  if (r0000[6] != cnpj || r0000[9] != ie)
    throw Error(fmt::format("{} é de outra empresa: CNPJ {} e IE {} no seu 0000; este arquivo é do CNPJ {} e IE {}", nome,
                            r0000[6], r0000[9], cnpj, ie));
  // The month before: its first day, and the day before this period's first.
  const int mes = dt_ini / 100 % 100, ano = dt_ini / 10000;
  const Dia ini = (mes == 1 ? (ano - 1) * 10000 + 1201 : ano * 10000 + (mes - 1) * 100 + 1);
  const Dia fim = ini / 100 * 100 + days_in_month(ini / 100 % 100, ini / 10000);
  if (ler_data(r0000[3]) != ini || ler_data(r0000[4]) != fim)
    throw Error(fmt::format("{} é do período de {} a {}; o mês anterior ao deste arquivo ({} a {}) vai de {} a {}", nome,
                            data_de(r0000[3]), data_de(r0000[4]), data_legivel(dt_ini), data_legivel(dt_fin),
                            data_legivel(ini), data_legivel(fim)));
  while (std::getline(arquivo, linha)) {
    const std::vector<std::string_view> r = campos_do_registro(linha);
    if (r.empty() || r[0] != "E110") continue;
    std::int64_t saldo = 0;
    if (r.size() < 14 || !ler_numero(r[13], 2, saldo))
      throw Error(fmt::format("{}: o E110 não tem um VL_SLD_CREDOR_TRANSPORTAR legível em {}", nome, linha));
    return saldo;
  }
  throw Error(nome + " não tem o registro E110");
}

// ---- the file, written in a second pass

// Writes the file while the reader hands the notes over. Block 0 lists only the codes that
// blocks C and H use, so it is finished last: block C, which comes after it, waits in a
// temporary file beside the output meanwhile (the writer's wait for a block written ahead).
// That costs a write and a read of block C, a fifth of the information text in size, against a
// third reading of the text that block 0 would need to come first.
class GeradorEfd final : public LeitorDeInformacao {
 public:
  // Takes the first reading's catalogues, which it lets go once block 0 is written; or, with
  // `cadastros_no_texto`, none: a text read once gives them after the notes, and the checks of
  // the codes the notes use wait for the end (conclui).
  GeradorEfd(Cadastros cadastros, bool cadastros_no_texto, int notas, SaidaFiscal& saida, const TProcLinhaInfo& info,
             const TProcProgresso& progresso, const OpcoesEfd& opcoes)
      : cadastros_(std::move(cadastros)), adiado_(cadastros_no_texto), notas_(notas), info_(info), progresso_(progresso),
        opcoes_(opcoes), out_(saida) {}

  void cabecalho(const CabecalhoInformacao& c) override {
    confere_cabecalho(c);  // again: a saved file may have changed since the first reading
    const LinhaInformacao& r = c.registro;
    const TimeStamp ini = r.data(L01::DataInicial), fim = r.data(L01::DataFinal);
    ano_ = ini.year;
    mes_ = ini.month;
    dt_ini_ = dia(ini);
    dt_fin_ = dia(fim);
    info(fmt::format("SPED EFD ICMS/IPI: período de {} a {}", r.texto(L01::DataInicial), r.texto(L01::DataFinal)));
    if (r.texto(L01::TipoAtividade) == "0")
      info("Estabelecimento industrial (IND_ATIV 0): a apuração do IPI (E500) não é gerada");
    bloco_0(r, c.empresa, *c.contador);
    saldo_credor_anterior_ = opcoes_.efd_anterior.empty()
                                 ? opcoes_.saldo_credor_anterior
                                 : saldo_da_efd_anterior(opcoes_.efd_anterior, c.empresa, dt_ini_, dt_fin_);
  }

  void nota(const NotaInformacao& nota) override {
    if (progresso_ && notas_ > 0) progresso_(++nota_, notas_);
    try {
      inutilizados_ += documento(nota) ? 0 : 1;
    } catch (const DataProblem& p) {
      problemas_.anota(p);
    }
  }

  void cadastro(const LinhaInformacao& l) override {
    if (adiado_) cadastros_.cadastro(l);
  }

  void inventario(const InventarioInformacao& inv) override {
    if (inv.primeira) comeca_inventario(inv.cabecalho);
    for (const LinhaInformacao& l : inv.itens) {
      try {
        soma_ao_inventario(l);
      } catch (const DataProblem& p) {
        inventario_.com_problema = true;
        problemas_.anota(p);
      }
    }
    if (inv.ultima && !inventario_.com_problema) h005();
  }

  // After the reading: block 0's codes, then the blocks that follow C. Throws MesComProblemas
  // when a note or inventory could not be booked.
  void conclui() {
    if (!problemas_.vazio()) throw MesComProblemas(std::move(problemas_), "SPED EFD ICMS/IPI");
    if (adiado_) confere_adiados();
    if (inutilizados_)
      info(fmt::format("Números inutilizados não escriturados (a partir de {} não se escrituram): {}",
                       kAnoSemInutilizadas, inutilizados_));
    bloco_0_codigos();
    esquece_os_codigos();
    out_.encerra('D');
    bloco_e();
    out_.encerra('K');
    out_.registro("1010", {texto("N"), texto("N"), texto("N"), texto("N"), texto("N"), texto("N"), texto("N"),
                           texto("N"), texto("N"), texto("N"), texto("N"), texto("N"), texto("N")});
    nao_creditado();
    info(fmt::format("SPED EFD ICMS/IPI: {} documentos escriturados", documentos_));
    if (transportes_) info(fmt::format("SPED EFD ICMS/IPI: {} conhecimentos de transporte no registro D100", transportes_));
    out_.conclui();
  }

 private:
  void info(const std::string& s) const {
    if (info_) info_(s);
  }

  // The ICMS of the documents' entries that the law does not let the company credit, and why.
  void nao_creditado() const {
    if (uso_consumo_)
      info(fmt::format("ICMS não creditado de entradas para uso e consumo (CFOP 1556, 2556, 3556, 1407, 2407): {}; "
                       "a Lei Complementar 87/96, art. 33, I, não dá crédito a essas entradas",
                       format_hundredths(uso_consumo_)));
    if (imobilizado_)
      info(fmt::format("ICMS não creditado de entradas para o ativo imobilizado (CFOP 1551, 2551, 3551, 1406, 2406): {}; "
                       "o crédito se apropria só pelo CIAP, 1/48 por mês (Lei Complementar 87/96, art. 20, § 5º), e "
                       "o bloco G não é gerado: lance-o à parte",
                       format_hundredths(imobilizado_)));
  }

  // ---- block C

  static std::string descreve(const LinhaInformacao& h, const Especie& e) {
    return fmt::format("Nota {} de {} (linha {} do arquivo de informações)", h.texto(L04::Numero), e.nome, h.numero);
  }

  [[noreturn]] static void falha(const LinhaInformacao& l, std::string tipo, const std::string& why) {
    throw DataProblem(std::move(tipo), fmt::format("Linha {} do arquivo de informações: {}", l.numero, why));
  }

  // Books one note; false for a voided number of a period that no longer books them.
  bool documento(const NotaInformacao& nota) {
    const LinhaInformacao& h = nota.cabecalho;
    const auto codigo_especie = h.inteiro(L04::TipoNota);
    const Especie* e = nullptr;
    for (const auto& x : kEspecies)
      if (x.codigo == codigo_especie) e = &x;
    if (!e) falha(h, "espécie de nota desconhecida", fmt::format("espécie de nota {} desconhecida", codigo_especie));
    const std::string_view sit = cod_sit(h.texto(L04::Situacao));
    if (sit.empty()) falha(h, "situação de nota desconhecida", fmt::format("situação '{}' da nota desconhecida", h.texto(L04::Situacao)));
    const auto culpa = [&] { return descreve(h, *e); };
    const std::string mod = codigo(h.texto(L04::Modelo), 2, "COD_MOD", culpa);
    // Transport documents go to D100 when the company took the service (a purchase's freight).
    const bool transporte = modelo_transporte(mod) && e->ind_oper == '0' && e->ind_emit == '1';
    if (!transporte && !R("C100").campos[4].permite(mod)) {
      info(descreve(h, *e) +
           fmt::format(": modelo {} não se escritura no registro C100; não escriturada", h.texto(L04::Modelo)));
      return true;
    }
    if (sit == "05" && ano_ >= kAnoSemInutilizadas) return false;
    if (e->ind_emit == '1' && sit != "00") {
      info(descreve(h, *e) + ": cancelada, de terceiros; não escriturada");
      return true;
    }
    ++documentos_;
    std::string num = codigo(h.texto(L04::Numero), 0, "NUM_DOC", culpa);
    num.erase(0, std::min(num.find_first_not_of('0'), num.size()));
    const Valor oper = texto(std::string_view(&e->ind_oper, 1)), emit = texto(std::string_view(&e->ind_emit, 1));
    if (sit != "00") {  // cancelled or voided: the reduced record, without children
      const Valor chv = sit == "05" || !modelo_eletronico(mod) ? vazio() : texto(h.texto(L04::Chave));
      out_.registro("C100", {oper, emit, vazio(), texto(mod), texto(sit), texto(h.texto(L04::Serie)), texto(num), chv,
                             vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(),
                             vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio(), vazio()});
      return true;
    }
    regular(nota, *e, oper, emit, mod, num);
    return true;
  }

  // The party of a note, once its catalogue problems are in the month's list; nullptr while the
  // catalogues are still to come.
  const ParticipanteCadastrado* participante(const NotaInformacao& nota, const Especie& e) {
    const LinhaInformacao& h = nota.cabecalho;
    if (!nota.parte) throw DataProblem("nota sem participante", descreve(h, e) + ": sem a linha 05 do participante");
    const std::string cod = chave(nota.parte->texto(L05::Papel), nota.parte->texto(L05::Codigo));
    if (adiado_) {
      participantes_usados_.usa(cod);
      return nullptr;
    }
    const ParticipanteCadastrado* p = cadastros_.participante(cod);
    if (!p)
      throw DataProblem("participante fora do cadastro (linhas 14)",
                        descreve(h, e) + fmt::format(": participante {} não consta das linhas 14", cod));
    if (participantes_usados_.usa(cod))
      for (const DataProblem& problema : p->problemas) problemas_.anota(problema);
    return p;
  }

  // `onde()` describes the user of the code, for the error; `usados` are the block's.
  template <class Onde>
  void item(const std::string& cod, Usados& itens, Usados& unidades, const Onde& onde) {
    if (adiado_) {
      if (itens.usa(cod)) unidades.a_resolver.push_back("I" + cod);
      return;
    }
    const ItemCadastrado* i = cadastros_.item(cod);
    if (!i) throw DataProblem("item fora do cadastro (linhas 12)", onde() + fmt::format(": item {} não consta das linhas 12", cod));
    if (itens_relatados_.insert(cod).second)
      for (const DataProblem& problema : i->problemas) problemas_.anota(problema);
    if (itens.usa(cod)) unidade(i->unidade, unidades, onde);
  }

  template <class Onde>
  void unidade(std::string_view unid, Usados& unidades, const Onde& onde) {
    if (adiado_) {
      if (unidades.usa(unid)) unidades.a_resolver.push_back("U" + std::string(unid));
      return;
    }
    if (!cadastros_.unidade(unid))
      throw DataProblem("unidade fora do cadastro (linhas 13)", onde() + fmt::format(": unidade '{}' não consta das linhas 13", unid));
    unidades.usa(unid);
  }

  // The ICMS of an item as the file books it: the document's, or none on an entry the law gives
  // no credit for (the amount not credited is kept for the run's info line).
  struct IcmsDoItem {
    std::int64_t bc, aliq, icms;
    SemCredito sem_credito;
  };
  static IcmsDoItem icms_do_item(const LinhaInformacao& i) {
    const SemCredito s = sem_credito(com_zeros(i.texto(L06::Cfop), 4));
    if (s != SemCredito::Nao) return {0, 0, 0, s};
    return {i.centesimos(L06::IcmsBase), i.centesimos(L06::IcmsAliquota), i.centesimos(L06::IcmsValor), s};
  }

  // Throws DataProblem for what keeps an item out of the file: a code the layout refuses, a
  // negative amount, and, for a document whose items the file lists (`cadastro`, C170), a code
  // or quantity C170 cannot carry, an item or unit missing from the catalogues.
  void confere_item(const NotaInformacao& nota, const Especie& e, const LinhaInformacao& i, bool cadastro) {
    const auto culpa = [&] { return descreve(nota.cabecalho, e) + fmt::format(": item {}", i.texto(L06::Item)); };
    const std::string cst = codigo(i.texto(L06::IcmsCst), 3, "CST_ICMS", culpa),
                      cfop = codigo(i.texto(L06::Cfop), 4, "CFOP", culpa);
    if (!cst_icms_valido(cst))
      throw DataProblem("CST do ICMS inválido", culpa() + fmt::format(" com CST do ICMS '{}' inválido", i.texto(L06::IcmsCst)));
    const int destino = cfop.size() == 4 ? apuracao_cfop(cfop) : 0;
    if (destino == 0) throw DataProblem("CFOP inválido", culpa() + fmt::format(" com CFOP '{}' inválido", i.texto(L06::Cfop)));
    if ((destino > 0) != (e.ind_oper == '1') && cfop != "1605" && cfop != "5605")
      throw DataProblem("CFOP de saída numa entrada, ou de entrada numa saída",
                        culpa() + fmt::format(" com CFOP {} de {} numa nota de {}", cfop, destino > 0 ? "saída" : "entrada",
                                              e.ind_oper == '1' ? "saída" : "entrada"));
    try {
      confere_valores_do_item(i);
    } catch (const DataProblem& p) {
      throw p.within(descreve(nota.cabecalho, e) + ": ");
    }
    if (!cadastro) return;
    const auto onde = [&] { return descreve(nota.cabecalho, e) + fmt::format(", item {}", i.texto(L06::Item)); };
    codigo(i.texto(L06::IpiCst), 2, "CST_IPI", onde);
    codigo(i.texto(L06::PisCst), 2, "CST_PIS", onde);
    codigo(i.texto(L06::CofinsCst), 2, "CST_COFINS", onde);
    quantidade(i, L06::Quantidade, 5, "QTD", onde);
    item(chave(i.texto(L06::TipoItem), i.texto(L06::Produto)), itens_usados_, unidades_usadas_, onde);
    unidade(i.texto(L06::Unidade), unidades_usadas_, onde);
  }

  // Every item of a note checked, each problem listed; false when one of them cannot be booked,
  // and then the note is not either.
  bool itens_escrituraveis(const NotaInformacao& nota, const Especie& e, bool cadastro) {
    bool ok = true;
    for (const LinhaInformacao& i : nota.itens) {
      try {
        confere_item(nota, e, i, cadastro);
      } catch (const DataProblem& p) {
        problemas_.anota(p);
        ok = false;
      }
    }
    return ok;
  }

  // The C190 (D190) groups and the C100 (D100) sums of a note's items, checked before.
  void agrupa(const NotaInformacao& nota, std::vector<Grupo>& grupos, Totais& t) {
    for (const LinhaInformacao& i : nota.itens) {
      std::string cst = com_zeros(i.texto(L06::IcmsCst), 3), cfop = com_zeros(i.texto(L06::Cfop), 4);
      const IcmsDoItem icms = icms_do_item(i);
      Grupo* g = nullptr;
      for (auto& x : grupos)
        if (x.cst == cst && x.cfop == cfop && x.aliq == icms.aliq) g = &x;
      if (!g) g = &grupos.emplace_back(Grupo{std::move(cst), std::move(cfop), icms.aliq});
      const std::int64_t item = i.centesimos(L06::PrecoTotal), desc = i.centesimos(L06::Desconto),
                         frt = i.centesimos(L06::Frete), seg = i.centesimos(L06::Seguro),
                         out = i.centesimos(L06::OutrasDespesas), bc = icms.bc, bc_st = i.centesimos(L06::IcmsStBase),
                         st = i.centesimos(L06::IcmsStValor), ipi = i.centesimos(L06::IpiValor);
      const std::int64_t base_cheia = item - desc + frt + seg + out;
      const std::int64_t opr = base_cheia + st + ipi;
      // A reduced base only where there is a base: an entry without credit has none.
      const bool reducao = icms.sem_credito == SemCredito::Nao && (g->cst.ends_with("20") || g->cst.ends_with("70"));
      if (icms.sem_credito == SemCredito::UsoConsumo) t.uso_consumo += i.centesimos(L06::IcmsValor);
      if (icms.sem_credito == SemCredito::Imobilizado) t.imobilizado += i.centesimos(L06::IcmsValor);
      g->opr += opr;
      g->bc += bc;
      g->icms += icms.icms;
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
      t.icms += icms.icms;
      t.bc_st += bc_st;
      t.st += st;
      t.ipi += ipi;
      t.pis += i.centesimos(L06::PisValor);
      t.cofins += i.centesimos(L06::CofinsValor);
    }
  }

  // The group's ICMS into E110: debits of exits, credits of entries.
  void apura(const Grupo& g) {
    const int destino = apuracao_cfop(g.cfop);
    if (destino > 0) debitos_ += g.icms;
    if (destino < 0) creditos_ += g.icms;
  }

  void regular(const NotaInformacao& nota, const Especie& e, const Valor& oper, const Valor& emit,
               const std::string& mod, const std::string& num) {
    const LinhaInformacao& h = nota.cabecalho;
    if (nota.itens.empty()) throw DataProblem("nota sem itens", descreve(h, e) + ": sem itens (linhas 06)");
    const ParticipanteCadastrado* parte = participante(nota, e);
    const bool transporte = modelo_transporte(mod);
    // Items (C170) only on third-party documents: an own NF-e's items are in its XML; D100 has none.
    const bool com_c170 = e.ind_emit == '1' && !transporte;
    if (!itens_escrituraveis(nota, e, com_c170)) return;
    grupos_.clear();
    Totais t;
    agrupa(nota, grupos_, t);
    if (std::llabs(h.centesimos(L04::Total) - t.doc) > 1)
      info(descreve(h, e) + fmt::format(": total da nota {} difere da soma dos itens; escriturada a soma dos itens",
                                        h.texto(L04::Total)));
    const Dia dt_doc = dia(h.data(L04::Emissao));
    if (dt_doc > dt_fin_)
      throw DataProblem("nota emitida depois do período",
                        descreve(h, e) + fmt::format(": emitida em {}, depois do período", h.texto(L04::Emissao)));
    const std::string cod_part = chave(nota.parte->texto(L05::Papel), nota.parte->texto(L05::Codigo));
    // A CT-e's key is checked like an NF-e's; its issuer is the carrier, the note's party, whose
    // state waits for the catalogues when they come later.
    if (modelo_eletronico(mod) || transporte) {
      const std::string_view chv = h.texto(L04::Chave);
      confere_chave(chv, e.ind_emit == '0' ? uf_ : parte ? std::string_view(parte->uf) : std::string_view(), descreve(h, e));
      if (e.ind_emit == '1' && !parte)
        ufs_das_chaves_.emplace(cod_part, identidade::uf_do_codigo(identidade::partes_da_chave(chv).codigo_uf));
    }
    const Dia dt_es = h.texto(L04::EntradaSaida).empty() ? 0 : dia(h.data(L04::EntradaSaida));
    // An entry or exit date outside the document's date and the period is left out (optional field).
    const Valor dt_e_s = dt_es >= dt_doc && dt_es <= dt_fin_ ? data(dt_es) : vazio();
    uso_consumo_ += t.uso_consumo;
    imobilizado_ += t.imobilizado;
    if (transporte) {
      d100(nota, e, mod, num, cod_part, dt_doc, dt_e_s, t);
      return;
    }
    out_.registro("C100", {oper, emit, texto(cod_part), texto(mod), texto("00"), texto(h.texto(L04::Serie)), texto(num),
                           modelo_eletronico(mod) ? texto(h.texto(L04::Chave)) : vazio(), data(dt_doc), dt_e_s,
                           centesimos(t.doc), texto("2"), centesimos(t.desc), centesimos(0), centesimos(t.merc),
                           texto(t.frt ? "0" : "9"), centesimos(t.frt), centesimos(t.seg), centesimos(t.out),
                           centesimos(t.bc), centesimos(t.icms), centesimos(t.bc_st), centesimos(t.st),
                           centesimos(t.ipi), centesimos(t.pis), centesimos(t.cofins), vazio(), vazio()});
    if (com_c170)
      for (const LinhaInformacao& i : nota.itens) c170(i);
    for (const Grupo& g : grupos_) {
      out_.registro("C190", {texto(g.cst), texto(g.cfop), centesimos(g.aliq), centesimos(g.opr), centesimos(g.bc),
                             centesimos(g.icms), centesimos(g.bc_st), centesimos(g.st), centesimos(g.red_bc),
                             centesimos(g.ipi), vazio()});
      apura(g);
    }
  }

  // ---- block D: the transport documents of purchases, written ahead; they wait until block C
  // is closed

  void d100(const NotaInformacao& nota, const Especie& e, const std::string& mod, const std::string& num,
            const std::string& cod_part, Dia dt_doc, const Valor& dt_a_p, const Totais& t) {
    const LinhaInformacao& h = nota.cabecalho;
    const std::string_view chv = h.texto(L04::Chave);  // checked by confere_chave
    if (identidade::partes_da_chave(chv).modelo != mod)
      throw DataProblem("chave de acesso inválida",
                        descreve(h, e) + fmt::format(": chave de acesso '{}' de outro modelo que o {} da nota", chv, mod));
    // Optional fields: a code that is not one of 7 digits is left out. The Valor refers to the
    // line's own text, which outlives the record.
    const auto municipio = [&h](int coluna) {
      const std::string_view c = h.texto(coluna);
      return c.size() == 7 && so_digitos(c) ? texto(c) : vazio();
    };
    out_.registro("D100", {texto("0"), texto("1"), texto(cod_part), texto(mod), texto("00"), texto(h.texto(L04::Serie)),
                           vazio(), texto(num), texto(chv), data(dt_doc), dt_a_p, texto("0"), vazio(),
                           centesimos(t.doc), centesimos(t.desc), texto("1"), centesimos(t.doc), centesimos(t.bc),
                           centesimos(t.icms), centesimos(0), vazio(), vazio(), municipio(L04::IbgeOrigem),
                           municipio(L04::IbgeDestino)});
    for (const Grupo& g : grupos_) {
      out_.registro("D190", {texto(g.cst), texto(g.cfop), centesimos(g.aliq), centesimos(g.opr), centesimos(g.bc),
                             centesimos(g.icms), centesimos(g.red_bc), vazio()});
      apura(g);
    }
    ++transportes_;
  }

  // The access key of an electronic note: its check digit, and the state code of its issuer (the
  // company for its own notes, else the party's, when its municipality names one).
  static void confere_chave(std::string_view chv, std::string_view uf_emitente, const std::string& nota) {
    identidade::Verificacao v = identidade::verificar_chave(chv);
    if (!v) throw problema("chave de acesso inválida", nota + ": chave de acesso", chv, v);
    const std::string_view uf = identidade::uf_do_codigo(identidade::partes_da_chave(chv).codigo_uf);
    if (!uf_emitente.empty() && uf != uf_emitente)
      throw problema("chave de acesso com a UF de outro emitente", nota + ": chave de acesso", chv,
                     {identidade::Defeito::Uf, fmt::format("o código de UF {} ({}) não é o da UF do emitente ({})",
                                                           chv.substr(0, 2), uf, uf_emitente)});
  }

  // A quantity-based PIS/COFINS field: only when not zero.
  static Valor opcional(const LinhaInformacao& i, int n) {
    const std::int64_t v = i.centesimos(n);
    return v ? centesimos(v) : vazio();
  }

  // REQUIRES: confere_item passed for `i` (its codes, quantity, item and unit).
  void c170(const LinhaInformacao& i) {
    const std::string cod = chave(i.texto(L06::TipoItem), i.texto(L06::Produto));
    const auto c = [&i](int n) { return centesimos(i.centesimos(n)); };
    const IcmsDoItem icms = icms_do_item(i);
    const std::string cst = com_zeros(i.texto(L06::IcmsCst), 3), cfop = com_zeros(i.texto(L06::Cfop), 4),
                      cst_ipi = com_zeros(i.texto(L06::IpiCst), 2), cst_pis = com_zeros(i.texto(L06::PisCst), 2),
                      cst_cofins = com_zeros(i.texto(L06::CofinsCst), 2);
    const Valor qtd = decimal(i.decimal_sem_perda(L06::Quantidade, 5), 5);
    out_.registro("C170", {inteiro(i.inteiro(L06::Item)), texto(cod), vazio(), qtd,
                           texto(i.texto(L06::Unidade)), c(L06::PrecoTotal), c(L06::Desconto), texto("0"), texto(cst),
                           texto(cfop), vazio(), centesimos(icms.bc), centesimos(icms.aliq), centesimos(icms.icms),
                           c(L06::IcmsStBase), vazio(), c(L06::IcmsStValor), vazio(), texto(cst_ipi), vazio(),
                           c(L06::IpiBase), vazio(), c(L06::IpiValor), texto(cst_pis), c(L06::PisBase),
                           c(L06::PisAliquota), opcional(i, L06::PisQuantidade), opcional(i, L06::PisValorUnidade),
                           c(L06::PisValor), texto(cst_cofins), c(L06::CofinsBase), c(L06::CofinsAliquota),
                           opcional(i, L06::CofinsQuantidade), opcional(i, L06::CofinsValorUnidade),
                           c(L06::CofinsValor), vazio(), vazio()});
  }

  // ---- block H: written ahead of its turn, it waits in the writer until block C is closed

  void comeca_inventario(const LinhaInformacao& h) {
    if (h.tipo == L18::kTipo) mes_do_inventario(h);
    inventario_ = InventarioEmCurso();
    inventario_.cabecalho = &h;
    if (h.texto(L16::Data).empty()) {
      inventario_.com_problema = true;
      problemas_.anota(DataProblem("inventário sem data", onde_no_inventario() + ": sem data"));
    }
  }

  std::string onde_no_inventario() const {
    return fmt::format("Inventário da linha {} do arquivo de informações", inventario_.cabecalho->numero);
  }

  void soma_ao_inventario(const LinhaInformacao& l) {
    InventarioEmCurso& inv = inventario_;
    const auto linha = [&] { return onde_no_inventario() + fmt::format(", linha {}", l.numero); };
    std::string cod = chave(l.texto(L17::TipoItem), l.texto(L17::Produto));
    item(cod, itens_do_inventario_, unidades_do_inventario_, linha);
    unidade(l.texto(L17::Unidade), unidades_do_inventario_, linha);
    const std::int64_t qtd = quantidade(l, L17::Quantidade, 3, "QTD", linha), valor = l.centesimos(L17::PrecoTotal);
    inv.total += valor;
    const auto [it, novo] = inv.posicao.emplace(cod, inv.itens.size());
    if (novo)
      inv.itens.push_back({std::move(cod), std::string(l.texto(L17::Unidade)), qtd, valor,
                           quantidade(l, L17::PrecoUnitario, 6, "VL_UNIT", linha)});
    else
      inv.itens[it->second].qtd += qtd, inv.itens[it->second].total += valor;
  }

  // REQUIRES: the inventory's every line summed, none with a problem.
  void h005() {
    const InventarioEmCurso& inv = inventario_;
    out_.registro("H005", {data(dia(inv.cabecalho->data(L16::Data))), centesimos(inv.total), texto("01")});
    for (const auto& i : inv.itens)
      out_.registro("H010", {texto(i.cod), texto(i.unidade), decimal(i.qtd, 3), decimal(i.unitario, 6),
                             centesimos(i.total), texto("0"), vazio(), vazio(), vazio(), vazio()});
  }

  // ---- block 0

  // Block 0's header records. A value of lines 02 and 03 that fails its check is a problem of the
  // month: the records are written all the same, and the month ends refused. An empty one is the
  // validator's (a required field of 0000 or 0100).
  void bloco_0(const LinhaInformacao& r, const LinhaInformacao& e, const LinhaInformacao& c) {
    const auto confere = [this](const LinhaInformacao& l, std::string_view tipo, std::string_view campo,
                                std::string_view valor, const identidade::Verificacao& v) {
      if (!valor.empty() && !v)
        problemas_.anota(
            problema(tipo, fmt::format("Linha {} do arquivo de informações: {}", l.numero, campo), valor, v));
    };
    const auto fone_de = [&](const LinhaInformacao& l, int coluna, std::string_view campo) {
      try {
        return fone(l.texto(coluna), fmt::format("Linha {} do arquivo de informações: {}", l.numero, campo));
      } catch (const DataProblem& p) {
        problemas_.anota(p);
        return std::string();
      }
    };
    uf_ = e.texto(L02::Uf);
    const std::string cnpj = identidade::documento(e.texto(L02::Cnpj));
    confere(e, "CNPJ inválido", "CNPJ da empresa", e.texto(L02::Cnpj), identidade::verificar_cnpj(cnpj));
    confere(e, "IE inválida", fmt::format("IE da empresa ({})", uf_), e.texto(L02::Ie),
            identidade::verificar_inscricao_estadual(uf_, e.texto(L02::Ie)));
    const std::string ie = identidade::sem_mascara(e.texto(L02::Ie));
    out_.registro("0000", {texto(cod_ver(ano_)),
                           texto(r.texto(L01::Finalidade).empty() ? "0" : r.texto(L01::Finalidade)), data(dt_ini_),
                           data(dt_fin_), texto(e.texto(L02::RazaoSocial)), texto(cnpj), vazio(),
                           texto(e.texto(L02::Uf)), texto(ie), texto(e.texto(L02::IbgeCidade)),
                           texto(e.texto(L02::Im)), texto(e.texto(L02::Suframa)), texto(r.texto(L01::Perfil)),
                           texto(r.texto(L01::TipoAtividade))});
    const std::string fone_empresa = fone_de(e, L02::Fone, "telefone da empresa"),
                      fax_empresa = fone_de(e, L02::Fax, "fax da empresa");
    out_.registro("0005", {texto(e.texto(L02::NomeFantasia)), texto(e.texto(L02::Cep)), texto(e.texto(L02::Endereco)),
                           texto(e.texto(L02::Numero)), texto(e.texto(L02::Complemento)), texto(e.texto(L02::Bairro)),
                           texto(fone_empresa), texto(fax_empresa), texto(e.texto(L02::Email))});
    const std::string cpf = identidade::documento(c.texto(L03::Cpf));
    const std::string cnpj_contador = identidade::documento(c.texto(L03::Cnpj));
    confere(c, "CPF inválido", "CPF do contador", c.texto(L03::Cpf), identidade::verificar_cpf(cpf));
    confere(c, "CNPJ inválido", "CNPJ do escritório do contador", c.texto(L03::Cnpj),
            identidade::verificar_cnpj(cnpj_contador));
    const std::string fone_contador = fone_de(c, L03::Fone, "telefone do contador"),
                      fax_contador = fone_de(c, L03::Fax, "fax do contador");
    out_.registro("0100", {texto(c.texto(L03::Nome)), texto(cpf), texto(c.texto(L03::Crc)), texto(cnpj_contador),
                           texto(c.texto(L03::Cep)), texto(c.texto(L03::Endereco)), texto(c.texto(L03::Numero)),
                           texto(c.texto(L03::Complemento)), texto(c.texto(L03::Bairro)), texto(fone_contador),
                           texto(fax_contador), texto(c.texto(L03::Email)), texto(c.texto(L03::IbgeCidade))});
  }

  // The checks of the codes used that waited for the catalogues. Any of them failing ends the
  // run with an Error that asks for the text again: read with its catalogues first, the month
  // gives each problem with the note or line at fault, as the month's list wants it.
  void confere_adiados() {
    bool ok = true;
    for (const std::string& cod : participantes_usados_.ordem) {
      const ParticipanteCadastrado* p = cadastros_.participante(cod);
      ok = ok && p && p->problemas.empty();
    }
    for (const auto& [cod, uf] : ufs_das_chaves_) {
      const ParticipanteCadastrado* p = cadastros_.participante(cod);
      ok = ok && (p->uf.empty() || p->uf == uf);
    }
    for (const Usados* itens : {&itens_usados_, &itens_do_inventario_})
      for (const std::string& cod : itens->ordem) {
        const ItemCadastrado* i = cadastros_.item(cod);
        ok = ok && i && i->problemas.empty();
      }
    ok = ok && resolve_unidades(unidades_usadas_) && resolve_unidades(unidades_do_inventario_);
    if (!ok)
      throw Error("SPED EFD ICMS/IPI: um código usado pelas notas falta nos cadastros ou tem problemas; "
                  "a conversão precisa ler o arquivo de informações de novo");
  }

  // The units in the order of first use, each item's in its place; false when one of them is
  // not in the catalogue. REQUIRES: every item used is.
  bool resolve_unidades(Usados& unidades) const {
    Usados resolvidas;
    for (const std::string& uso : unidades.a_resolver) {
      const std::string_view unid =
          uso.front() == 'I' ? std::string_view(cadastros_.item(uso.substr(1))->unidade) : std::string_view(uso).substr(1);
      if (!cadastros_.unidade(unid)) return false;
      resolvidas.usa(unid);
    }
    unidades = std::move(resolvidas);
    return true;
  }

  // The codes of block C in the order of their first use, then those that only block H uses.
  static std::vector<std::string> em_ordem(const Usados& c, const Usados& h) {
    std::vector<std::string> ordem = c.ordem;
    for (const std::string& cod : h.ordem)
      if (!c.vistos.count(cod)) ordem.push_back(cod);
    return ordem;
  }

  void bloco_0_codigos() {
    for (const std::string& cod : participantes_usados_.ordem) r0150(cod, *cadastros_.participante(cod));
    for (const std::string& unid : em_ordem(unidades_usadas_, unidades_do_inventario_))
      out_.registro("0190", {texto(unid), texto(*cadastros_.unidade(unid))});
    for (const std::string& cod : em_ordem(itens_usados_, itens_do_inventario_)) {
      const ItemCadastrado& i = *cadastros_.item(cod);
      out_.registro("0200", {texto(cod), texto(i.descricao), vazio(), vazio(), texto(i.unidade),
                             texto(tipo_item(i.tipo)), i.ncm.size() == 8 ? texto(i.ncm) : vazio(), vazio(), vazio(),
                             vazio(), vazio(), i.cest.size() == 7 && i.cest != "0000000" ? texto(i.cest) : vazio()});
    }
  }

  // Block 0 was the last to need the catalogues and the codes used. On a large month they are
  // the converter's largest holdings, and they go before block C is copied after block 0, which
  // is when the validator holds the most.
  void esquece_os_codigos() {
    cadastros_ = Cadastros();
    participantes_usados_ = itens_usados_ = unidades_usadas_ = itens_do_inventario_ = unidades_do_inventario_ = Usados();
    itens_relatados_ = {};
    ufs_das_chaves_ = {};
    return_free_memory();
  }

  void r0150(const std::string& cod, const ParticipanteCadastrado& p) {
    out_.registro("0150", {texto(cod), texto(p.nome), texto(p.pais), texto(p.cnpj), texto(p.cpf), texto(p.ie),
                           texto(p.municipio), vazio(), texto(p.endereco), texto(p.numero), vazio(), texto(p.bairro)});
  }

  // ---- block E

  // The year-end inventory belongs to the file of one of the two months after its date
  // (31/12 in January's or February's): said when it comes in another month.
  void mes_do_inventario(const LinhaInformacao& h) const {
    if (h.texto(L18::Data).empty()) return;
    const TimeStamp d = h.data(L18::Data);
    const int meses = (ano_ * 12 + mes_) - (d.year * 12 + d.month);
    if (meses == 1 || meses == 2) return;
    const int m1 = d.month % 12 + 1, a1 = d.year + (d.month == 12), m2 = m1 % 12 + 1, a2 = a1 + (m1 == 12);
    info(fmt::format("Inventário de fim de ano de {} (linha {} do arquivo de informações) no arquivo de {:02}/{}: "
                     "o inventário se apresenta até o segundo mês seguinte à sua data, na escrituração de {:02}/{} "
                     "ou de {:02}/{} (Guia Prático da EFD ICMS/IPI, registro H005)",
                     h.texto(L18::Data), h.numero, mes_, ano_, m1, a1, m2, a2));
  }

  void bloco_e() {
    out_.registro("E100", {data(dt_ini_), data(dt_fin_)});
    CamposE110 f{};
    f[2] = debitos_;
    f[6] = creditos_;
    f[10] = saldo_credor_anterior_;
    completa_e110(f);
    out_.registro("E110", {centesimos(f[2]), centesimos(f[3]), centesimos(f[4]), centesimos(f[5]), centesimos(f[6]),
                           centesimos(f[7]), centesimos(f[8]), centesimos(f[9]), centesimos(f[10]), centesimos(f[11]),
                           centesimos(f[12]), centesimos(f[13]), centesimos(f[14]), centesimos(f[15])});
    if (f[13] > 0) {
      const int mes = mes_ % 12 + 1, ano = mes_ == 12 ? ano_ + 1 : ano_;
      const Dia vencimento = opcoes_.vencimento ? opcoes_.vencimento : ano * 10000 + mes * 100 + 10;
      const std::string_view receita =
          opcoes_.codigo_receita.empty() ? std::string_view("000") : std::string_view(opcoes_.codigo_receita);
      out_.registro("E116", {texto("000"), centesimos(f[13]), data(vencimento), texto(receita), vazio(), vazio(),
                             vazio(), vazio(), mes_ano(ano_, mes_)});
      // Neither is in the information file: a placeholder is said, never filed unnoticed.
      std::vector<std::string> marcadores;
      if (opcoes_.codigo_receita.empty()) marcadores.emplace_back("o código de receita 000");
      if (!opcoes_.vencimento) marcadores.push_back("o vencimento " + data_legivel(vencimento));
      if (!marcadores.empty())
        info(fmt::format("E116: {} {}; confirme com as regras do estado antes de transmitir (opções --codigo-receita e "
                         "--vencimento)",
                         fmt::join(marcadores, " e "), marcadores.size() > 1 ? "são marcadores" : "é um marcador"));
    }
  }

  Cadastros cadastros_;
  const bool adiado_;  // the catalogues come with the text, after the notes
  const int notas_;
  const TProcLinhaInfo& info_;
  const TProcProgresso& progresso_;
  const OpcoesEfd& opcoes_;
  std::int64_t saldo_credor_anterior_ = 0;
  EscritorEfd out_;
  Usados participantes_usados_, itens_usados_, unidades_usadas_;  // by block C
  Usados itens_do_inventario_, unidades_do_inventario_;           // by block H
  // The inventory being read: H005 carries its total, so its H010 wait for its last part.
  struct InventarioEmCurso {
    struct Linha010 {
      std::string cod, unidade;
      std::int64_t qtd, total, unitario;
    };
    const LinhaInformacao* cabecalho = nullptr;  // line 16 or 18, valid while the parts come
    std::vector<Linha010> itens;                 // one per item: duplicates merged
    std::unordered_map<std::string, std::size_t> posicao;
    std::int64_t total = 0;
    bool com_problema = false;  // then nothing of it is written: the month is refused
  } inventario_;
  std::unordered_set<std::string> itens_relatados_;  // items whose catalogue problems are listed
  // Parties and the state of their notes' keys, to compare once the catalogues have come.
  std::set<std::pair<std::string, std::string_view>> ufs_das_chaves_;
  std::string uf_;  // the company's
  std::vector<Grupo> grupos_;  // of the note being booked, reused
  ProblemasDoMes problemas_;
  int ano_ = 0, mes_ = 0, documentos_ = 0, nota_ = 0, inutilizados_ = 0;
  Dia dt_ini_ = 0, dt_fin_ = 0;
  std::int64_t debitos_ = 0, creditos_ = 0;
  std::int64_t uso_consumo_ = 0, imobilizado_ = 0;  // ICMS of entries not credited
  int transportes_ = 0;                              // D100 written
};

// The refusal: each finding with the record it is about, read back from what was written.
std::string recusa(const std::vector<std::string>& achados, SaidaFiscal& saida) {
  std::set<std::size_t> citadas;
  for (const auto& a : achados) citadas.insert(std::stoul(a.substr(6)));
  std::unordered_map<std::size_t, std::string> registros;
  DivisorDeLinhas divisor;
  std::size_t numero = 0;
  const auto linha = [&](std::string_view l, bool) {
    if (!citadas.count(++numero)) return;
    if (!l.empty() && l.back() == '\r') l.remove_suffix(1);
    registros.emplace(numero, windows1252_to_utf8(l));
  };
  saida.rele([&](std::string_view pedaco) { divisor.le(pedaco, linha); });
  divisor.fim(linha);
  std::string msg = "Arquivo SPED EFD ICMS/IPI inválido; nada foi gravado:";
  for (const auto& a : achados) {
    msg += "\n" + a;
    if (const auto it = registros.find(std::stoul(a.substr(6))); it != registros.end()) msg += " em " + it->second;
  }
  return msg;
}

}  // namespace

void gerar_efd(TextoDeInformacao& informacao, SaidaFiscal& saida, const TProcLinhaInfo& info,
               const TProcProgresso& progresso, const OpcoesEfd& opcoes) {
  Cadastros cadastros;
  const bool uma_vez = informacao.uma_vez();
  const ContagemDeLinhas contagem = uma_vez ? ContagemDeLinhas{} : ler_informacao(informacao, cadastros, Leitura::cadastros);
  ValidadorEfd validador;
  LeitorEmParalelo em_paralelo(validador);
  SaidaConferida conferida(saida, em_paralelo);
  GeradorEfd gerador(std::move(cadastros), uma_vez, contagem.notas, conferida, info, progresso, opcoes);
  ler_informacao(informacao, gerador);
  gerador.conclui();
  em_paralelo.espera();
  const std::vector<std::string> achados = validador.conclui();
  if (!achados.empty()) throw Error(recusa(achados, saida));
}

std::string gerar_efd(std::string_view informacao, const TProcLinhaInfo& info, const TProcProgresso& progresso,
                      const OpcoesEfd& opcoes) {
  TextoEmMemoria texto(informacao);
  SaidaEmMemoria saida;
  gerar_efd(texto, saida, info, progresso, opcoes);
  return saida.bytes();
}

}  // namespace infofiscal
