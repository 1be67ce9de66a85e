#include "fiscal/efd_layout.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace infofiscal::efd {

namespace {

constexpr bool O = true, OC = false;   // required / filled when the information exists
constexpr bool X = true, L = false;    // exact size / maximum size

// Block opening x001 and closing x990 share one shape.
constexpr Campo kAbertura[] = {{"REG", 'C', 4, X, 0, O}, {"IND_MOV", 'C', 1, X, 0, O, "0|1"}};
constexpr Campo kFechamento[] = {{"REG", 'C', 4, X, 0, O}, {"QTD_LIN", 'N', 0, L, 0, O}};

// 0000. COD_FIN, IND_PERFIL and IND_ATIV come from line 01 as the fiscal register states them;
// CPF stays empty: the entity is a company (CNPJ).
// The CNPJ fields of 0000, 0100 and 0150 hold 14 characters, letters included since the
// alphanumeric CNPJ: typed 'C' of exact size here, checked as a CNPJ by the validator.
constexpr Campo k0000[] = {
    {"REG", 'C', 4, X, 0, O},        {"COD_VER", 'N', 3, X, 0, O},
    {"COD_FIN", 'N', 1, X, 0, O, "0|1"}, {"DT_INI", 'D', 8, X, 0, O},
    {"DT_FIN", 'D', 8, X, 0, O},     {"NOME", 'C', 100, L, 0, O},
    {"CNPJ", 'C', 14, X, 0, OC},     {"CPF", 'N', 11, X, 0, OC},
    {"UF", 'C', 2, X, 0, O},         {"IE", 'C', 14, L, 0, O},
    {"COD_MUN", 'N', 7, X, 0, O},    {"IM", 'C', 0, L, 0, OC},
    {"SUFRAMA", 'C', 9, X, 0, OC},   {"IND_PERFIL", 'C', 1, X, 0, O, "A|B|C"},
    {"IND_ATIV", 'N', 1, X, 0, O, "0|1"},
};
// 0001: always 0, since 0005 and 0100 always exist.
constexpr Campo k0001[] = {{"REG", 'C', 4, X, 0, O}, {"IND_MOV", 'C', 1, X, 0, O, "0"}};
constexpr Campo k0005[] = {
    {"REG", 'C', 4, X, 0, O},   {"FANTASIA", 'C', 60, L, 0, O}, {"CEP", 'N', 8, X, 0, O},
    {"END", 'C', 60, L, 0, O},  {"NUM", 'C', 10, L, 0, OC},     {"COMPL", 'C', 60, L, 0, OC},
    {"BAIRRO", 'C', 60, L, 0, O}, {"FONE", 'C', 11, L, 0, OC},  {"FAX", 'C', 11, L, 0, OC},
    {"EMAIL", 'C', 0, L, 0, OC},
};
// 0100: written in every file (some states dispense it; the layout lists it as required).
constexpr Campo k0100[] = {
    {"REG", 'C', 4, X, 0, O},      {"NOME", 'C', 100, L, 0, O},  {"CPF", 'N', 11, X, 0, O},
    {"CRC", 'C', 15, L, 0, O},     {"CNPJ", 'C', 14, X, 0, OC},  {"CEP", 'N', 8, X, 0, OC},
    {"END", 'C', 60, L, 0, OC},    {"NUM", 'C', 10, L, 0, OC},   {"COMPL", 'C', 60, L, 0, OC},
    {"BAIRRO", 'C', 60, L, 0, OC}, {"FONE", 'C', 11, L, 0, OC},  {"FAX", 'C', 11, L, 0, OC},
    {"EMAIL", 'C', 0, L, 0, O},    {"COD_MUN", 'N', 7, X, 0, OC},
};
// 0150: only participants that a record of the file refers to. IE is written only for a
// company: the information file's registration of a person (a CPF) is an identity number.
constexpr Campo k0150[] = {
    {"REG", 'C', 4, X, 0, O},     {"COD_PART", 'C', 60, L, 0, O}, {"NOME", 'C', 100, L, 0, O},
    {"COD_PAIS", 'N', 5, L, 0, O}, {"CNPJ", 'C', 14, X, 0, OC},   {"CPF", 'N', 11, X, 0, OC},
    {"IE", 'C', 14, L, 0, OC},    {"COD_MUN", 'N', 7, X, 0, OC},  {"SUFRAMA", 'C', 9, X, 0, OC},
    {"END", 'C', 60, L, 0, O},    {"NUM", 'C', 10, L, 0, OC},     {"COMPL", 'C', 60, L, 0, OC},
    {"BAIRRO", 'C', 60, L, 0, OC},
};
constexpr Campo k0190[] = {{"REG", 'C', 4, X, 0, O}, {"UNID", 'C', 6, L, 0, O}, {"DESCR", 'C', 0, L, 0, O}};
// 0200: COD_BARRA, COD_ANT_ITEM, EX_IPI, COD_GEN, COD_LST and ALIQ_ICMS are not in the
// information file and stay empty.
constexpr Campo k0200[] = {
    {"REG", 'C', 4, X, 0, O},         {"COD_ITEM", 'C', 60, L, 0, O},  {"DESCR_ITEM", 'C', 0, L, 0, O},
    {"COD_BARRA", 'C', 0, L, 0, OC},  {"COD_ANT_ITEM", 'C', 60, L, 0, OC}, {"UNID_INV", 'C', 6, L, 0, O},
    {"TIPO_ITEM", 'N', 2, X, 0, O, "00|01|02|03|04|05|06|07|08|09|10|99"},
    {"COD_NCM", 'C', 8, X, 0, OC},    {"EX_IPI", 'C', 3, L, 0, OC},    {"COD_GEN", 'N', 2, X, 0, OC},
    {"COD_LST", 'C', 5, L, 0, OC},    {"ALIQ_ICMS", 'N', 6, L, 2, OC}, {"CEST", 'N', 7, X, 0, OC},
};
// C100. CHV_NFE is typed 'C': the key of an issuer with an alphanumeric CNPJ carries letters.
// IND_PGTO is not in the information file: 2 (others). IND_FRT: 0 (by the sender)
// when the note carries freight, else 9 (no freight). VL_ABAT_NT 0; PIS/COFINS-ST empty.
constexpr Campo kC100[] = {
    {"REG", 'C', 4, X, 0, O},          {"IND_OPER", 'C', 1, X, 0, O, "0|1"},
    {"IND_EMIT", 'C', 1, X, 0, O, "0|1"}, {"COD_PART", 'C', 60, L, 0, OC},
    {"COD_MOD", 'C', 2, X, 0, O, "01|1B|04|55|65"},
    {"COD_SIT", 'N', 2, X, 0, O, "00|01|02|03|04|05|06|07|08"},
    {"SER", 'C', 3, L, 0, OC},         {"NUM_DOC", 'N', 9, L, 0, O},
    {"CHV_NFE", 'C', 44, X, 0, OC},    {"DT_DOC", 'D', 8, X, 0, OC},
    {"DT_E_S", 'D', 8, X, 0, OC},      {"VL_DOC", 'N', 0, L, 2, OC},
    {"IND_PGTO", 'C', 1, X, 0, OC, "0|1|2"}, {"VL_DESC", 'N', 0, L, 2, OC},
    {"VL_ABAT_NT", 'N', 0, L, 2, OC},  {"VL_MERC", 'N', 0, L, 2, OC},
    {"IND_FRT", 'C', 1, X, 0, OC, "0|1|2|3|4|9"}, {"VL_FRT", 'N', 0, L, 2, OC},
    {"VL_SEG", 'N', 0, L, 2, OC},      {"VL_OUT_DA", 'N', 0, L, 2, OC},
    {"VL_BC_ICMS", 'N', 0, L, 2, OC},  {"VL_ICMS", 'N', 0, L, 2, OC},
    {"VL_BC_ICMS_ST", 'N', 0, L, 2, OC}, {"VL_ICMS_ST", 'N', 0, L, 2, OC},
    {"VL_IPI", 'N', 0, L, 2, OC},      {"VL_PIS", 'N', 0, L, 2, OC},
    {"VL_COFINS", 'N', 0, L, 2, OC},   {"VL_PIS_ST", 'N', 0, L, 2, OC},
    {"VL_COFINS_ST", 'N', 0, L, 2, OC},
};
// C100 fields 10-29 are required on a regular document (the reduced record of a cancelled or
// voided one leaves them empty); the validator applies that rule, the table marks them OC.

// C170 (38 fields, the 2020+ layout). DESCR_COMPL, COD_NAT, ALIQ_ST, IND_APUR, COD_ENQ,
// ALIQ_IPI, COD_CTA and VL_ABAT_NT are not in the information file and stay empty; the
// quantity-based PIS/COFINS fields are written only when not zero.
constexpr Campo kC170[] = {
    {"REG", 'C', 4, X, 0, O},           {"NUM_ITEM", 'N', 3, L, 0, O},
    {"COD_ITEM", 'C', 60, L, 0, O},     {"DESCR_COMPL", 'C', 0, L, 0, OC},
    {"QTD", 'N', 0, L, 5, O},           {"UNID", 'C', 6, L, 0, O},
    {"VL_ITEM", 'N', 0, L, 2, O},       {"VL_DESC", 'N', 0, L, 2, OC},
    {"IND_MOV", 'C', 1, X, 0, O, "0|1"}, {"CST_ICMS", 'N', 3, X, 0, O},
    {"CFOP", 'N', 4, X, 0, O},          {"COD_NAT", 'C', 10, L, 0, OC},
    {"VL_BC_ICMS", 'N', 0, L, 2, OC},   {"ALIQ_ICMS", 'N', 6, L, 2, OC},
    {"VL_ICMS", 'N', 0, L, 2, OC},      {"VL_BC_ICMS_ST", 'N', 0, L, 2, OC},
    {"ALIQ_ST", 'N', 6, L, 2, OC},      {"VL_ICMS_ST", 'N', 0, L, 2, OC},
    {"IND_APUR", 'C', 1, X, 0, OC, "0|1"}, {"CST_IPI", 'C', 2, X, 0, OC},
    {"COD_ENQ", 'C', 3, X, 0, OC},      {"VL_BC_IPI", 'N', 0, L, 2, OC},
    {"ALIQ_IPI", 'N', 6, L, 2, OC},     {"VL_IPI", 'N', 0, L, 2, OC},
    {"CST_PIS", 'N', 2, X, 0, OC},      {"VL_BC_PIS", 'N', 0, L, 2, OC},
    {"ALIQ_PIS", 'N', 8, L, 4, OC},     {"QUANT_BC_PIS", 'N', 0, L, 3, OC},
    {"ALIQ_PIS_QUANT", 'N', 0, L, 4, OC}, {"VL_PIS", 'N', 0, L, 2, OC},
    {"CST_COFINS", 'N', 2, X, 0, OC},   {"VL_BC_COFINS", 'N', 0, L, 2, OC},
    {"ALIQ_COFINS", 'N', 8, L, 4, OC},  {"QUANT_BC_COFINS", 'N', 0, L, 3, OC},
    {"ALIQ_COFINS_QUANT", 'N', 0, L, 4, OC}, {"VL_COFINS", 'N', 0, L, 2, OC},
    {"COD_CTA", 'C', 0, L, 0, OC},      {"VL_ABAT_NT", 'N', 0, L, 2, OC},
};
// C190: one per (CST_ICMS, CFOP, ALIQ_ICMS) of a regular document; COD_OBS stays empty.
constexpr Campo kC190[] = {
    {"REG", 'C', 4, X, 0, O},         {"CST_ICMS", 'N', 3, X, 0, O},   {"CFOP", 'N', 4, X, 0, O},
    {"ALIQ_ICMS", 'N', 6, L, 2, OC},  {"VL_OPR", 'N', 0, L, 2, O},     {"VL_BC_ICMS", 'N', 0, L, 2, O},
    {"VL_ICMS", 'N', 0, L, 2, O},     {"VL_BC_ICMS_ST", 'N', 0, L, 2, O}, {"VL_ICMS_ST", 'N', 0, L, 2, O},
    {"VL_RED_BC", 'N', 0, L, 2, O},   {"VL_IPI", 'N', 0, L, 2, O},     {"COD_OBS", 'C', 6, L, 0, OC},
};
// D100 (25 fields, the 2018+ layout): the transport documents (CT-e 57, CT-e OS 67) of
// purchases, booked by the company that took the service (IND_OPER 0, IND_EMIT 1). SUB,
// CHV_CTE_REF, COD_INF and COD_CTA are not in the information file and stay empty; TP_CT-e 0
// (normal); IND_FRT 1 (the freight of a purchase is hired by its receiver, FOB); VL_NT 0.
constexpr Campo kD100[] = {
    {"REG", 'C', 4, X, 0, O},           {"IND_OPER", 'C', 1, X, 0, O, "0|1"},
    {"IND_EMIT", 'C', 1, X, 0, O, "0|1"}, {"COD_PART", 'C', 60, L, 0, OC},
    {"COD_MOD", 'C', 2, X, 0, O, "07|08|8B|09|10|11|26|27|57|63|67"},
    {"COD_SIT", 'N', 2, X, 0, O, "00|01|02|03|04|05|06|07|08"},
    {"SER", 'C', 4, L, 0, OC},          {"SUB", 'C', 3, L, 0, OC},
    {"NUM_DOC", 'N', 9, L, 0, O},       {"CHV_CTE", 'N', 44, X, 0, OC},
    {"DT_DOC", 'D', 8, X, 0, O},        {"DT_A_P", 'D', 8, X, 0, OC},
    {"TP_CT-e", 'N', 1, X, 0, OC, "0|1|2|3"}, {"CHV_CTE_REF", 'N', 44, X, 0, OC},
    {"VL_DOC", 'N', 0, L, 2, O},        {"VL_DESC", 'N', 0, L, 2, OC},
    {"IND_FRT", 'C', 1, X, 0, O, "0|1|2|9"}, {"VL_SERV", 'N', 0, L, 2, O},
    {"VL_BC_ICMS", 'N', 0, L, 2, OC},   {"VL_ICMS", 'N', 0, L, 2, OC},
    {"VL_NT", 'N', 0, L, 2, OC},        {"COD_INF", 'C', 6, L, 0, OC},
    {"COD_CTA", 'C', 0, L, 0, OC},      {"COD_MUN_ORIG", 'N', 7, X, 0, OC},
    {"COD_MUN_DEST", 'N', 7, X, 0, OC},
};
// D190: one per (CST_ICMS, CFOP, ALIQ_ICMS) of a D100; COD_OBS stays empty.
constexpr Campo kD190[] = {
    {"REG", 'C', 4, X, 0, O},        {"CST_ICMS", 'N', 3, X, 0, O}, {"CFOP", 'N', 4, X, 0, O},
    {"ALIQ_ICMS", 'N', 6, L, 2, OC}, {"VL_OPR", 'N', 0, L, 2, O},   {"VL_BC_ICMS", 'N', 0, L, 2, O},
    {"VL_ICMS", 'N', 0, L, 2, O},    {"VL_RED_BC", 'N', 0, L, 2, O}, {"COD_OBS", 'C', 6, L, 0, OC},
};
// E001: always 0 (E100 and E110 are required).
constexpr Campo kE001[] = {{"REG", 'C', 4, X, 0, O}, {"IND_MOV", 'C', 1, X, 0, O, "0"}};
constexpr Campo kE100[] = {{"REG", 'C', 4, X, 0, O}, {"DT_INI", 'D', 8, X, 0, O}, {"DT_FIN", 'D', 8, X, 0, O}};
// E110. No adjustments (C197/E111) are generated, so fields 03-05, 07-09, 12 and 15 are 0.
// VL_SLD_CREDOR_ANT comes from the run's options (a value, or last month's file), else 0.
constexpr Campo kE110[] = {
    {"REG", 'C', 4, X, 0, O},
    {"VL_TOT_DEBITOS", 'N', 0, L, 2, O},  {"VL_AJ_DEBITOS", 'N', 0, L, 2, O},
    {"VL_TOT_AJ_DEBITOS", 'N', 0, L, 2, O}, {"VL_ESTORNOS_CRED", 'N', 0, L, 2, O},
    {"VL_TOT_CREDITOS", 'N', 0, L, 2, O}, {"VL_AJ_CREDITOS", 'N', 0, L, 2, O},
    {"VL_TOT_AJ_CREDITOS", 'N', 0, L, 2, O}, {"VL_ESTORNOS_DEB", 'N', 0, L, 2, O},
    {"VL_SLD_CREDOR_ANT", 'N', 0, L, 2, O}, {"VL_SLD_APURADO", 'N', 0, L, 2, O},
    {"VL_TOT_DED", 'N', 0, L, 2, O},      {"VL_ICMS_RECOLHER", 'N', 0, L, 2, O},
    {"VL_SLD_CREDOR_TRANSPORTAR", 'N', 0, L, 2, O}, {"DEB_ESP", 'N', 0, L, 2, O},
};
// E116: one line COD_OR 000 for the ICMS to pay. The due date and the state's revenue code
// are not in the information file: they come from the run's options, else DT_VCTO is the 10th
// of the following month and COD_REC the generic "000" (the run says both must be confirmed).
constexpr Campo kE116[] = {
    {"REG", 'C', 4, X, 0, O},       {"COD_OR", 'C', 3, X, 0, O, "000|001|002|003|004|005|006|007|081|082|083|090|999"},
    {"VL_OR", 'N', 0, L, 2, O},     {"DT_VCTO", 'D', 8, X, 0, O},
    {"COD_REC", 'C', 0, L, 0, O},   {"NUM_PROC", 'C', 15, L, 0, OC},
    {"IND_PROC", 'C', 1, X, 0, OC, "0|1|2|9"}, {"PROC", 'C', 0, L, 0, OC},
    {"TXT_COMPL", 'C', 0, L, 0, OC}, {"MES_REF", 'M', 6, X, 0, O},
};
// H005: MOT_INV 01 (end of period) for both the month-end and the year-end inventory.
constexpr Campo kH005[] = {
    {"REG", 'C', 4, X, 0, O}, {"DT_INV", 'D', 8, X, 0, O}, {"VL_INV", 'N', 0, L, 2, O},
    {"MOT_INV", 'C', 2, X, 0, O, "01|02|03|04|05|06"},
};
// H010: own goods in own possession (IND_PROP 0, no COD_PART); duplicates of an item inside
// one inventory are merged.
constexpr Campo kH010[] = {
    {"REG", 'C', 4, X, 0, O},      {"COD_ITEM", 'C', 60, L, 0, O},  {"UNID", 'C', 6, L, 0, O},
    {"QTD", 'N', 0, L, 3, O},      {"VL_UNIT", 'N', 0, L, 6, O},    {"VL_ITEM", 'N', 0, L, 2, O},
    {"IND_PROP", 'C', 1, X, 0, O, "0|1|2"}, {"COD_PART", 'C', 60, L, 0, OC},
    {"TXT_COMPL", 'C', 0, L, 0, OC}, {"COD_CTA", 'C', 0, L, 0, OC}, {"VL_ITEM_IR", 'N', 0, L, 2, OC},
};
// 1001: always 0 (1010 is required).
constexpr Campo k1001[] = {{"REG", 'C', 4, X, 0, O}, {"IND_MOV", 'C', 1, X, 0, O, "0"}};
// 1010 (14 fields, the 2023+ layout): every answer N, since the information file has none
// of the block-1 registers.
constexpr Campo k1010[] = {
    {"REG", 'C', 4, X, 0, O},
    {"IND_EXP", 'C', 1, X, 0, O, "S|N"},   {"IND_CCRF", 'C', 1, X, 0, O, "S|N"},
    {"IND_COMB", 'C', 1, X, 0, O, "S|N"},  {"IND_USINA", 'C', 1, X, 0, O, "S|N"},
    {"IND_VA", 'C', 1, X, 0, O, "S|N"},    {"IND_EE", 'C', 1, X, 0, O, "S|N"},
    {"IND_CART", 'C', 1, X, 0, O, "S|N"},  {"IND_FORM", 'C', 1, X, 0, O, "S|N"},
    {"IND_AER", 'C', 1, X, 0, O, "S|N"},   {"IND_GIAF1", 'C', 1, X, 0, O, "S|N"},
    {"IND_GIAF3", 'C', 1, X, 0, O, "S|N"}, {"IND_GIAF4", 'C', 1, X, 0, O, "S|N"},
    {"IND_REST_RESSARC_COMPL_ICMS", 'C', 1, X, 0, O, "S|N"},
};
constexpr Campo k9001[] = {{"REG", 'C', 4, X, 0, O}, {"IND_MOV", 'C', 1, X, 0, O, "0"}};
constexpr Campo k9900[] = {{"REG", 'C', 4, X, 0, O}, {"REG_BLC", 'C', 4, X, 0, O}, {"QTD_REG_BLC", 'N', 0, L, 0, O}};
constexpr Campo k9999[] = {{"REG", 'C', 4, X, 0, O}, {"QTD_LIN", 'N', 0, L, 0, O}};

// Blocks B, G and K are written empty (IND_MOV 1): no ISS (outside the Federal District), no
// CIAP (it needs the asset history of earlier months), no production control in the
// information file. Block D holds the transport documents of purchases.
constexpr Registro kRegistros[] = {
    {"0000", 0, "", 1, 1, k0000},
    {"0001", 1, "", 1, 1, k0001},
    {"0005", 2, "0001", 1, 1, k0005},
    {"0100", 2, "0001", 1, 1, k0100},
    {"0150", 2, "0001", 0, 0, k0150},
    {"0190", 2, "0001", 0, 0, k0190},
    {"0200", 2, "0001", 0, 0, k0200},
    {"0990", 1, "", 1, 1, kFechamento},
    {"B001", 1, "", 1, 1, kAbertura},
    {"B990", 1, "", 1, 1, kFechamento},
    {"C001", 1, "", 1, 1, kAbertura},
    {"C100", 2, "C001", 0, 0, kC100},
    {"C170", 3, "C100", 0, 0, kC170},
    {"C190", 3, "C100", 0, 0, kC190},
    {"C990", 1, "", 1, 1, kFechamento},
    {"D001", 1, "", 1, 1, kAbertura},
    {"D100", 2, "D001", 0, 0, kD100},
    {"D190", 3, "D100", 1, 0, kD190},
    {"D990", 1, "", 1, 1, kFechamento},
    {"E001", 1, "", 1, 1, kE001},
    {"E100", 2, "E001", 1, 0, kE100},
    {"E110", 3, "E100", 1, 1, kE110},
    {"E116", 4, "E110", 0, 0, kE116},
    {"E990", 1, "", 1, 1, kFechamento},
    {"G001", 1, "", 1, 1, kAbertura},
    {"G990", 1, "", 1, 1, kFechamento},
    {"H001", 1, "", 1, 1, kAbertura},
    {"H005", 2, "H001", 0, 0, kH005},
    {"H010", 3, "H005", 0, 0, kH010},
    {"H990", 1, "", 1, 1, kFechamento},
    {"K001", 1, "", 1, 1, kAbertura},
    {"K990", 1, "", 1, 1, kFechamento},
    {"1001", 1, "", 1, 1, k1001},
    {"1010", 2, "1001", 1, 1, k1010},
    {"1990", 1, "", 1, 1, kFechamento},
    {"9001", 1, "", 1, 1, k9001},
    {"9900", 2, "9001", 1, 0, k9900},
    {"9990", 1, "", 1, 1, kFechamento},
    {"9999", 0, "", 1, 1, k9999},
};

// Table "Versão do Leiaute" by the year of DT_INI (one code a year; 2017-2022 follow that
// sequence). A year outside it has no code: the converter refuses rather than guess.
constexpr std::pair<int, std::string_view> kVersoes[] = {
    {2017, "011"}, {2018, "012"}, {2019, "013"}, {2020, "014"}, {2021, "015"},
    {2022, "016"}, {2023, "017"}, {2024, "018"}, {2025, "019"}, {2026, "020"},
};

}  // namespace

bool Campo::permite(std::string_view v) const {
  if (valores.empty()) return true;
  for (std::size_t pos = 0; pos <= valores.size();) {
    const std::size_t fim = std::min(valores.find('|', pos), valores.size());
    if (valores.substr(pos, fim - pos) == v) return true;
    pos = fim + 1;
  }
  return false;
}

int Registro::indice() const { return static_cast<int>(this - kRegistros); }

std::span<const Registro> registros() { return kRegistros; }

const Registro* registro(std::string_view reg) {
  static const auto* mapa = [] {
    auto* m = new std::unordered_map<std::string_view, const Registro*>;
    for (const auto& r : kRegistros) (*m)[r.reg] = &r;
    return m;
  }();
  const auto it = mapa->find(reg);
  return it == mapa->end() ? nullptr : it->second;
}

const Registro& R(std::string_view reg) { return *registro(reg); }

SemCredito sem_credito(std::string_view cfop) {
  for (const std::string_view c : {"1556", "2556", "3556", "1407", "2407"})
    if (cfop == c) return SemCredito::UsoConsumo;
  for (const std::string_view c : {"1551", "2551", "3551", "1406", "2406"})
    if (cfop == c) return SemCredito::Imobilizado;
  return SemCredito::Nao;
}

std::string_view cod_ver(int ano) {
  for (const auto& [a, v] : kVersoes)
    if (a == ano) return v;
  return {};
}

int apuracao_cfop(std::string_view cfop) {
  if (cfop == "1605") return +1;
  if (cfop == "5605") return -1;
  if (cfop.empty()) return 0;
  if (cfop[0] >= '5' && cfop[0] <= '7') return +1;
  if (cfop[0] >= '1' && cfop[0] <= '3') return -1;
  return 0;
}

void completa_e110(CamposE110& f) {
  const std::int64_t d = f[2] + f[3] + f[4] + f[5];
  const std::int64_t c = f[6] + f[7] + f[8] + f[9] + f[10];
  f[11] = d > c ? d - c : 0;
  f[14] = c > d ? c - d : 0;
  f[13] = f[11] - f[12];
}

bool cst_icms_valido(std::string_view cst) {
  if (cst.size() != 3 || cst.find_first_not_of("0123456789") != std::string_view::npos) return false;
  // Only the codes themselves are runs of digits in these lists.
  static constexpr std::string_view kSituacoes = "00|10|20|30|40|41|50|51|60|61|70|90";
  static constexpr std::string_view kCsosn = "101|102|103|201|202|203|300|400|500|900";
  if (kCsosn.find(cst) != std::string_view::npos) return true;
  return cst[0] <= '8' && kSituacoes.find(cst.substr(1)) != std::string_view::npos;
}

}  // namespace infofiscal::efd
