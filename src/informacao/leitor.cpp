#include "informacao/leitor.h"

#include <fmt/format.h>

#include "base/error.h"
#include "informacao/esquema.h"

namespace infofiscal {

namespace {

using namespace linha;

[[noreturn]] void falha(const LinhaInformacao& l, const std::string& porque) {
  throw Error(fmt::format("Linha {} do arquivo de informações: {}", l.numero, porque));
}

// The group being read: a note or an inventory, its lines owned until it is handed over.
class Grupo {
 public:
  enum class Tipo { Nenhum, Nota, Inventario };

  Tipo tipo() const { return tipo_; }
  const LinhaInformacao& cabecalho() const { return cabecalho_; }

  void abre(Tipo tipo, LinhaInformacao cabecalho) {
    tipo_ = tipo;
    cabecalho_ = std::move(cabecalho);
    tem_parte_ = false;
    filhas_.clear();
  }
  void parte(LinhaInformacao l) {
    if (tem_parte_) falha(l, "segunda linha 05 da nota");
    parte_ = std::move(l);
    tem_parte_ = true;
  }
  void filha(LinhaInformacao l) { filhas_.push_back(std::move(l)); }

  // Hands the group over, if there is one, and closes it.
  void entrega(LeitorDeInformacao& leitor) {
    if (tipo_ == Tipo::Nota) leitor.nota(NotaInformacao{cabecalho_, tem_parte_ ? &parte_ : nullptr, filhas_});
    if (tipo_ == Tipo::Inventario) leitor.inventario(InventarioInformacao{cabecalho_, filhas_});
    tipo_ = Tipo::Nenhum;
  }

 private:
  Tipo tipo_ = Tipo::Nenhum;
  LinhaInformacao cabecalho_, parte_;
  bool tem_parte_ = false;
  std::vector<LinhaInformacao> filhas_;  // reused from group to group
};

// Whether a line 05 or 06 belongs to the open note: the same note kind and row counter.
bool da_nota(const Grupo& g, const LinhaInformacao& l) {
  return g.tipo() == Grupo::Tipo::Nota && g.cabecalho().texto(L04::TipoNota) == l.texto(L05::TipoNota) &&
         g.cabecalho().texto(L04::Contador) == l.texto(L05::Contador);
}

int conta_linhas(std::string_view texto) {
  int n = 0;
  for (const char c : texto) n += c == '\n';
  return n + (!texto.empty() && texto.back() != '\n');
}

}  // namespace

void ler_informacao(std::string_view texto, LeitorDeInformacao& leitor) {
  const int total = conta_linhas(texto);
  Grupo grupo;
  bool vistas[4] = {};  // lines 01, 02 and 03 seen
  int numero = 0;
  for (std::size_t pos = 0; pos < texto.size();) {
    std::size_t fim = texto.find('\n', pos);
    if (fim == std::string_view::npos) fim = texto.size();
    std::string_view bruta = texto.substr(pos, fim - pos);
    pos = fim + 1;
    if (!bruta.empty() && bruta.back() == '\r') bruta.remove_suffix(1);
    if (++numero % 4096 == 0) leitor.progresso(numero, total);
    if (bruta.empty()) continue;
    LinhaInformacao l = ler_linha_informacao(bruta, numero);
    switch (l.tipo) {
      case L01::kTipo:
      case L02::kTipo:
      case L03::kTipo:
        grupo.entrega(leitor);
        if (vistas[l.tipo]) falha(l, fmt::format("segunda linha {:02}", l.tipo));
        vistas[l.tipo] = true;
        leitor.cabecalho(l);
        break;
      case L04::kTipo:
        grupo.entrega(leitor);
        grupo.abre(Grupo::Tipo::Nota, std::move(l));
        break;
      case L05::kTipo:
      case L06::kTipo:
        if (!da_nota(grupo, l)) falha(l, fmt::format("linha {:02} sem a linha 04 da sua nota", l.tipo));
        if (l.tipo == L05::kTipo) grupo.parte(std::move(l));
        else grupo.filha(std::move(l));
        break;
      case L12::kTipo:
      case L13::kTipo:
      case L14::kTipo:
      case L15::kTipo:
        grupo.entrega(leitor);
        leitor.cadastro(l);
        break;
      case L16::kTipo:
      case L18::kTipo:
        grupo.entrega(leitor);
        grupo.abre(Grupo::Tipo::Inventario, std::move(l));
        break;
      case L17::kTipo:
      case L19::kTipo:
        if (grupo.tipo() != Grupo::Tipo::Inventario || grupo.cabecalho().tipo != l.tipo - 1)
          falha(l, fmt::format("linha {:02} sem a linha {:02} do seu inventário", l.tipo, l.tipo - 1));
        grupo.filha(std::move(l));
        break;
      default:
        falha(l, fmt::format("tipo de linha {:02} desconhecido", l.tipo));
    }
  }
  grupo.entrega(leitor);
  leitor.progresso(numero, total);
  if (!vistas[L01::kTipo]) throw Error("O arquivo de informações não tem a linha 01 (registro fiscal)");
  if (!vistas[L02::kTipo]) throw Error("O arquivo de informações não tem a linha 02 (empresa)");
}

}  // namespace infofiscal
