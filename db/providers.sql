-- Provider catalog of the record source "TDAO_DExportaInfoFiscal" over the reference schema
-- (schema.sql): one SELECT per provider.
--
-- Each provider starts with a line "-- provider: NAME" (or "-- provider: NAME [DATABASE]" for
-- a variant that one kind of database uses instead of the plain entry). In the SELECT, `?N`
-- takes the N-th value of the fetch (the parameters of a parameter open in order, or the array
-- of a data request in order) and `?` the one after the largest number used so far. The columns must carry the names of the
-- fields that the datasets declare (case does not matter); extra columns are ignored.
--
-- Which notes a fiscal register exports, and in which order:
--   * a note belongs to a register when it is of the register's company (registrofiscal.
--     cdempresa) and its date falls in the register's month (ano, cdmes) of the fiscal
--     calendar periodofiscal: purchases by their date of receipt, outgoing notes by their date
--     of issue, voided numbers by the date of the voiding (the views compraregistro,
--     notafiscalregistro and nfeinutilizadaregistro of the schema);
--   * purchases of one kind: the request's kind 1 equipment, 2 products, 4 consumption
--     products; the inputs step asks with kind 0, which lists the input purchases (3);
--     only booked purchases (pde 3): a purchase still being typed or checked is left out;
--   * outgoing notes of one kind: those whose tiponotafiscal has the request's process kind;
--     only authorised (pde 2) and cancelled (pde 3) notes, never one being typed;
--   * order: date (receipt or issue), then note number (by its length first, so that text
--     numbers sort as numbers), then the key; voided numbers by number;
--   * catalogues, units, parties and natures are the whole tables, by code: the reference
--     schema holds one company's master data per database.

-- provider: DspRegistroInfoFiscal
-- The fiscal register (TabRegistroFiscal, TabRegistroInfoFiscal): ATR_REGISTROFISCAL.
SELECT *
  FROM registrofiscal
 WHERE cdregistrofiscal = ?;

-- provider: DspEmpresa
-- The company the user works in: ATR_CODEMPRESA.
SELECT e.cdempresa, e.razaosocial, e.nomefantasia, e.cnpj, e.ie, e.im, e.suframa,
       c.nomecidade, c.cdestado, e.endereco, e.endereconumero, e.enderecocomplemento,
       e.bairro, c.codibge AS ibge_cidade, p.codibge AS ibge_pais, e.cep, e.fone, e.fax,
       e.email
  FROM empresa e
  LEFT JOIN cidade c ON c.cdcidade = e.cdcidade
  LEFT JOIN pais p ON p.cdpais = c.cdpais
 WHERE e.cdempresa = ?;

-- provider: DspContador
-- The accounting office (no parameter): the first by code.
SELECT o.cdcontador, o.nomecontador, o.fone, o.cpf, o.crc, o.cnpj, o.cep, o.endereco,
       o.endereconumero, o.enderecocomplemento, o.bairro, o.email, o.fax, c.codibge
  FROM contador o
  LEFT JOIN cidade c ON c.cdcidade = o.cdcidade
 ORDER BY o.cdcontador;

-- provider: DspListaCompra
-- Purchase list, data request [register, purchase kind].
SELECT cdcompra, modelo, numnf FROM compraregistro
 WHERE cdregistrofiscal = ?1 AND pde = 3
   AND tipocompra = CASE CAST(?2 AS INTEGER) WHEN 0 THEN 3 ELSE CAST(?2 AS INTEGER) END
 ORDER BY datarecebimento, LENGTH(numnf), numnf, cdcompra;

-- provider: DspListaCompra [firebird]
-- The same for Firebird, which spells LENGTH as CHAR_LENGTH.
SELECT cdcompra, modelo, numnf FROM compraregistro
 WHERE cdregistrofiscal = ?1 AND pde = 3
   AND tipocompra = CASE CAST(?2 AS INTEGER) WHEN 0 THEN 3 ELSE CAST(?2 AS INTEGER) END
 ORDER BY datarecebimento, CHAR_LENGTH(numnf), numnf, cdcompra;

-- provider: DspCompra
-- One purchase's header: ATR_CODCOMPRA. Origin: the supplier's city; destination: the company's.
SELECT c.cdcompra, c.cdfornecedor, c.modelo, c.serie, c.pde, c.chavenfefornecedor,
       c.totalcompra, c.desconto, c.totalproduto, c.frete, c.seguro, c.outrasdespesas,
       c.icms_basecalculo, c.icms_valor, c.icms_st_basecalculo, c.icms_st_valor,
       c.ipi_valor, c.pis_valor, c.cofins_valor, c.numnf, c.dataemissaonf,
       c.datarecebimento, c.cdtabcfop, co.codibge AS cdcidadeorigemibge,
       cd.codibge AS cdcidadedestinoibge
  FROM compra c
  JOIN fornecedor f ON f.cdfornecedor = c.cdfornecedor
  JOIN empresa e ON e.cdempresa = c.cdempresa
  LEFT JOIN cidade co ON co.cdcidade = f.cdcidade
  LEFT JOIN cidade cd ON cd.cdcidade = e.cdcidade
 WHERE c.cdcompra = ?;

-- provider: DspCompraFornecedor
-- The supplier of one purchase: ATR_COMPRA.
SELECT c.cdcompra, f.cdfornecedor, f.razaosocial, f.tipopessoa, f.cnpj_cpf, f.ie_rg AS ie,
       d.cdestado, f.endereco, f.endereconumero, f.bairro
  FROM compra c
  JOIN fornecedor f ON f.cdfornecedor = c.cdfornecedor
  LEFT JOIN cidade d ON d.cdcidade = f.cdcidade
 WHERE c.cdcompra = ?;

-- provider: DspCompraEquipamento
-- Items of an equipment purchase: ATR_CODCOMPRA; in item order.
SELECT v.*, v.cditem AS cdequipamento, v.descricao AS descequipamento
  FROM compraitemfiscal v
 WHERE v.tipocompra = 1 AND v.cdcompra = ?
 ORDER BY v.itemcompra;

-- provider: DsCompraProduto
-- Items of a products purchase: ATR_COMPRA; in item order.
SELECT v.*, v.cditem AS cdproduto, v.descricao AS descproduto
  FROM compraitemfiscal v
 WHERE v.tipocompra = 2 AND v.cdcompra = ?
 ORDER BY v.itemcompra;

-- provider: DspCompraProdConsumo
-- Items of a consumption-products purchase: ATR_CODCOMPRA; in item order.
SELECT v.*, v.cditem AS cdprodconsumo, v.descricao AS descproduto
  FROM compraitemfiscal v
 WHERE v.tipocompra = 4 AND v.cdcompra = ?
 ORDER BY v.itemcompra;

-- provider: DspListaNotaFiscal
-- Outgoing-note list, data request [register kind, register, process kind].
SELECT cdtiponotafiscal, cdnotafiscal FROM notafiscalregistro
 WHERE cdregistrofiscal = ?2 AND tipoprocesso = ?3 AND pde IN (2, 3)
 ORDER BY emissao, cdnotafiscal, cdtiponotafiscal;

-- provider: DspNF_Venda
-- One outgoing note's header: ATR_CODTIPONOTAFISCAL, ATR_CODNOTAFISCAL (or the same two
-- values as a data request).
SELECT n.cdtiponotafiscal, n.cdnotafiscal, n.cdparte AS cdcliente, n.numserie, n.emissao,
       n.pde, n.saida, n.chavenfe, n.valortotalnota, n.valordesconto, n.valortotalproduto,
       n.valorfrete, n.valorseguro, n.valoroutrasdesp, n.icms_basecalculo, n.icms_valor,
       n.icms_st_basecalculo, n.icms_st_valor, n.ipi_valor, n.pis_valor, n.cofins_valor,
       n.cdtabcfop
  FROM notafiscal n
 WHERE n.cdtiponotafiscal = ? AND n.cdnotafiscal = ?;

-- provider: DspNF_Cliente
-- The party of one outgoing note (a client, or the supplier of a purchase return):
-- ATR_CODTIPONOTAFISCAL, ATR_CODNOTAFISCAL.
SELECT n.cdtiponotafiscal, n.cdnotafiscal, n.cdparte AS cdcliente, a.ie_rg AS ie, a.*
  FROM notafiscal n
  JOIN tiponotafiscal t ON t.cdtiponotafiscal = n.cdtiponotafiscal
  JOIN parte a ON a.papel = t.papel AND a.cdparte = n.cdparte
 WHERE n.cdtiponotafiscal = ? AND n.cdnotafiscal = ?;

-- provider: DspNF_Produto
-- Items of one outgoing note (products, or equipment for equipment sales):
-- ATR_CODTIPONOTAFISCAL, ATR_CODNOTAFISCAL; in item order.
SELECT i.cdtiponotafiscal, i.cdnotafiscal, i.cditem AS cdproduto, i.cdlote,
       i.itemnotafiscal, q.descricao AS descproduto, u.siglaunidade AS unidade,
       i.quantidade, i.precototal, i.desconto, i.frete, i.seguro, i.outrasdesp, i.icms_cst,
       i.icms_basecalculo, i.icms_aliquota, i.icms_valor, i.icms_st_basecalculo,
       i.icms_st_valor, i.pis_cst, i.cofins_cst, i.icms_cfop, i.ipi_cst, i.ipi_enquadramento,
       i.ipi_basecalculo, i.ipi_valor, q.codbarra, i.pis_aliquota, i.pis_basecalculo,
       i.pis_valor, i.pis_quantunidade, i.pis_valorunidade, i.cofins_aliquota,
       i.cofins_quantunidade, i.cofins_valorunidade, i.cofins_basecalculo, i.cofins_valor,
       q.numncm
  FROM notafiscalitem i
  JOIN tiponotafiscal t ON t.cdtiponotafiscal = i.cdtiponotafiscal
  JOIN itemsaida q ON q.catalogo = t.catalogo AND q.cditem = i.cditem
  LEFT JOIN unidade u ON u.cdunidade = q.cdunidade
 WHERE i.cdtiponotafiscal = ? AND i.cdnotafiscal = ?
 ORDER BY i.itemnotafiscal;

-- provider: DspListaNFeInutilizado
-- Voided note numbers, data request [register kind, register]: by number.
SELECT * FROM nfeinutilizadaregistro
 WHERE cdregistrofiscal = ?2
 ORDER BY cdnfe_numinutilizado, cdnfe_inutilizado;

-- provider: DspListaEquipamento
SELECT q.cdequipamento, q.descequipamento, u.siglaunidade, q.numncm
  FROM equipamento q
  LEFT JOIN unidade u ON u.cdunidade = q.cdunidade
 ORDER BY q.cdequipamento;

-- provider: DspListaProduto
SELECT q.cdproduto, q.descproduto, u.siglaunidade, q.numncm, q.codcest
  FROM produto q
  LEFT JOIN unidade u ON u.cdunidade = q.cdunidade
 ORDER BY q.cdproduto;

-- provider: DspListaInsumo
SELECT q.cdinsumo, q.descinsumo, u.siglaunidade, q.numncm
  FROM insumo q
  LEFT JOIN unidade u ON u.cdunidade = q.cdunidade
 ORDER BY q.cdinsumo;

-- provider: DspListaProdConsumo
SELECT q.cdprodconsumo, q.descproduto, u.siglaunidade, q.numncm
  FROM prodconsumo q
  LEFT JOIN unidade u ON u.cdunidade = q.cdunidade
 ORDER BY q.cdprodconsumo;

-- provider: DspListaUnidade
SELECT cdunidade, siglaunidade, descunidade
  FROM unidade
 ORDER BY cdunidade;

-- provider: DspListaCliente
SELECT cdparte AS cdcliente, a.* FROM parte a WHERE papel = 'C' ORDER BY cdparte;

-- provider: DspListaFornecedor
SELECT cdparte AS cdfornecedor, a.* FROM parte a WHERE papel = 'F' ORDER BY cdparte;

-- provider: DspNaturezaOperacao
SELECT cdtabcfop, desccfop
  FROM naturezaoperacao
 ORDER BY cdtabcfop;

-- provider: DspInventario_FM
-- The month-end inventory the register names: ATR_CODREGISTROFISCAL.
SELECT * FROM inventarioregistro WHERE fechamento = 'M' AND cdregistrofiscal = ?;

-- provider: DspInventarioProduto_FM
-- Its products: ATR_CODREGISTROFISCAL; by product code.
SELECT * FROM inventarioprodutoregistro WHERE fechamento = 'M' AND cdregistrofiscal = ?
 ORDER BY cdproduto;

-- provider: DspInventario_FA
-- The year-end inventory the register names: ATR_CODREGISTROFISCAL.
SELECT * FROM inventarioregistro WHERE fechamento = 'A' AND cdregistrofiscal = ?;

-- provider: DspInventarioProduto_FA
-- Its products: ATR_CODREGISTROFISCAL; by product code.
SELECT * FROM inventarioprodutoregistro WHERE fechamento = 'A' AND cdregistrofiscal = ?
 ORDER BY cdproduto;

-- Fetching ahead. "-- prefetch: PROVIDER LIST KEY..." answers the per-note PROVIDER for every
-- note of LIST at once: the SELECT takes the list's values and returns PROVIDER's columns
-- (extra ones are ignored) with the KEY columns that name the note as PROVIDER's values do,
-- the notes in the list's order (the list's own WHERE and ORDER BY) and the rows of each note
-- in PROVIDER's order. Its rows are read as the notes ask for them. Only PostgreSQL uses these (a round trip per note is
-- what a server costs). Where one of these fails, leaves a note out or strays from the list's
-- order, the notes run their provider's own SELECT.

-- prefetch: DspCompra DspListaCompra CDCOMPRA
SELECT l.*, co.codibge AS cdcidadeorigemibge, cd.codibge AS cdcidadedestinoibge
  FROM compraregistro l
  JOIN fornecedor f ON f.cdfornecedor = l.cdfornecedor
  JOIN empresa e ON e.cdempresa = l.cdempresa
  LEFT JOIN cidade co ON co.cdcidade = f.cdcidade
  LEFT JOIN cidade cd ON cd.cdcidade = e.cdcidade
 WHERE l.cdregistrofiscal = ?1 AND l.pde = 3
   AND l.tipocompra = CASE CAST(?2 AS INTEGER) WHEN 0 THEN 3 ELSE CAST(?2 AS INTEGER) END
 ORDER BY l.datarecebimento, LENGTH(l.numnf), l.numnf, l.cdcompra;

-- prefetch: DspCompraFornecedor DspListaCompra CDCOMPRA
SELECT l.cdcompra, f.cdfornecedor, f.razaosocial, f.tipopessoa, f.cnpj_cpf, f.ie_rg AS ie,
       d.cdestado, f.endereco, f.endereconumero, f.bairro
  FROM compraregistro l
  JOIN fornecedor f ON f.cdfornecedor = l.cdfornecedor
  LEFT JOIN cidade d ON d.cdcidade = f.cdcidade
 WHERE l.cdregistrofiscal = ?1 AND l.pde = 3
   AND l.tipocompra = CASE CAST(?2 AS INTEGER) WHEN 0 THEN 3 ELSE CAST(?2 AS INTEGER) END
 ORDER BY l.datarecebimento, LENGTH(l.numnf), l.numnf, l.cdcompra;

-- The items of the purchases of one kind: the list's kind is the items' kind.
-- prefetch: DspCompraEquipamento DspListaCompra CDCOMPRA
SELECT v.*, v.cditem AS cdequipamento, v.descricao AS descequipamento
  FROM compraregistro l
  JOIN compraitemfiscal v ON v.cdcompra = l.cdcompra
 WHERE l.cdregistrofiscal = ?1 AND l.pde = 3
   AND l.tipocompra = CASE CAST(?2 AS INTEGER) WHEN 0 THEN 3 ELSE CAST(?2 AS INTEGER) END
   AND v.tipocompra = 1
 ORDER BY l.datarecebimento, LENGTH(l.numnf), l.numnf, l.cdcompra, v.itemcompra;

-- prefetch: DsCompraProduto DspListaCompra CDCOMPRA
SELECT v.*, v.cditem AS cdproduto, v.descricao AS descproduto
  FROM compraregistro l
  JOIN compraitemfiscal v ON v.cdcompra = l.cdcompra
 WHERE l.cdregistrofiscal = ?1 AND l.pde = 3
   AND l.tipocompra = CASE CAST(?2 AS INTEGER) WHEN 0 THEN 3 ELSE CAST(?2 AS INTEGER) END
   AND v.tipocompra = 2
 ORDER BY l.datarecebimento, LENGTH(l.numnf), l.numnf, l.cdcompra, v.itemcompra;

-- prefetch: DspCompraProdConsumo DspListaCompra CDCOMPRA
SELECT v.*, v.cditem AS cdprodconsumo, v.descricao AS descproduto
  FROM compraregistro l
  JOIN compraitemfiscal v ON v.cdcompra = l.cdcompra
 WHERE l.cdregistrofiscal = ?1 AND l.pde = 3
   AND l.tipocompra = CASE CAST(?2 AS INTEGER) WHEN 0 THEN 3 ELSE CAST(?2 AS INTEGER) END
   AND v.tipocompra = 4
 ORDER BY l.datarecebimento, LENGTH(l.numnf), l.numnf, l.cdcompra, v.itemcompra;

-- prefetch: DspNF_Venda DspListaNotaFiscal CDTIPONOTAFISCAL CDNOTAFISCAL
SELECT l.*, l.cdparte AS cdcliente
  FROM notafiscalregistro l
 WHERE l.cdregistrofiscal = ?2 AND l.tipoprocesso = ?3 AND l.pde IN (2, 3)
 ORDER BY l.emissao, l.cdnotafiscal, l.cdtiponotafiscal;

-- prefetch: DspNF_Cliente DspListaNotaFiscal CDTIPONOTAFISCAL CDNOTAFISCAL
SELECT l.cdtiponotafiscal, l.cdnotafiscal, l.cdparte AS cdcliente, a.ie_rg AS ie, a.*
  FROM notafiscalregistro l
  JOIN tiponotafiscal t ON t.cdtiponotafiscal = l.cdtiponotafiscal
  JOIN parte a ON a.papel = t.papel AND a.cdparte = l.cdparte
 WHERE l.cdregistrofiscal = ?2 AND l.tipoprocesso = ?3 AND l.pde IN (2, 3)
 ORDER BY l.emissao, l.cdnotafiscal, l.cdtiponotafiscal;

-- prefetch: DspNF_Produto DspListaNotaFiscal CDTIPONOTAFISCAL CDNOTAFISCAL
SELECT i.cdtiponotafiscal, i.cdnotafiscal, i.cditem AS cdproduto, i.cdlote,
       i.itemnotafiscal, q.descricao AS descproduto, u.siglaunidade AS unidade,
       i.quantidade, i.precototal, i.desconto, i.frete, i.seguro, i.outrasdesp, i.icms_cst,
       i.icms_basecalculo, i.icms_aliquota, i.icms_valor, i.icms_st_basecalculo,
       i.icms_st_valor, i.pis_cst, i.cofins_cst, i.icms_cfop, i.ipi_cst, i.ipi_enquadramento,
       i.ipi_basecalculo, i.ipi_valor, q.codbarra, i.pis_aliquota, i.pis_basecalculo,
       i.pis_valor, i.pis_quantunidade, i.pis_valorunidade, i.cofins_aliquota,
       i.cofins_quantunidade, i.cofins_valorunidade, i.cofins_basecalculo, i.cofins_valor,
       q.numncm
  FROM notafiscalregistro l
  JOIN notafiscalitem i ON i.cdtiponotafiscal = l.cdtiponotafiscal AND i.cdnotafiscal = l.cdnotafiscal
  JOIN tiponotafiscal t ON t.cdtiponotafiscal = i.cdtiponotafiscal
  JOIN itemsaida q ON q.catalogo = t.catalogo AND q.cditem = i.cditem
  LEFT JOIN unidade u ON u.cdunidade = q.cdunidade
 WHERE l.cdregistrofiscal = ?2 AND l.tipoprocesso = ?3 AND l.pde IN (2, 3)
 ORDER BY l.emissao, l.cdnotafiscal, l.cdtiponotafiscal, i.itemnotafiscal;
