#include "registers/header/dtm_a_registrofiscal.h"

#include "host/dates.h"
#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

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

void TDTM_A_RegistroFiscal::ConsultarRegistro() { TabRegistroInfoFiscal.Reopen({FCodRegistroFiscal}); }

void TDTM_A_RegistroFiscal::L01_RegistroFiscal(TStringList& AArquivo) {
  ConsultarRegistro();
  // C06 to C15; the tax incidence (C12) stands between the legal-person nature and the credit
  // appropriation method, not in the order of the dataset.
  static const Column kIndicadores[] = {
      {L01::Finalidade, Render::Text, "FINALIDADEARQUIVO"},
      {L01::RegistroAnterior, Render::Text, "NUMREGANTERIOR"},
      {L01::Perfil, Render::Text, "PERFILAPRESENTARARQ"},
      {L01::TipoAtividade, Render::Text, "INDICADORTIPOATIVIDADE"},
      {L01::SituacaoEspecial, Render::Text, "INDICADORSITESPECIAL"},
      {L01::NaturezaPessoaJuridica, Render::Text, "INDICADORNATPESSOAJURIDICA"},
      {L01::IncidenciaTributaria, Render::Text, "INDICADORINCIDENCIATRIBUTARIA"},
      {L01::MetodoApropriacaoCredito, Render::Text, "INDICADORMETODOAPROPCREDITO"},
      {L01::TipoContribuicao, Render::Text, "INDICADORTIPOCONTRIBUICAO"},
      {L01::CriterioEscrituracao, Render::Text, "INDICADORCRITESCRITURACAO"},
  };
  UnderErrorRule("Erro ano Gerar Registro Linha 01: ", [&] {
    const auto& r = TabRegistroInfoFiscal;
    const int mes = static_cast<int>(r.FieldByName("CDMES").AsInteger());
    const int ano = static_cast<int>(r.FieldByName("ANO").AsInteger());
    const auto s_ou_n = [&](const char* field) { return r.FieldByName(field).AsString() == "S" ? "S" : "N"; };
    oLinha.Head(L01::kTipo);
    oLinha.Integer(L01::TipoRegistro, FCodTipoRegistro);
    oLinha.Date(L01::DataInicial, first_day_of_month(mes, ano));
    oLinha.Date(L01::DataFinal, last_day_of_month(mes, ano));
    oLinha.Text(L01::InventarioFinalMes, s_ou_n("REGINVENTARIOFINALMES"));
    oLinha.Text(L01::InventarioFinalAno, s_ou_n("REGINVENTARIOFINALANO"));
    ColumnTable(r, kIndicadores).Write(oLinha);
    oLinha.Trailer(L01::kTrailer);
    oLinha.AddTo(AArquivo);
  });
}

}  // namespace infofiscal
