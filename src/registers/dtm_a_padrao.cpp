#include "registers/dtm_a_padrao.h"

namespace infofiscal {

namespace {

std::vector<FieldDef> registro_fiscal_fields() {
  return {
      {"CDREGISTROFISCAL", FieldClass::Integer, 0},
      {"CDTIPOREGISTROFISCAL", FieldClass::Smallint, 0},
      {"CDEMPRESA", FieldClass::Integer, 0},
      {"CDUSUARIO", FieldClass::Integer, 0},
      {"CDINVENTARIOFINALMES", FieldClass::Integer, 0},
      {"CDINVENTARIOFINALANO", FieldClass::Integer, 0},
      {"CDREGISTROFISCALEMP", FieldClass::Integer, 0},
      {"REGCOMPRAINSUMO", FieldClass::String, 1},
      {"REGTRANSFEQUIPAMENTOCLIENTE", FieldClass::String, 1},
      {"REGTRANSFEQUIPAMENTOFORNECEDOR", FieldClass::String, 1},
      {"REGTRANSFPRODUTOFORNECEDOR", FieldClass::String, 1},
      {"REGDEVCOMPRAEQUIPAMENTO", FieldClass::String, 1},
      {"REGDEVCOMPRAPRODCONSUMO", FieldClass::String, 1},
      {"REGDEVCOMPRAINSUMO", FieldClass::String, 1},
      {"REGDEVVENDAEQUIPAMENTO", FieldClass::String, 1},
      {"NUMREGANTERIOR", FieldClass::String, 30},
      {"PERFILAPRESENTARARQ", FieldClass::String, 1},
      {"INDICADORNATPESSOAJURIDICA", FieldClass::String, 2},
      {"INDICADORMETODOAPROPCREDITO", FieldClass::String, 2},
      {"INDICADORTIPOCONTRIBUICAO", FieldClass::String, 2},
      {"ANO", FieldClass::Integer, 0},
      {"CDMES", FieldClass::Smallint, 0},
      {"ETIQUETA", FieldClass::String, 255},
      {"REG_1011", FieldClass::String, 1},
      {"REG_1010", FieldClass::String, 1},
      {"REG_1012", FieldClass::String, 1},
      {"MODELO_NF", FieldClass::String, 2},
      {"SERIE_NF", FieldClass::String, 3},
      {"REGVENDAPRODUTO", FieldClass::String, 1},
      {"REGCOMPRAEQUIPAMENTO", FieldClass::String, 1},
      {"REGVENDAEQUIPAMENTO", FieldClass::String, 1},
      {"REGCOMPRAPRODUTO", FieldClass::String, 1},
      {"REGCOMPRAPRODCONSUMO", FieldClass::String, 1},
      {"REGTRANSFPRODUTOCLIENTE", FieldClass::String, 1},
      {"REGDEVVENDAPRODUTO", FieldClass::String, 1},
      {"REGDEVCOMPRAPRODUTO", FieldClass::String, 1},
      {"FINALIDADEARQUIVO", FieldClass::String, 1},
      {"OBS", FieldClass::Blob, 0},
      {"DATAREGISTROFISCAL", FieldClass::TimeStamp, 0},
      {"INDICADORSITESPECIAL", FieldClass::String, 1},
      {"TIPOEXPORTACAO", FieldClass::Smallint, 0},
      {"TIPOEXPORTACAOINICIO", FieldClass::Integer, 0},
      {"TIPOEXPORTACAOFINAL", FieldClass::Integer, 0},
      {"INDICADORINCIDENCIATRIBUTARIA", FieldClass::String, 2},
      {"TIPOFILTROCOMPRA", FieldClass::Smallint, 0},
      {"INDICADORTIPOATIVIDADE", FieldClass::String, 1},
      {"INDICADORCRITESCRITURACAO", FieldClass::String, 2},
      {"REGINVENTARIOFINALMES", FieldClass::String, 1},
      {"REGINVENTARIOFINALANO", FieldClass::String, 1},
  };
}

}  // namespace

TDTM_A_Padrao::TDTM_A_Padrao(TDTM_ConexaoDS& conexao)
    : TDTM_FPadraoConsulta(conexao),
      TabRegistroFiscal("TabRegistroFiscal", "DspRegistroInfoFiscal", registro_fiscal_fields(), 1) {
  Bind(TabRegistroFiscal);
}

void TDTM_A_Padrao::ConsRegistroFiscal() {
  TabRegistroFiscal.Reopen({FCodRegistroFiscal});
}

int TDTM_A_Padrao::ContaNumRegistro(ClientDataSet& DataSet) {
  int count = 0;
  try {
    DataSet.First();
    while (!DataSet.Eof()) {
      DataSet.Next();
      ++count;
    }
  } catch (...) {
    DataSet.First();
    throw;
  }
  DataSet.First();
  return count;
}

bool TDTM_A_Padrao::SwitchOn(std::string_view field) const {
  return TabRegistroFiscal.FieldByName(field).AsString() == "S";
}

}  // namespace infofiscal
