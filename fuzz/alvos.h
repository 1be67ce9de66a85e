// The bodies of the fuzz targets, shared by the libFuzzer entry points in this folder and by
// the ordinary test that replays the inputs kept in tests/data/fuzz-regressions/.
//
// Contract under test: whatever the bytes, the reader either succeeds or throws
// infofiscal::Error (a message for the user). Any other exception, a crash, a leak or
// undefined behaviour is a fault.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "export/obj_exportainfofiscal.h"
#include "fiscal/efd.h"
#include "fiscal/sintegra.h"
#include "informacao/leitor.h"
#include "host/client_dataset.h"
#include "base/error.h"
#include "base/system.h"
#include "host/sources/snapshot_source.h"

namespace infofiscal::fuzz {

inline std::string_view como_texto(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Reads every field of every row in each of the four conversions, as generators do.
inline void ler_tudo(ClientDataSet& tab) {
  for (tab.First(); !tab.Eof(); tab.Next()) {
    for (int i = 0; i < static_cast<int>(tab.Fields().size()); ++i) {
      const Field f = tab.FieldAt(i);
      std::string text;
      f.AppendString(text);
      try { f.AsInteger(); } catch (const Error&) {}
      try { f.AsFloat(); } catch (const Error&) {}
      try { f.AsDateTime(); } catch (const Error&) {}
    }
  }
}

// Every entry of the document fetched the way it declares (parameter open or data request),
// with the fields its first row names, each field class in turn.
inline void abrir_cada_resposta(const nlohmann::json& doc, RecordSource& source) {
  static constexpr FieldClass kClasses[] = {FieldClass::String, FieldClass::Integer, FieldClass::Smallint,
                                            FieldClass::Float,  FieldClass::Single,  FieldClass::TimeStamp,
                                            FieldClass::Blob};
  int n = 0;
  for (const auto& entry : doc["responses"]) {
    if (++n > 8) break;
    std::vector<std::string> names;
    if (const auto rows = entry.find("rows"); rows != entry.end() && !rows->empty())
      for (const auto& [name, cell] : rows->front().items()) names.push_back(name);
    std::vector<FieldDef> fields;
    for (std::size_t i = 0; i < names.size(); ++i) fields.push_back({names[i], kClasses[(i + n) % 7], 0});
    const bool request = entry.contains("request");
    const auto& args = entry[request ? "request" : "params"];
    std::vector<Value> values;
    for (const auto& a : args) values.push_back(value_from_json(a, FieldClass::Integer));
    ClientDataSet tab("TabFuzz", entry["provider"].get<std::string>(), fields, static_cast<int>(values.size()));
    tab.SetRemoteServer(&source);
    try {
      if (request) {
        tab.DataRequest(values);
      } else {
        for (std::size_t i = 0; i < values.size(); ++i) tab.SetParam(static_cast<int>(i), values[i]);
        tab.Open();
      }
      ler_tudo(tab);
    } catch (const Error&) {
    }
  }
}

// The fiscal register a snapshot was recorded for: the parameter of its first answer of the
// register's provider (7 when there is none to read).
inline int registro_do(const nlohmann::json& doc) {
  for (const auto& entry : doc["responses"]) {
    const auto provider = entry.find("provider"), params = entry.find("params");
    if (provider != entry.end() && *provider == "DspRegistroInfoFiscal" && params != entry.end() &&
        params->is_array() && params->size() == 1 && (*params)[0].is_number_integer())
      return static_cast<int>((*params)[0].get<std::int64_t>());
  }
  return 7;
}

// A snapshot file: read from a file as `--fonte snapshot:` reads it, then a whole export run
// of its fiscal register over it (every generator that its switches turn on), then each entry
// opened on its own.
inline void snapshot(const std::uint8_t* data, std::size_t size) {
  // One file of this process's own in the temporary folder, written again for each input.
  static const std::string path =
      utf8_of(std::filesystem::temp_directory_path() /
              path_of("infofiscal-fuzz-" + std::to_string(std::random_device{}()) + ".json"));
  bool written = false;
  {
    std::ofstream out(path_of(path), std::ios::binary | std::ios::trunc);
    written = static_cast<bool>(out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size)));
  }
  try {
    if (written) {
      SnapshotSource source(path);
      // The source read it: the bytes are a well-formed snapshot.
      const nlohmann::json doc = nlohmann::json::parse(como_texto(data, size));
      TDTM_ConexaoDS conexao{source, TOBJ_InfoSistema_v11c([] { return 1; })};
      for (const TRegistroFiscal tipo : {TRegistroFiscal{1}, TRegistroFiscal{2}}) {
        TOBJ_ExportaInfoFiscal run(conexao);
        run.CodTipoRegistroFiscal(tipo);
        run.CodRegistroFiscal(registro_do(doc));
        try {
          run.RecInformacao(0, 0);
        } catch (const Error&) {
        }
      }
      abrir_cada_resposta(doc, source);
    }
  } catch (const Error&) {
  }
  std::error_code ec;
  std::filesystem::remove(path_of(path), ec);
}

// Every column of a line read in each of the converters' three ways.
inline void ler_colunas(const LinhaInformacao& linha) {
  for (int n = 0; n < static_cast<int>(linha.colunas.size()); ++n) {
    try { linha.inteiro(n); } catch (const Error&) {}
    try { linha.centesimos(n); } catch (const Error&) {}
    try { linha.data(n); } catch (const Error&) {}
  }
}

struct LerColunas final : LeitorDeInformacao {
  void cabecalho(const CabecalhoInformacao& c) override {
    ler_colunas(c.registro);
    ler_colunas(c.empresa);
    if (c.contador) ler_colunas(*c.contador);
  }
  void nota(const NotaInformacao& nota) override {
    ler_colunas(nota.cabecalho);
    if (nota.parte) ler_colunas(*nota.parte);
    for (const LinhaInformacao& l : nota.itens) ler_colunas(l);
  }
  void cadastro(const LinhaInformacao& l) override { ler_colunas(l); }
  void inventario(const InventarioInformacao& inv) override {
    ler_colunas(inv.cabecalho);
    for (const LinhaInformacao& l : inv.itens) ler_colunas(l);
  }
};

// The information-file reader, both ways, with every column read in each of the converters'
// three ways; then both converters.
inline void informacao(const std::uint8_t* data, std::size_t size) {
  const std::string_view texto = como_texto(data, size);
  for (const Leitura leitura : {Leitura::completa, Leitura::cadastros}) {
    try {
      LerColunas leitor;
      ler_informacao(texto, leitor, leitura);
    } catch (const Error&) {
    }
  }
  try { gerar_sintegra(texto, nullptr, nullptr); } catch (const Error&) {}
  try { gerar_efd(texto, nullptr, nullptr); } catch (const Error&) {}
}

// The structural validators: a finding list or an Error, never a crash.
inline void validar_sintegra(const std::uint8_t* data, std::size_t size) {
  try {
    infofiscal::validar_sintegra(como_texto(data, size));
  } catch (const Error&) {
  }
}

inline void validar_efd(const std::uint8_t* data, std::size_t size) {
  try {
    infofiscal::validar_efd(como_texto(data, size));
  } catch (const Error&) {
  }
}

}  // namespace infofiscal::fuzz
