-- A large company's month for the benchmark, loaded over schema.sql and demo.sql: the demo
-- company's March 2024 grown by the counts of the one-row table bench_escala (written first by
-- bench/gen_large from the scale). Deterministic: every value follows from the row numbers
-- (and the seed in bench_escala), so the same scale and seed give the same database.
-- Written for the benchmark's two databases, SQLite and PostgreSQL. Rows of the demo keep their keys;
-- the bulk rows start at 100000.

CREATE TABLE bench_n (i INTEGER NOT NULL PRIMARY KEY);
INSERT INTO bench_n (i)
  WITH RECURSIVE s (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM s WHERE i < (SELECT maior FROM bench_escala))
  SELECT i FROM s;

CREATE TABLE bench_dia (dia INTEGER NOT NULL PRIMARY KEY, data TIMESTAMP, hora TIMESTAMP);
INSERT INTO bench_dia (dia, data, hora) VALUES
  (1, '2024-03-01 00:00:00', '2024-03-01 09:00:00'), (2, '2024-03-02 00:00:00', '2024-03-02 09:00:00'),
  (3, '2024-03-03 00:00:00', '2024-03-03 09:00:00'), (4, '2024-03-04 00:00:00', '2024-03-04 09:00:00'),
  (5, '2024-03-05 00:00:00', '2024-03-05 09:00:00'), (6, '2024-03-06 00:00:00', '2024-03-06 09:00:00'),
  (7, '2024-03-07 00:00:00', '2024-03-07 09:00:00'), (8, '2024-03-08 00:00:00', '2024-03-08 09:00:00'),
  (9, '2024-03-09 00:00:00', '2024-03-09 09:00:00'), (10, '2024-03-10 00:00:00', '2024-03-10 09:00:00'),
  (11, '2024-03-11 00:00:00', '2024-03-11 09:00:00'), (12, '2024-03-12 00:00:00', '2024-03-12 09:00:00'),
  (13, '2024-03-13 00:00:00', '2024-03-13 09:00:00'), (14, '2024-03-14 00:00:00', '2024-03-14 09:00:00'),
  (15, '2024-03-15 00:00:00', '2024-03-15 09:00:00'), (16, '2024-03-16 00:00:00', '2024-03-16 09:00:00'),
  (17, '2024-03-17 00:00:00', '2024-03-17 09:00:00'), (18, '2024-03-18 00:00:00', '2024-03-18 09:00:00'),
  (19, '2024-03-19 00:00:00', '2024-03-19 09:00:00'), (20, '2024-03-20 00:00:00', '2024-03-20 09:00:00'),
  (21, '2024-03-21 00:00:00', '2024-03-21 09:00:00'), (22, '2024-03-22 00:00:00', '2024-03-22 09:00:00'),
  (23, '2024-03-23 00:00:00', '2024-03-23 09:00:00'), (24, '2024-03-24 00:00:00', '2024-03-24 09:00:00'),
  (25, '2024-03-25 00:00:00', '2024-03-25 09:00:00'), (26, '2024-03-26 00:00:00', '2024-03-26 09:00:00'),
  (27, '2024-03-27 00:00:00', '2024-03-27 09:00:00'), (28, '2024-03-28 00:00:00', '2024-03-28 09:00:00'),
  (29, '2024-03-29 00:00:00', '2024-03-29 09:00:00'), (30, '2024-03-30 00:00:00', '2024-03-30 09:00:00'),
  (31, '2024-03-31 00:00:00', '2024-03-31 09:00:00');

-- Catalogue and parties.
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda)
SELECT 100000 + n.i, 'Produto de revenda número ' || CAST(n.i AS VARCHAR(10)) || ' ção', 1 + (n.i + e.semente) % 8,
       CAST(73000000 + (n.i * 7 + e.semente) % 999999 AS VARCHAR(8)), '00.000.00',
       CAST(7890000000000 + n.i AS VARCHAR(13)), (100 + (n.i * 37 + e.semente) % 90000) / 100.0
  FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.produtos;

INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade)
SELECT 100000 + n.i, 'Cliente São João ' || CAST(n.i AS VARCHAR(10)) || ' Ltda', 'J',
       CAST(10000000000000 + n.i * 97 AS VARCHAR(14)), CAST(244000000000 + n.i AS VARCHAR(12)),
       'Rua das Acácias', CAST(1 + n.i % 3000 AS VARCHAR(5)), 'Centro', '13010-050', 1 + (n.i + e.semente) % 10
  FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.clientes;

INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade)
SELECT 100000 + n.i, 'Fornecedor Irmãos ' || CAST(n.i AS VARCHAR(10)) || ' S.A.', 'J',
       CAST(20000000000000 + n.i * 89 AS VARCHAR(14)), CAST(110000000000 + n.i AS VARCHAR(12)),
       'Avenida Brasil', CAST(1 + n.i % 5000 AS VARCHAR(5)), 'Jardim', '05033-002', 1 + (n.i * 3 + e.semente) % 10
  FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.fornecedores;

-- Purchases: kinds 1 (equipment), 2 (products) and 4 (consumption products) in turn.
INSERT INTO compra (cdcompra, cdempresa, tipocompra, cdfornecedor, modelo, serie, numnf, chavenfefornecedor, pde,
                    dataemissaonf, datarecebimento, cdtabcfop, totalcompra, desconto, totalproduto, frete, seguro,
                    outrasdespesas, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor,
                    pis_valor, cofins_valor)
SELECT 100000 + n.i, 1, CASE n.i % 3 WHEN 0 THEN 1 WHEN 1 THEN 2 ELSE 4 END, 100001 + (n.i + e.semente) % e.fornecedores,
       '55', '1', CAST(100000 + n.i AS VARCHAR(10)), NULL, 3, d.data, d.hora,
       CASE n.i % 3 WHEN 0 THEN 1551 WHEN 1 THEN 1102 ELSE 1556 END,
       (5000 + n.i % 90000) / 10.0, 0, (5000 + n.i % 90000) / 10.0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0
  FROM bench_n n CROSS JOIN bench_escala e
  JOIN bench_dia d ON d.dia = 1 + (n.i - 1) % 31
 WHERE n.i <= e.compras;

INSERT INTO compraitem (cdcompra, itemcompra, cditem, quantidade, precototal, desconto, frete, seguro, outrasdespesas,
  icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst,
  ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade,
  pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade,
  cofins_valorunidade, cofins_valor)
SELECT c.cdcompra, k.i,
       CASE c.tipocompra WHEN 1 THEN 1 + (c.cdcompra + k.i) % 8 WHEN 2 THEN 100001 + (c.cdcompra * 7 + k.i * 11) % e.produtos
                         ELSE 1 + (c.cdcompra + k.i) % 8 END,
       1 + (c.cdcompra * k.i) % 20, (180 + (c.cdcompra * 31 + k.i * 17) % 40000) / 100.0, 0, 0, 0, 0,
       '000', CAST(c.cdtabcfop AS VARCHAR(10)), (180 + (c.cdcompra * 31 + k.i * 17) % 40000) / 100.0, 18,
       (180 + (c.cdcompra * 31 + k.i * 17) % 40000) * 18 / 100 / 100.0, 0, 0, '49', '999', 0, 0,
       '50', 1.65, (180 + (c.cdcompra * 31 + k.i * 17) % 40000) / 100.0, 0, 0, 0.33,
       '50', 7.6, (180 + (c.cdcompra * 31 + k.i * 17) % 40000) / 100.0, 0, 0, 1.52
  FROM compra c CROSS JOIN bench_escala e CROSS JOIN bench_n k
 WHERE k.i <= e.itens_compra AND c.cdcompra > 100000
 ORDER BY c.cdcompra, k.i;

-- Outgoing notes: the five kinds in turn (sales of goods most of all), parties by role.
INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe,
                        cdtabcfop, valortotalnota, valordesconto, valortotalproduto, valorfrete, valorseguro,
                        valoroutrasdesp, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor,
                        pis_valor, cofins_valor)
SELECT x.tipo, 100000 + x.i, 1,
       CASE x.tipo WHEN 4 THEN 100001 + (x.i + e.semente) % e.fornecedores ELSE 100001 + (x.i * 7 + e.semente) % e.clientes END,
       '1', d.data, d.hora, 2, NULL,
       CASE x.tipo WHEN 1 THEN 5102 WHEN 2 THEN 5551 WHEN 3 THEN 5152 WHEN 4 THEN 5202 ELSE 1202 END,
       (3000 + x.i % 70000) / 10.0, 0, (3000 + x.i % 70000) / 10.0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0
  FROM (SELECT n.i, CASE WHEN n.i % 10 < 6 THEN 1 ELSE 1 + n.i % 10 - 5 END AS tipo FROM bench_n n) x
  CROSS JOIN bench_escala e
  JOIN bench_dia d ON d.dia = 1 + (x.i - 1) % 31
 WHERE x.i <= e.saidas;

INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal,
  desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor,
  icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota,
  pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo,
  cofins_quantunidade, cofins_valorunidade, cofins_valor)
SELECT n.cdtiponotafiscal, n.cdnotafiscal, k.i,
       CASE n.cdtiponotafiscal WHEN 2 THEN 1 + (n.cdnotafiscal + k.i) % 8
            ELSE 100001 + (n.cdnotafiscal * 13 + k.i * 7) % e.produtos END,
       1, 1 + (n.cdnotafiscal * k.i) % 12, (120 + (n.cdnotafiscal * 29 + k.i * 13) % 90000) / 100.0, 0, 0, 0, 0,
       '000', CAST(n.cdtabcfop AS VARCHAR(10)), (120 + (n.cdnotafiscal * 29 + k.i * 13) % 90000) / 100.0, 18,
       (120 + (n.cdnotafiscal * 29 + k.i * 13) % 90000) * 18 / 100 / 100.0, 0, 0, '53', '999', 0, 0,
       '01', 1.65, (120 + (n.cdnotafiscal * 29 + k.i * 13) % 90000) / 100.0, 0, 0, 0.5,
       '01', 7.6, (120 + (n.cdnotafiscal * 29 + k.i * 13) % 90000) / 100.0, 0, 0, 2.25
  FROM notafiscal n CROSS JOIN bench_escala e CROSS JOIN bench_n k
 WHERE k.i <= e.itens_saida AND n.cdnotafiscal > 100000
 ORDER BY n.cdtiponotafiscal, n.cdnotafiscal, k.i;

-- Voided numbers, after the notes' numbers.
INSERT INTO nfeinutilizada (cdnfe_inutilizado, cdempresa, data, justificativa)
SELECT 100000 + n.i, 1, d.hora, 'Falha na transmissão: numeração pulada'
  FROM bench_n n CROSS JOIN bench_escala e
  JOIN bench_dia d ON d.dia = 1 + (n.i - 1) % 31
 WHERE n.i <= e.inutilizados;
INSERT INTO nfenuminutilizado (cdnfe_inutilizado, cdnfe_numinutilizado)
SELECT 100000 + n.i, 100000 + e.saidas + n.i FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.inutilizados;

-- The month-end (1) and year-end (2) inventories hold every product.
INSERT INTO inventarioproduto (cdinventario, cdproduto, quantidade, precofabrica, precototal)
SELECT v.cdinventario, p.cdproduto, 1 + p.cdproduto % 50, p.precovenda, (1 + p.cdproduto % 50) * p.precovenda
  FROM inventario v CROSS JOIN produto p
 WHERE p.cdproduto > 100000;

DROP TABLE bench_dia;
DROP TABLE bench_n;
DROP TABLE bench_escala;
