#include "registers/outgoing/dtm_a_nf_numinutilizado.h"

namespace infofiscal {

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
      {3, Render::Text, "CDNFE_NUMINUTILIZADO"},
      {4, Render::Empty},
      {5, Render::Empty},
      {6, Render::Constant, "55"},
      {7, Render::Empty},
      {8, Render::Empty},
      {9, Render::Empty},
      {10, Render::Constant, "0,00"},
      {11, Render::Constant, "0,00"},
      {12, Render::Constant, "0,00"},
      {13, Render::Constant, "0,00"},
      {14, Render::Constant, "0,00"},
      {15, Render::Constant, "0,00"},
      {16, Render::Constant, "0,00"},
      {17, Render::Constant, "0,00"},
      {18, Render::Constant, "0,00"},
      {19, Render::Constant, "0,00"},
      {20, Render::Constant, "0,00"},
      {21, Render::Constant, "0,00"},
      {22, Render::Constant, "0,00"},
      {23, Render::Constant, "0"},
      {24, Render::Constant, "5"},  // situation: voided
      {25, Render::Empty},
      {26, Render::Empty},
  };
  UnderErrorRule("Erro ano Gerar Registro Linha 04 : ", [&] {
    oLinha.Head(4);
    oLinha.Integer(1, FTipoProcesso);
    oLinha.Integer(2, ANumRegistro);
    ColumnTable(TabNFeInutilizada, kColunas).Write(oLinha);
    oLinha.Trailer(26);
    oLinha.AddTo(AArquivo);
  });
}

}  // namespace infofiscal
