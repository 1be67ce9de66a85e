#include "registers/outgoing/dtm_a_nf_numinutilizado.h"

#include "informacao/esquema.h"

namespace infofiscal {

using namespace linha;

TDTM_A_NF_NumInutilizado::TDTM_A_NF_NumInutilizado(TDTM_ConexaoDS& conexao)
    : TDTM_A_Padrao(conexao),
      TabNFeInutilizada("TabNFeInutilizada", "DspListaNFeInutilizado",
                        {
                            {"CDNFE_INUTILIZADO", FieldClass::Integer, 0},
                            {"DATA", FieldClass::TimeStamp, 0},
                            {"CDNFE_NUMINUTILIZADO", FieldClass::Integer, 0},
                        },
                        2) {
  FTipoProcesso = 21;
  Bind(TabNFeInutilizada);
}

void TDTM_A_NF_NumInutilizado::L04_RegistroNF_NumInutilizado(TStringList& AArquivo) {
  ConsRegistroFiscal();
  TabNFeInutilizada.DataRequest({std::int64_t{FCodTipoRegistroFiscal}, std::int64_t{FCodRegistroFiscal}});
  const int total = TabNFeInutilizada.RecordCount();
  int contador = 0;
  while (!TabNFeInutilizada.Eof()) {
    ++contador;
    FProcProgresso(contador, total);
    L04_NF_Inutilizado(contador, AArquivo);
    TabNFeInutilizada.Next();
  }
}

void TDTM_A_NF_NumInutilizado::L04_NF_Inutilizado(std::int32_t ANumRegistro, TStringList& AArquivo) {
  // C03 on; every column that the number does not fill is a literal: the zero amounts are
  // "0,00" with a comma whatever the renderings do.
  static const Column kColunas[] = {
      {L04::Numero, Render::Text, "CDNFE_NUMINUTILIZADO"},
      {L04::Cfop, Render::Empty},
      {L04::Chave, Render::Empty},
      {L04::Modelo, Render::Constant, "55"},
      {L04::Serie, Render::Empty},
      {L04::Emissao, Render::Empty},
      {L04::EntradaSaida, Render::Empty},
      {L04::Total, Render::Constant, "0,00"},
      {L04::Desconto, Render::Constant, "0,00"},
      {L04::TotalProdutos, Render::Constant, "0,00"},
      {L04::Frete, Render::Constant, "0,00"},
      {L04::Seguro, Render::Constant, "0,00"},
      {L04::OutrasDespesas, Render::Constant, "0,00"},
      {L04::IcmsBase, Render::Constant, "0,00"},
      {L04::IcmsValor, Render::Constant, "0,00"},
      {L04::IcmsStBase, Render::Constant, "0,00"},
      {L04::IcmsStValor, Render::Constant, "0,00"},
      {L04::IpiValor, Render::Constant, "0,00"},
      {L04::PisValor, Render::Constant, "0,00"},
      {L04::CofinsValor, Render::Constant, "0,00"},
      {L04::Fixo, Render::Constant, "0"},
      {L04::Situacao, Render::Constant, "5"},  // situation: voided
      {L04::IbgeOrigem, Render::Empty},
      {L04::IbgeDestino, Render::Empty},
  };
  UnderErrorRule("Erro ano Gerar Registro Linha 04 : ", [&] {
    oLinha.Head(L04::kTipo);
    oLinha.Integer(L04::TipoNota, FTipoProcesso);
    oLinha.Integer(L04::Contador, ANumRegistro);
    ColumnTable(TabNFeInutilizada, kColunas).Write(oLinha);
    oLinha.Trailer(L04::kTrailer);
    oLinha.AddTo(AArquivo);
  });
}

}  // namespace infofiscal
