// Writes a snapshot that answers every fetch of a whole export run (kind 2, fiscal register 7)
// with two rows of every declared field, the switches on: a seed that reaches every generator
// there is, rewritten by scripts/fuzz on every run so that new generators are reached too.
//
//   semente_sintetica OUT.json
#include <cstdio>
#include <exception>
#include <string>

#include "export/obj_exportainfofiscal.h"
#include "host/sources/recording_source.h"

namespace {

using namespace infofiscal;

// Row `row` (0 or 1) of a field: keys 1 and 2, month 3 of 2024, texts with a non-ASCII letter.
Value valor(const FieldDef& f, int row) {
  const std::string nome(f.name);
  switch (f.cls) {
    case FieldClass::String:
      return nome.rfind("REG", 0) == 0 ? std::string("S") : nome.substr(0, 6) + " ç" + std::to_string(row);
    case FieldClass::Integer:
    case FieldClass::Smallint:
      return std::int64_t{nome == "CDMES" ? 3 : nome == "ANO" ? 2024 : nome == "TIPOEXPORTACAO" ? 0 : row + 1};
    case FieldClass::Float:
    case FieldClass::Single:
      return 1234.5 + row;
    case FieldClass::TimeStamp:
      return TimeStamp{2024, 3, 5, row == 0 ? 0 : 10, 20, 30};
    case FieldClass::Blob:
      return std::string("obs");
  }
  return {};
}

class Sintetica : public RecordSource {
 public:
  Packet fetch(const FetchRequest& r) override {
    Packet p;
    p.width = r.fields.size();
    for (int row = 0; row < 2; ++row)
      for (const FieldDef& f : r.fields) p.cells.push_back(valor(f, row));
    return p;
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  Sintetica fonte;
  RecordingSource gravador(fonte);
  TDTM_ConexaoDS conexao{gravador, TOBJ_InfoSistema_v11c([] { return 1; })};
  TOBJ_ExportaInfoFiscal run(conexao);
  run.CodTipoRegistroFiscal(2);
  run.CodRegistroFiscal(7);
  try {
    run.RecInformacao(0, 0);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "semente_sintetica: %s\n", e.what());  // the answers so far still seed
  }
  gravador.Save(argv[1]);
  return 0;
}
