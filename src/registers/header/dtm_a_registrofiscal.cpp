#include "registers/header/dtm_a_registrofiscal.h"

#include "host/dates.h"

namespace infofiscal {

TDTM_A_RegistroFiscal::TDTM_A_RegistroFiscal(TDTM_ConexaoDS& conexao)
    : TDTM_FPadraoConsulta(conexao),
      TabRegistroInfoFiscal("TabRegistroInfoFiscal", "DspRegistroInfoFiscal",
                            {
                                {"CDREGISTROFISCAL", FieldClass::Integer, 0},
                                {"CDMES", FieldClass::Smallint, 0},
                                {"ANO", FieldClass::Integer, 0},
                                {"FINALIDADEARQUIVO", FieldClass::String, 1},
                                {"NUMREGANTERIOR", FieldClass::String, 30},
                                {"PERFILAPRESENTARARQ", FieldClass::String, 1},
                                {"INDICADORTIPOATIVIDADE", FieldClass::String, 1},
                                {"INDICADORSITESPECIAL", FieldClass::String, 1},
                                {"REGVENDAPRODUTO", FieldClass::String, 1},
                                {"CDUSUARIO", FieldClass::Smallint, 0},
                                {"ETIQUETA", FieldClass::String, 255},
                                {"REG_1011", FieldClass::String, 1},
                                {"REG_1010", FieldClass::String, 1},
                                {"REG_1012", FieldClass::String, 1},
                                {"MODELO_NF", FieldClass::String, 2},
                                {"SERIE_NF", FieldClass::String, 3},
                                {"REGCOMPRAEQUIPAMENTO", FieldClass::String, 1},
                                {"REGVENDAEQUIPAMENTO", FieldClass::String, 1},
                                {"REGCOMPRAPRODUTO", FieldClass::String, 1},
                                {"REGCOMPRAINSUMO", FieldClass::String, 1},
                                {"REGCOMPRAPRODCONSUMO", FieldClass::String, 1},
                                {"REGTRANSFPRODUTOCLIENTE", FieldClass::String, 1},
                                {"REGTRANSFEQUIPAMENTOCLIENTE", FieldClass::String, 1},
                                {"REGDEVVENDAPRODUTO", FieldClass::String, 1},
                                {"REGTRANSFEQUIPAMENTOFORNECEDOR", FieldClass::String, 1},
                                {"REGDEVCOMPRAPRODUTO", FieldClass::String, 1},
                                {"REGTRANSFPRODUTOFORNECEDOR", FieldClass::String, 1},
                                {"REGDEVCOMPRAEQUIPAMENTO", FieldClass::String, 1},
                                {"REGDEVCOMPRAPRODCONSUMO", FieldClass::String, 1},
                                {"REGDEVCOMPRAINSUMO", FieldClass::String, 1},
                                {"REGDEVVENDAEQUIPAMENTO", FieldClass::String, 1},
                                {"INDICADORNATPESSOAJURIDICA", FieldClass::String, 2},
                                {"INDICADORMETODOAPROPCREDITO", FieldClass::String, 2},
                                {"INDICADORTIPOCONTRIBUICAO", FieldClass::String, 2},
                                {"INDICADORCRITESCRITURACAO", FieldClass::String, 2},
                                {"OBS", FieldClass::Blob, 0},
                                {"DATAREGISTROFISCAL", FieldClass::TimeStamp, 0},
                                {"INDICADORINCIDENCIATRIBUTARIA", FieldClass::String, 2},
                                {"CDINVENTARIOFINALMES", FieldClass::Integer, 0},
                                {"CDINVENTARIOFINALANO", FieldClass::Integer, 0},
                                {"REGINVENTARIOFINALMES", FieldClass::String, 1},
                                {"REGINVENTARIOFINALANO", FieldClass::String, 1},
                            },
                            1) {
  Bind(TabRegistroInfoFiscal);
}

void TDTM_A_RegistroFiscal::ConsultarRegistro() {
  TabRegistroInfoFiscal.Reopen({FCodRegistroFiscal});
}

void TDTM_A_RegistroFiscal::L01_RegistroFiscal(TStringList& AArquivo) {
  ConsultarRegistro();
  // C06 to C15; the tax incidence (C12) stands between the legal-person nature and the credit
  // appropriation method, not in the order of the dataset.
  static const Column kIndicadores[] = {
      {6, Render::Text, "FINALIDADEARQUIVO"},
      {7, Render::Text, "NUMREGANTERIOR"},
      {8, Render::Text, "PERFILAPRESENTARARQ"},
      {9, Render::Text, "INDICADORTIPOATIVIDADE"},
      {10, Render::Text, "INDICADORSITESPECIAL"},
      {11, Render::Text, "INDICADORNATPESSOAJURIDICA"},
      {12, Render::Text, "INDICADORINCIDENCIATRIBUTARIA"},
      {13, Render::Text, "INDICADORMETODOAPROPCREDITO"},
      {14, Render::Text, "INDICADORTIPOCONTRIBUICAO"},
      {15, Render::Text, "INDICADORCRITESCRITURACAO"},
  };
  UnderErrorRule("Erro ano Gerar Registro Linha 01: ", [&] {
    const auto& r = TabRegistroInfoFiscal;
    const int mes = static_cast<int>(r.FieldByName("CDMES").AsInteger());
    const int ano = static_cast<int>(r.FieldByName("ANO").AsInteger());
    const auto s_ou_n = [&](const char* field) { return r.FieldByName(field).AsString() == "S" ? "S" : "N"; };
    oLinha.Head(1);
    oLinha.Integer(1, FCodTipoRegistro);
    oLinha.Date(2, first_day_of_month(mes, ano));
    oLinha.Date(3, last_day_of_month(mes, ano));
    oLinha.Text(4, s_ou_n("REGINVENTARIOFINALMES"));
    oLinha.Text(5, s_ou_n("REGINVENTARIOFINALANO"));
    ColumnTable(r, kIndicadores).Write(oLinha);
    oLinha.Trailer(15);
    oLinha.AddTo(AArquivo);
  });
}

}  // namespace infofiscal
