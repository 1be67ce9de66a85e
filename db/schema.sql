-- Reference ERP schema: the tables that the provider catalog (providers.sql) reads.
--
-- Portable SQL: it loads unchanged into SQLite, PostgreSQL and Firebird 3. Names are lower
-- case; columns that a dataset reads directly carry the dataset field's name. Dates are DATE, moments TIMESTAMP; SQLite keeps both as text
-- 'YYYY-MM-DD[ HH:MM:SS]', so every TIMESTAMP value is written with its time of day (ordering
-- compares the text there). Money is NUMERIC(15,2), quantities and unit values NUMERIC(15,4),
-- rates NUMERIC(7,4).
--
-- The views at the end put catalogues, parties and inventories under one code space each, so
-- that the catalog's SELECTs stay short.
--
-- Codes used across tables:
--   compra.tipocompra         1 equipment, 2 products, 3 inputs, 4 consumption products
--   compra.pde                1 being typed, 2 awaiting checking, 3 booked (only 3 is exported)
--   notafiscal.pde            1 being typed, 2 authorised, 3 cancelled (2 and 3 are exported)
--   tiponotafiscal.tipoprocesso
--                             9 purchase return, 10 product sale, 11 product transfer,
--                             12 sales return, 17 equipment sale
--   inventario.cdtipoinventario  1 month end, 2 year end

CREATE TABLE pais (
  cdpais      INTEGER NOT NULL PRIMARY KEY,
  nomepais    VARCHAR(60) NOT NULL,
  codibge     INTEGER
);

CREATE TABLE cidade (
  cdcidade    INTEGER NOT NULL PRIMARY KEY,
  nomecidade  VARCHAR(60) NOT NULL,
  cdestado    VARCHAR(2) NOT NULL,
  codibge     INTEGER,
  cdpais      INTEGER NOT NULL REFERENCES pais (cdpais)
);

-- The accounting office that keeps the books.
CREATE TABLE contador (
  cdcontador          SMALLINT NOT NULL PRIMARY KEY,
  nomecontador        VARCHAR(100) NOT NULL,
  fone                VARCHAR(50),
  cpf                 VARCHAR(20),
  crc                 VARCHAR(20),
  cnpj                VARCHAR(20),
  cep                 VARCHAR(10),
  endereco            VARCHAR(100),
  endereconumero      VARCHAR(30),
  enderecocomplemento VARCHAR(100),
  bairro              VARCHAR(60),
  email               VARCHAR(60),
  fax                 VARCHAR(20),
  cdcidade            INTEGER REFERENCES cidade (cdcidade)
);

CREATE TABLE empresa (
  cdempresa           SMALLINT NOT NULL PRIMARY KEY,
  razaosocial         VARCHAR(100) NOT NULL,
  nomefantasia        VARCHAR(60),
  cnpj                VARCHAR(18),
  ie                  VARCHAR(20),
  im                  VARCHAR(20),
  suframa             VARCHAR(20),
  cdcidade            INTEGER REFERENCES cidade (cdcidade),
  endereco            VARCHAR(100),
  endereconumero      VARCHAR(30),
  enderecocomplemento VARCHAR(100),
  bairro              VARCHAR(30),
  cep                 VARCHAR(9),
  fone                VARCHAR(50),
  fax                 VARCHAR(20),
  email               VARCHAR(60),
  cdcontador          SMALLINT REFERENCES contador (cdcontador)
);

-- The fiscal calendar: one row per month; a moment belongs to the month when
-- inicio <= moment < fim (fim is the first day of the next month).
CREATE TABLE periodofiscal (
  ano     INTEGER NOT NULL,
  cdmes   SMALLINT NOT NULL,
  inicio  DATE NOT NULL,
  fim     DATE NOT NULL,
  PRIMARY KEY (ano, cdmes)
);

CREATE TABLE inventario (
  cdinventario      INTEGER NOT NULL PRIMARY KEY,
  cdempresa         SMALLINT NOT NULL REFERENCES empresa (cdempresa),
  cdinventarioemp   INTEGER NOT NULL,
  cdtipoinventario  INTEGER NOT NULL,
  datainventario    TIMESTAMP NOT NULL,
  totalinventario   NUMERIC(15,2),
  pde               SMALLINT
);

-- A fiscal register: a company's month, the kind of file and the switches of what goes in.
CREATE TABLE registrofiscal (
  cdregistrofiscal               INTEGER NOT NULL PRIMARY KEY,
  cdtiporegistrofiscal           SMALLINT NOT NULL,
  cdempresa                      SMALLINT NOT NULL REFERENCES empresa (cdempresa),
  cdusuario                      INTEGER,
  cdinventariofinalmes           INTEGER REFERENCES inventario (cdinventario),
  cdinventariofinalano           INTEGER REFERENCES inventario (cdinventario),
  cdregistrofiscalemp            INTEGER,
  regcomprainsumo                VARCHAR(1),
  regtransfequipamentocliente    VARCHAR(1),
  regtransfequipamentofornecedor VARCHAR(1),
  regtransfprodutofornecedor     VARCHAR(1),
  regdevcompraequipamento        VARCHAR(1),
  regdevcompraprodconsumo        VARCHAR(1),
  regdevcomprainsumo             VARCHAR(1),
  regdevvendaequipamento         VARCHAR(1),
  numreganterior                 VARCHAR(30),
  perfilapresentararq            VARCHAR(1),
  indicadornatpessoajuridica     VARCHAR(2),
  indicadormetodoapropcredito    VARCHAR(2),
  indicadortipocontribuicao      VARCHAR(2),
  ano                            INTEGER NOT NULL,
  cdmes                          SMALLINT NOT NULL,
  etiqueta                       VARCHAR(255),
  reg_1011                       VARCHAR(1),
  reg_1010                       VARCHAR(1),
  reg_1012                       VARCHAR(1),
  modelo_nf                      VARCHAR(2),
  serie_nf                       VARCHAR(3),
  regvendaproduto                VARCHAR(1),
  regcompraequipamento           VARCHAR(1),
  regvendaequipamento            VARCHAR(1),
  regcompraproduto               VARCHAR(1),
  regcompraprodconsumo           VARCHAR(1),
  regtransfprodutocliente        VARCHAR(1),
  regdevvendaproduto             VARCHAR(1),
  regdevcompraproduto            VARCHAR(1),
  finalidadearquivo              VARCHAR(1),
  obs                            VARCHAR(2000),
  dataregistrofiscal             TIMESTAMP,
  indicadorsitespecial           VARCHAR(1),
  tipoexportacao                 SMALLINT,
  tipoexportacaoinicio           INTEGER,
  tipoexportacaofinal            INTEGER,
  indicadorincidenciatributaria  VARCHAR(2),
  tipofiltrocompra               SMALLINT,
  indicadortipoatividade         VARCHAR(1),
  indicadorcritescrituracao      VARCHAR(2),
  reginventariofinalmes          VARCHAR(1),
  reginventariofinalano          VARCHAR(1)
);

CREATE TABLE unidade (
  cdunidade     SMALLINT NOT NULL PRIMARY KEY,
  siglaunidade  VARCHAR(10) NOT NULL,
  descunidade   VARCHAR(20)
);

CREATE TABLE equipamento (
  cdequipamento    INTEGER NOT NULL PRIMARY KEY,
  descequipamento  VARCHAR(80) NOT NULL,
  cdunidade        SMALLINT REFERENCES unidade (cdunidade),
  numncm           VARCHAR(20),
  codbarra         VARCHAR(20)
);

CREATE TABLE produto (
  cdproduto    INTEGER NOT NULL PRIMARY KEY,
  descproduto  VARCHAR(100) NOT NULL,
  cdunidade    SMALLINT REFERENCES unidade (cdunidade),
  numncm       VARCHAR(20),
  codcest      VARCHAR(20),
  codbarra     VARCHAR(20),
  precovenda   NUMERIC(15,4)
);

CREATE TABLE insumo (
  cdinsumo    INTEGER NOT NULL PRIMARY KEY,
  descinsumo  VARCHAR(80) NOT NULL,
  cdunidade   SMALLINT REFERENCES unidade (cdunidade),
  numncm      VARCHAR(20)
);

CREATE TABLE prodconsumo (
  cdprodconsumo  INTEGER NOT NULL PRIMARY KEY,
  descproduto    VARCHAR(80) NOT NULL,
  cdunidade      SMALLINT REFERENCES unidade (cdunidade),
  numncm         VARCHAR(20),
  codbarra       VARCHAR(20)
);

-- tipopessoa: 'F' person (CPF), 'J' company (CNPJ); ie_rg: state registration or identity.
CREATE TABLE cliente (
  cdcliente       INTEGER NOT NULL PRIMARY KEY,
  razaosocial     VARCHAR(100) NOT NULL,
  tipopessoa      VARCHAR(1) NOT NULL,
  cnpj_cpf        VARCHAR(20),
  ie_rg           VARCHAR(20),
  endereco        VARCHAR(100),
  endereconumero  VARCHAR(30),
  bairro          VARCHAR(30),
  cep             VARCHAR(9),
  cdcidade        INTEGER REFERENCES cidade (cdcidade)
);

CREATE TABLE fornecedor (
  cdfornecedor    INTEGER NOT NULL PRIMARY KEY,
  razaosocial     VARCHAR(100) NOT NULL,
  tipopessoa      VARCHAR(1) NOT NULL,
  cnpj_cpf        VARCHAR(20),
  ie_rg           VARCHAR(20),
  endereco        VARCHAR(100),
  endereconumero  VARCHAR(30),
  bairro          VARCHAR(30),
  cep             VARCHAR(9),
  cdcidade        INTEGER REFERENCES cidade (cdcidade)
);

-- Natures of operation: the CFOP codes.
CREATE TABLE naturezaoperacao (
  cdtabcfop  SMALLINT NOT NULL PRIMARY KEY,
  desccfop   VARCHAR(50) NOT NULL
);

-- A purchase note; its items are in compraitem, their catalogue given by tipocompra.
CREATE TABLE compra (
  cdcompra             INTEGER NOT NULL PRIMARY KEY,
  cdempresa            SMALLINT NOT NULL REFERENCES empresa (cdempresa),
  tipocompra           SMALLINT NOT NULL,
  cdfornecedor         INTEGER NOT NULL REFERENCES fornecedor (cdfornecedor),
  modelo               VARCHAR(2) NOT NULL,
  serie                VARCHAR(3),
  numnf                VARCHAR(30) NOT NULL,
  chavenfefornecedor   VARCHAR(60),
  pde                  SMALLINT NOT NULL,
  dataemissaonf        TIMESTAMP NOT NULL,
  datarecebimento      TIMESTAMP NOT NULL,
  cdtabcfop            SMALLINT REFERENCES naturezaoperacao (cdtabcfop),
  totalcompra          NUMERIC(15,2),
  desconto             NUMERIC(15,2),
  totalproduto         NUMERIC(15,2),
  frete                NUMERIC(15,2),
  seguro               NUMERIC(15,2),
  outrasdespesas       NUMERIC(15,2),
  icms_basecalculo     NUMERIC(15,2),
  icms_valor           NUMERIC(15,2),
  icms_st_basecalculo  NUMERIC(15,2),
  icms_st_valor        NUMERIC(15,2),
  ipi_valor            NUMERIC(15,2),
  pis_valor            NUMERIC(15,2),
  cofins_valor         NUMERIC(15,2)
);

-- The items of a purchase: cditem is a code of the catalogue that the purchase kind names.
CREATE TABLE compraitem (
  cdcompra             INTEGER NOT NULL REFERENCES compra (cdcompra),
  itemcompra           SMALLINT NOT NULL,
  cditem               INTEGER NOT NULL,
  quantidade           NUMERIC(15,4),
  precototal           NUMERIC(15,2),
  desconto             NUMERIC(15,2),
  frete                NUMERIC(15,2),
  seguro               NUMERIC(15,2),
  outrasdespesas       NUMERIC(15,2),
  icms_cst             VARCHAR(5),
  icms_cfop            VARCHAR(10),
  icms_basecalculo     NUMERIC(15,2),
  icms_aliquota        NUMERIC(7,4),
  icms_valor           NUMERIC(15,2),
  icms_st_basecalculo  NUMERIC(15,2),
  icms_st_valor        NUMERIC(15,2),
  ipi_cst              VARCHAR(3),
  ipi_enquadramento    VARCHAR(3),
  ipi_basecalculo      NUMERIC(15,2),
  ipi_valor            NUMERIC(15,2),
  pis_cst              VARCHAR(3),
  pis_aliquota         NUMERIC(7,4),
  pis_basecalculo      NUMERIC(15,2),
  pis_quantunidade     NUMERIC(15,4),
  pis_valorunidade     NUMERIC(15,4),
  pis_valor            NUMERIC(15,2),
  cofins_cst           VARCHAR(3),
  cofins_aliquota      NUMERIC(7,4),
  cofins_basecalculo   NUMERIC(15,2),
  cofins_quantunidade  NUMERIC(15,4),
  cofins_valorunidade  NUMERIC(15,4),
  cofins_valor         NUMERIC(15,2),
  PRIMARY KEY (cdcompra, itemcompra)
);

-- Kinds of outgoing note: the process kind they are exported under, whether the party is a
-- client ('C') or a supplier ('F'), and whether items come from products ('P') or equipment ('E').
CREATE TABLE tiponotafiscal (
  cdtiponotafiscal  SMALLINT NOT NULL PRIMARY KEY,
  desctiponotafiscal VARCHAR(50) NOT NULL,
  tipoprocesso      SMALLINT NOT NULL,
  papel             VARCHAR(1) NOT NULL,
  catalogo          VARCHAR(1) NOT NULL
);

-- An outgoing note; cdparte is a client or a supplier, as its kind says.
CREATE TABLE notafiscal (
  cdtiponotafiscal     SMALLINT NOT NULL REFERENCES tiponotafiscal (cdtiponotafiscal),
  cdnotafiscal         INTEGER NOT NULL,
  cdempresa            SMALLINT NOT NULL REFERENCES empresa (cdempresa),
  cdparte              INTEGER NOT NULL,
  numserie             VARCHAR(5),
  emissao              TIMESTAMP NOT NULL,
  saida                TIMESTAMP,
  pde                  SMALLINT NOT NULL,
  chavenfe             VARCHAR(46),
  cdtabcfop            SMALLINT REFERENCES naturezaoperacao (cdtabcfop),
  valortotalnota       NUMERIC(15,2),
  valordesconto        NUMERIC(15,2),
  valortotalproduto    NUMERIC(15,2),
  valorfrete           NUMERIC(15,2),
  valorseguro          NUMERIC(15,2),
  valoroutrasdesp      NUMERIC(15,2),
  icms_basecalculo     NUMERIC(15,2),
  icms_valor           NUMERIC(15,2),
  icms_st_basecalculo  NUMERIC(15,2),
  icms_st_valor        NUMERIC(15,2),
  ipi_valor            NUMERIC(15,2),
  pis_valor            NUMERIC(15,2),
  cofins_valor         NUMERIC(15,2),
  PRIMARY KEY (cdtiponotafiscal, cdnotafiscal)
);

CREATE TABLE notafiscalitem (
  cdtiponotafiscal     SMALLINT NOT NULL,
  cdnotafiscal         INTEGER NOT NULL,
  itemnotafiscal       SMALLINT NOT NULL,
  cditem               INTEGER NOT NULL,
  cdlote               INTEGER NOT NULL,
  quantidade           NUMERIC(15,4),
  precototal           NUMERIC(15,2),
  desconto             NUMERIC(15,2),
  frete                NUMERIC(15,2),
  seguro               NUMERIC(15,2),
  outrasdesp           NUMERIC(15,2),
  icms_cst             VARCHAR(5),
  icms_cfop            VARCHAR(10),
  icms_basecalculo     NUMERIC(15,2),
  icms_aliquota        NUMERIC(7,4),
  icms_valor           NUMERIC(15,2),
  icms_st_basecalculo  NUMERIC(15,2),
  icms_st_valor        NUMERIC(15,2),
  ipi_cst              VARCHAR(3),
  ipi_enquadramento    VARCHAR(3),
  ipi_basecalculo      NUMERIC(15,2),
  ipi_valor            NUMERIC(15,2),
  pis_cst              VARCHAR(3),
  pis_aliquota         NUMERIC(7,4),
  pis_basecalculo      NUMERIC(15,2),
  pis_quantunidade     NUMERIC(15,4),
  pis_valorunidade     NUMERIC(15,4),
  pis_valor            NUMERIC(15,2),
  cofins_cst           VARCHAR(3),
  cofins_aliquota      NUMERIC(7,4),
  cofins_basecalculo   NUMERIC(15,2),
  cofins_quantunidade  NUMERIC(15,4),
  cofins_valorunidade  NUMERIC(15,4),
  cofins_valor         NUMERIC(15,2),
  PRIMARY KEY (cdtiponotafiscal, cdnotafiscal, itemnotafiscal),
  FOREIGN KEY (cdtiponotafiscal, cdnotafiscal) REFERENCES notafiscal (cdtiponotafiscal, cdnotafiscal)
);

-- A voiding of electronic note numbers, and the numbers it voided (one row each).
CREATE TABLE nfeinutilizada (
  cdnfe_inutilizado  INTEGER NOT NULL PRIMARY KEY,
  cdempresa          SMALLINT NOT NULL REFERENCES empresa (cdempresa),
  data               TIMESTAMP NOT NULL,
  justificativa      VARCHAR(255)
);

CREATE TABLE nfenuminutilizado (
  cdnfe_inutilizado     INTEGER NOT NULL REFERENCES nfeinutilizada (cdnfe_inutilizado),
  cdnfe_numinutilizado  INTEGER NOT NULL,
  PRIMARY KEY (cdnfe_inutilizado, cdnfe_numinutilizado)
);

CREATE TABLE inventarioproduto (
  cdinventario  INTEGER NOT NULL REFERENCES inventario (cdinventario),
  cdproduto     INTEGER NOT NULL REFERENCES produto (cdproduto),
  quantidade    NUMERIC(15,4),
  precofabrica  NUMERIC(15,4),
  precototal    NUMERIC(15,2),
  PRIMARY KEY (cdinventario, cdproduto)
);

-- Clients ('C') and suppliers ('F') under one code space, with their state and IBGE codes.
CREATE VIEW parte AS
  SELECT x.*, c.cdestado, c.codibge AS ibge_cidade, p.codibge AS ibge_pais
    FROM (SELECT 'C' AS papel, cdcliente AS cdparte, razaosocial, tipopessoa, cnpj_cpf, ie_rg,
                 endereco, endereconumero, bairro, cdcidade
            FROM cliente
          UNION ALL
          SELECT 'F', cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg,
                 endereco, endereconumero, bairro, cdcidade
            FROM fornecedor) x
    LEFT JOIN cidade c ON c.cdcidade = x.cdcidade
    LEFT JOIN pais p ON p.cdpais = c.cdpais;

-- Items of an outgoing note under one code space: catalogue 'P' products, 'E' equipment.
CREATE VIEW itemsaida AS
  SELECT 'P' AS catalogo, cdproduto AS cditem, descproduto AS descricao, cdunidade, numncm, codbarra
    FROM produto
  UNION ALL
  SELECT 'E', cdequipamento, descequipamento, cdunidade, numncm, codbarra
    FROM equipamento;

-- Purchase items with their purchase kind, catalogue entry (the catalogue of the purchase
-- kind) and unit symbol. One key lookup per catalogue, so that a purchase's items are found
-- without reading the catalogues; items missing from their catalogue are left out.
CREATE VIEW compraitemfiscal AS
  SELECT c.tipocompra, i.*,
         COALESCE(e.descequipamento, p.descproduto, s.descinsumo, k.descproduto) AS descricao,
         COALESCE(e.numncm, p.numncm, s.numncm, k.numncm) AS numncm,
         COALESCE(e.codbarra, p.codbarra, k.codbarra) AS codbarra,
         u.siglaunidade
    FROM compraitem i
    JOIN compra c ON c.cdcompra = i.cdcompra
    LEFT JOIN equipamento e ON c.tipocompra = 1 AND e.cdequipamento = i.cditem
    LEFT JOIN produto p ON c.tipocompra = 2 AND p.cdproduto = i.cditem
    LEFT JOIN insumo s ON c.tipocompra = 3 AND s.cdinsumo = i.cditem
    LEFT JOIN prodconsumo k ON c.tipocompra = 4 AND k.cdprodconsumo = i.cditem
    LEFT JOIN unidade u ON u.cdunidade = COALESCE(e.cdunidade, p.cdunidade, s.cdunidade, k.cdunidade)
   WHERE COALESCE(e.cdequipamento, p.cdproduto, s.cdinsumo, k.cdprodconsumo) IS NOT NULL;

-- The inventories a fiscal register names: fechamento 'M' month end, 'A' year end.
CREATE VIEW inventarioregistro AS
  SELECT r.cdregistrofiscal, 'M' AS fechamento, i.*
    FROM registrofiscal r JOIN inventario i ON i.cdinventario = r.cdinventariofinalmes
  UNION ALL
  SELECT r.cdregistrofiscal, 'A', i.*
    FROM registrofiscal r JOIN inventario i ON i.cdinventario = r.cdinventariofinalano;

-- Their products, with the inventory's kind and the product's unit symbol.
CREATE VIEW inventarioprodutoregistro AS
  SELECT i.cdregistrofiscal, i.fechamento, i.cdtipoinventario, p.*, u.siglaunidade
    FROM inventarioregistro i
    JOIN inventarioproduto p ON p.cdinventario = i.cdinventario
    JOIN produto q ON q.cdproduto = p.cdproduto
    LEFT JOIN unidade u ON u.cdunidade = q.cdunidade;

-- The notes of each fiscal register's company and month: purchases by their date of receipt,
-- outgoing notes by their date of issue, voided numbers by the date of the voiding.
CREATE VIEW compraregistro AS
  SELECT r.cdregistrofiscal, c.*
    FROM registrofiscal r
    JOIN periodofiscal p ON p.ano = r.ano AND p.cdmes = r.cdmes
    JOIN compra c ON c.cdempresa = r.cdempresa
               AND c.datarecebimento >= p.inicio AND c.datarecebimento < p.fim;

CREATE VIEW notafiscalregistro AS
  SELECT r.cdregistrofiscal, t.tipoprocesso, n.*
    FROM registrofiscal r
    JOIN periodofiscal p ON p.ano = r.ano AND p.cdmes = r.cdmes
    JOIN notafiscal n ON n.cdempresa = r.cdempresa AND n.emissao >= p.inicio AND n.emissao < p.fim
    JOIN tiponotafiscal t ON t.cdtiponotafiscal = n.cdtiponotafiscal;

CREATE VIEW nfeinutilizadaregistro AS
  SELECT r.cdregistrofiscal, v.*, n.cdnfe_numinutilizado
    FROM registrofiscal r
    JOIN periodofiscal p ON p.ano = r.ano AND p.cdmes = r.cdmes
    JOIN nfeinutilizada v ON v.cdempresa = r.cdempresa AND v.data >= p.inicio AND v.data < p.fim
    JOIN nfenuminutilizado n ON n.cdnfe_inutilizado = v.cdnfe_inutilizado;
