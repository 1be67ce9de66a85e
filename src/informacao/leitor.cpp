#include "informacao/leitor.h"

#include <deque>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/error.h"
#include "informacao/esquema.h"

namespace infofiscal {

namespace {

using namespace linha;

[[noreturn]] void falha(int numero, const std::string& porque) {
  throw Error(fmt::format("Linha {} do arquivo de informações: {}", numero, porque));
}

// A line kept past the text's call: a copy of its text and the line parsed from the copy.
struct Guardada {
  std::string texto;
  LinhaInformacao linha;

  void guarda(std::string_view bruta, int numero) {
    texto.assign(bruta);
    ler_linha_informacao(texto, numero, linha);
  }
};

// Lines kept side by side (a note's items), their storage reused from group to group.
class Guardadas {
 public:
  const LinhaInformacao& guarda(std::string_view bruta, int numero) {
    if (n_ == linhas_.size()) {
      textos_.emplace_back();
      linhas_.emplace_back();
    }
    // A deque never moves its strings, so the views of lines parsed earlier stay valid.
    std::string& texto = textos_[n_];
    texto.assign(bruta);
    ler_linha_informacao(texto, numero, linhas_[n_]);
    return linhas_[n_++];
  }
  void esvazia() { n_ = 0; }
  std::size_t quantas() const { return n_; }
  std::span<const LinhaInformacao> linhas() const { return {linhas_.data(), n_}; }

 private:
  std::deque<std::string> textos_;
  std::vector<LinhaInformacao> linhas_;
  std::size_t n_ = 0;
};

// The group being read: a note or an inventory, its lines owned until it is handed over.
class Grupo {
 public:
  enum class Tipo { Nenhum, Nota, Inventario };

  Tipo tipo() const { return tipo_; }
  const LinhaInformacao& cabecalho() const { return cabecalhos_[atual_].linha; }

  // Parses the header line of the next group, kept apart while the open group is handed over.
  const LinhaInformacao& prepara(std::string_view bruta, int numero) {
    Guardada& g = cabecalhos_[1 - atual_];
    g.guarda(bruta, numero);
    return g.linha;
  }
  // Opens the group prepared. REQUIRES: the open one was handed over.
  void abre(Tipo tipo) {
    atual_ = 1 - atual_;
    tipo_ = tipo;
    tem_parte_ = false;
    primeira_parte_ = true;
    filhas_.esvazia();
  }
  // Whether a line 05 or 06 belongs to the open note: the same note kind and row counter.
  bool da_nota(const LinhaInformacao& l) const {
    return tipo_ == Tipo::Nota && cabecalho().texto(L04::TipoNota) == l.texto(L05::TipoNota) &&
           cabecalho().texto(L04::Contador) == l.texto(L05::Contador);
  }
  bool do_inventario(int tipo) const { return tipo_ == Tipo::Inventario && cabecalho().tipo == tipo - 1; }
  const LinhaInformacao& parte(std::string_view bruta, int numero) {
    parte_.guarda(bruta, numero);
    return parte_.linha;
  }
  void aceita_parte() {
    if (tem_parte_) falha(parte_.linha.numero, "segunda linha 05 da nota");
    tem_parte_ = true;
  }
  const LinhaInformacao& filha(std::string_view bruta, int numero) { return filhas_.guarda(bruta, numero); }
  // A line 17 or 19 of the open inventory; a full part is handed over first.
  void item_de_inventario(std::string_view bruta, int numero, LeitorDeInformacao& leitor) {
    if (filhas_.quantas() == InventarioInformacao::kItensPorParte) entrega_parte(leitor, false);
    filhas_.guarda(bruta, numero);
  }

  // Hands the group over, if there is one, and closes it.
  void entrega(LeitorDeInformacao& leitor) {
    if (tipo_ == Tipo::Nota)
      leitor.nota(NotaInformacao{cabecalho(), tem_parte_ ? &parte_.linha : nullptr, filhas_.linhas()});
    if (tipo_ == Tipo::Inventario) entrega_parte(leitor, true);
    tipo_ = Tipo::Nenhum;
  }

 private:
  Tipo tipo_ = Tipo::Nenhum;
  Guardada cabecalhos_[2];  // the open group's and the next one's
  int atual_ = 0;
  Guardada parte_;
  bool tem_parte_ = false;
  bool primeira_parte_ = true;  // of the open inventory: none handed over yet
  Guardadas filhas_;

  void entrega_parte(LeitorDeInformacao& leitor, bool ultima) {
    leitor.inventario(InventarioInformacao{cabecalho(), filhas_.linhas(), primeira_parte_, ultima});
    primeira_parte_ = false;
    filhas_.esvazia();
  }
};

// Lines 01, 02 and 03, kept until the reading ends.
class Cabecalho {
 public:
  bool entregue() const { return entregue_; }

  // Keeps the header line `l`, parsed from `bruta`.
  void guarda(const LinhaInformacao& l, std::string_view bruta) {
    if (entregue_)
      falha(l.numero, fmt::format("linha {:02} depois das notas, cadastros ou inventários: as linhas 01, 02 e 03 "
                                  "abrem o arquivo",
                                  l.tipo));
    if (visto(l.tipo)) falha(l.numero, fmt::format("segunda linha {:02}", l.tipo));
    linhas_[l.tipo - L01::kTipo].guarda(bruta, l.numero);
  }

  // Hands the header over before line `numero`, of type `tipo`, the first of another type.
  void entrega_antes(int tipo, int numero, LeitorDeInformacao& leitor) {
    for (const auto& [t, nome] : {std::pair{L01::kTipo, "registro fiscal"}, std::pair{L02::kTipo, "empresa"}})
      if (!visto(t))
        falha(numero, fmt::format("linha {:02} antes da linha {:02} ({}): as linhas 01, 02 e 03 abrem o arquivo",
                                  tipo, t, nome));
    entrega(leitor);
  }

  // Hands the header over at the end of a text that has nothing else.
  void entrega_no_fim(LeitorDeInformacao& leitor) {
    if (!visto(L01::kTipo)) throw Error("O arquivo de informações não tem a linha 01 (registro fiscal)");
    if (!visto(L02::kTipo)) throw Error("O arquivo de informações não tem a linha 02 (empresa)");
    entrega(leitor);
  }

 private:
  bool visto(int tipo) const { return linhas_[tipo - L01::kTipo].linha.tipo != 0; }
  void entrega(LeitorDeInformacao& leitor) {
    entregue_ = true;
    leitor.cabecalho(CabecalhoInformacao{linhas_[0].linha, linhas_[1].linha,
                                         visto(L03::kTipo) ? &linhas_[2].linha : nullptr});
  }

  Guardada linhas_[3];
  bool entregue_ = false;
};

bool de_nota_ou_inventario(int tipo) {
  return (tipo >= L04::kTipo && tipo <= L06::kTipo) || (tipo >= L16::kTipo && tipo <= L19::kTipo);
}

// Reads one line after another. Each line is parsed first (its own faults come first), then
// placed (the faults of its place in the file), and only then is the group it closes handed
// over.
class Agrupador {
 public:
  Agrupador(LeitorDeInformacao& leitor, Leitura leitura) : leitor_(leitor), leitura_(leitura) {}

  void linha(std::string_view bruta, int numero) {
    const int tipo = tipo_da_linha(bruta);
    contagem_.notas += tipo == L04::kTipo;
    contagem_.itens_de_inventario += tipo == L17::kTipo || tipo == L19::kTipo;
    if (leitura_ == Leitura::cadastros && de_nota_ou_inventario(tipo)) {
      depois_do_cabecalho(tipo, numero);
      return;
    }
    switch (tipo) {
      case L04::kTipo:
      case L16::kTipo:
      case L18::kTipo:
        grupo_.prepara(bruta, numero);
        depois_do_cabecalho(tipo, numero);
        grupo_.entrega(leitor_);
        grupo_.abre(tipo == L04::kTipo ? Grupo::Tipo::Nota : Grupo::Tipo::Inventario);
        break;
      case L05::kTipo: {
        const LinhaInformacao& l = grupo_.parte(bruta, numero);
        depois_do_cabecalho(tipo, numero);
        if (!grupo_.da_nota(l)) falha(numero, "linha 05 sem a linha 04 da sua nota");
        grupo_.aceita_parte();
        break;
      }
      case L06::kTipo: {
        const LinhaInformacao& l = grupo_.filha(bruta, numero);
        depois_do_cabecalho(tipo, numero);
        if (!grupo_.da_nota(l)) falha(numero, "linha 06 sem a linha 04 da sua nota");
        break;
      }
      case L17::kTipo:
      case L19::kTipo:
        if (!grupo_.do_inventario(tipo)) {
          avulsa_.guarda(bruta, numero);
          depois_do_cabecalho(tipo, numero);
          falha(numero, fmt::format("linha {:02} sem a linha {:02} do seu inventário", tipo, tipo - 1));
        }
        grupo_.item_de_inventario(bruta, numero, leitor_);
        break;
      default: {
        avulsa_.guarda(bruta, numero);
        const LinhaInformacao& l = avulsa_.linha;
        if (l.tipo >= L01::kTipo && l.tipo <= L03::kTipo) {
          cabecalho_.guarda(l, bruta);
        } else if (l.tipo >= L12::kTipo && l.tipo <= L15::kTipo) {
          depois_do_cabecalho(l.tipo, numero);
          grupo_.entrega(leitor_);
          leitor_.cadastro(l);
        } else {
          falha(numero, fmt::format("tipo de linha {:02} desconhecido", l.tipo));
        }
      }
    }
  }

  ContagemDeLinhas fim(int linhas) {
    grupo_.entrega(leitor_);
    if (!cabecalho_.entregue()) cabecalho_.entrega_no_fim(leitor_);
    contagem_.linhas = linhas;
    return contagem_;
  }

 private:
  void depois_do_cabecalho(int tipo, int numero) {
    if (!cabecalho_.entregue()) cabecalho_.entrega_antes(tipo, numero, leitor_);
  }

  LeitorDeInformacao& leitor_;
  const Leitura leitura_;
  ContagemDeLinhas contagem_;
  Cabecalho cabecalho_;
  Grupo grupo_;
  Guardada avulsa_;  // a header or catalogue line, or a line that fails
};

}  // namespace

ContagemDeLinhas ler_informacao(TextoDeInformacao& texto, LeitorDeInformacao& leitor, Leitura leitura) {
  if (!texto.uma_vez()) texto.reinicia();  // one read once is at its first line
  Agrupador agrupador(leitor, leitura);
  int numero = 0;
  for (std::string_view bruta; texto.proxima(bruta);)
    if (++numero, !bruta.empty()) agrupador.linha(bruta, numero);
  return agrupador.fim(numero);
}

ContagemDeLinhas ler_informacao(std::string_view texto, LeitorDeInformacao& leitor, Leitura leitura) {
  TextoEmMemoria em_memoria(texto);
  return ler_informacao(em_memoria, leitor, leitura);
}

}  // namespace infofiscal
