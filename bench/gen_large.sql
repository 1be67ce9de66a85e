-- A large company's month for the benchmark, loaded over schema.sql and demo.sql: the demo
-- company's March 2024 grown by the counts of the one-row table bench_escala (written first by
-- bench/gen_large from the scale). Deterministic: every value follows from the row numbers
-- and the seed in bench_escala, so the same scale and seed give the same database.
-- Written for the benchmark's two databases, SQLite and PostgreSQL. Rows of the demo keep their
-- keys; the bulk rows start at 100000.
--
-- The month is one that the converters take and the validators pass: parties with CNPJ or CPF
-- and state registrations whose check digits follow their state's rule, in municipalities of
-- their state; notes whose totals are the sums of their items, with the interstate rates the
-- pair of states requires; access keys on every electronic note. The company is a wholesaler
-- in Campinas (SP):
--   * clients: 10 % in Paraná and 10 % in Goiás (companies), the rest in São Paulo, where a
--     quarter of all clients are persons (CPF, no registration: consumers buy inside the state
--     only); the branch in Jundiaí receives the transfers;
--   * suppliers: 15 % in Paraná, 15 % in Goiás, the rest in São Paulo, one in twenty a carrier;
--   * purchases: 85 % goods for resale (from any state), 10 % consumption material and 3 %
--     fixed assets (from São Paulo only, so that no rate difference is due), 2 % transport
--     documents (CT-e, model 57, which the files leave out);
--   * outgoing notes: 86.8 % sales, 5 % transfers to the branch, 4 % purchase returns, 4 %
--     sales returns, 0.2 % sales of fixed assets; 1.5 % cancelled; one number voided after
--     every 49 notes (2 %);
--   * one product in ten is under tax substitution (ST): bought from São Paulo suppliers with
--     the tax retained (CST 010, CFOP 1403) and sold inside the state without own ICMS (CST
--     060, CFOP 5405); notes to or from other states, transfers and returns carry the others.
-- Tax rules, with their sources:
--   * ICMS rates: 18 % inside São Paulo (RICMS/SP art. 52 I); between states, Resolução do
--     Senado Federal 22/1989: 7 % from the South and Southeast (but Espírito Santo) to the
--     North, Northeast and Centre-West, 12 % otherwise (SP->PR 12, SP->GO 7, PR->SP and
--     GO->SP 12); a return keeps the rate of the operation it returns;
--   * transport inside São Paulo 12 % (RICMS/SP art. 54 I);
--   * sale of fixed assets: no ICMS (RICMS/SP art. 7 XIV), CST 041;
--   * transfers to the branch carry the tax, so that the credit goes with the goods (optional
--     inside the state: LC 204/2023, SP Decreto 68.243/2023);
--   * consumption material and fixed assets give no ICMS credit on entry (LC 87/96 art. 33 I;
--     fixed assets by the CIAP, outside these files): the supplier's CST 000, without base;
--   * PIS 1.65 % and COFINS 7.6 % (non-cumulative: Leis 10.637/2002 and 10.833/2003), on the
--     value less the ICMS shown (sales: STF RE 574.706; credits: Lei 14.592/2023).
-- Check digits, each by its published rule: CNPJ and CPF (mod 11); state registrations of São
-- Paulo (12 digits, digits 9 and 12), Paraná (fazenda.pr.gov.br: 10 digits, weights 2 to 7)
-- and Goiás (sintegra.gov.br: 9 digits, 10 or 11 or 20-29 first, weights 9 to 2), all in the
-- table bench_esquema below; access keys of NF-e and CT-e (44 digits, mod 11 with weights 2
-- to 9, as the NF-e manual gives it), in one sum.
--
-- Amounts are computed in whole cents (integers) and divided by the DOUBLE 100e0 only when
-- stored. Values that several statements need come from helper tables built once (joins, not
-- correlated subqueries): the items' amounts and codes are computed once into staging tables,
-- and views over them derive the taxes for the headers' sums and for the rows. The helper
-- tables are temporary, so that the SQLite file keeps no free pages of them and PostgreSQL logs
-- none of their rows; each is analysed once filled: PostgreSQL plans the statements that read
-- it by its statistics, and its guesses for a new table were nested loops over whole tables.

CREATE TEMP TABLE bench_n (i INTEGER NOT NULL PRIMARY KEY);
INSERT INTO bench_n (i)
  WITH RECURSIVE s (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM s WHERE i < (SELECT maior FROM bench_escala))
  SELECT i FROM s;
ANALYZE bench_n;

-- Days of issue and receipt: March 2024 and the last days of February (a purchase received at
-- the start of the month may have been issued in the month before).
CREATE TEMP TABLE bench_dia (dia INTEGER NOT NULL PRIMARY KEY, data TIMESTAMP, hora TIMESTAMP, aamm INTEGER);
INSERT INTO bench_dia (dia, data, hora, aamm) VALUES
  (-5, '2024-02-24 00:00:00', '2024-02-24 09:00:00', 2402), (-4, '2024-02-25 00:00:00', '2024-02-25 09:00:00', 2402),
  (-3, '2024-02-26 00:00:00', '2024-02-26 09:00:00', 2402), (-2, '2024-02-27 00:00:00', '2024-02-27 09:00:00', 2402),
  (-1, '2024-02-28 00:00:00', '2024-02-28 09:00:00', 2402), (0, '2024-02-29 00:00:00', '2024-02-29 09:00:00', 2402),
  (1, '2024-03-01 00:00:00', '2024-03-01 09:00:00', 2403), (2, '2024-03-02 00:00:00', '2024-03-02 09:00:00', 2403),
  (3, '2024-03-03 00:00:00', '2024-03-03 09:00:00', 2403), (4, '2024-03-04 00:00:00', '2024-03-04 09:00:00', 2403),
  (5, '2024-03-05 00:00:00', '2024-03-05 09:00:00', 2403), (6, '2024-03-06 00:00:00', '2024-03-06 09:00:00', 2403),
  (7, '2024-03-07 00:00:00', '2024-03-07 09:00:00', 2403), (8, '2024-03-08 00:00:00', '2024-03-08 09:00:00', 2403),
  (9, '2024-03-09 00:00:00', '2024-03-09 09:00:00', 2403), (10, '2024-03-10 00:00:00', '2024-03-10 09:00:00', 2403),
  (11, '2024-03-11 00:00:00', '2024-03-11 09:00:00', 2403), (12, '2024-03-12 00:00:00', '2024-03-12 09:00:00', 2403),
  (13, '2024-03-13 00:00:00', '2024-03-13 09:00:00', 2403), (14, '2024-03-14 00:00:00', '2024-03-14 09:00:00', 2403),
  (15, '2024-03-15 00:00:00', '2024-03-15 09:00:00', 2403), (16, '2024-03-16 00:00:00', '2024-03-16 09:00:00', 2403),
  (17, '2024-03-17 00:00:00', '2024-03-17 09:00:00', 2403), (18, '2024-03-18 00:00:00', '2024-03-18 09:00:00', 2403),
  (19, '2024-03-19 00:00:00', '2024-03-19 09:00:00', 2403), (20, '2024-03-20 00:00:00', '2024-03-20 09:00:00', 2403),
  (21, '2024-03-21 00:00:00', '2024-03-21 09:00:00', 2403), (22, '2024-03-22 00:00:00', '2024-03-22 09:00:00', 2403),
  (23, '2024-03-23 00:00:00', '2024-03-23 09:00:00', 2403), (24, '2024-03-24 00:00:00', '2024-03-24 09:00:00', 2403),
  (25, '2024-03-25 00:00:00', '2024-03-25 09:00:00', 2403), (26, '2024-03-26 00:00:00', '2024-03-26 09:00:00', 2403),
  (27, '2024-03-27 00:00:00', '2024-03-27 09:00:00', 2403), (28, '2024-03-28 00:00:00', '2024-03-28 09:00:00', 2403),
  (29, '2024-03-29 00:00:00', '2024-03-29 09:00:00', 2403), (30, '2024-03-30 00:00:00', '2024-03-30 09:00:00', 2403),
  (31, '2024-03-31 00:00:00', '2024-03-31 09:00:00', 2403);

-- The parties' states: the state's code in an access key, its registration's check-digit
-- scheme and how many of its municipalities (bench_cidade) the parties live in.
CREATE TEMP TABLE bench_uf (uf VARCHAR(2) NOT NULL PRIMARY KEY, codigo INTEGER NOT NULL, esquema VARCHAR(5) NOT NULL,
                            cidades INTEGER NOT NULL);
INSERT INTO bench_uf (uf, codigo, esquema, cidades) VALUES ('SP', 35, 'IE-SP', 6), ('PR', 41, 'IE-PR', 5),
  ('GO', 52, 'IE-GO', 4);

INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES
  (101, 'Londrina', 'PR', 4113700, 1), (102, 'Maringá', 'PR', 4115200, 1), (103, 'Ponta Grossa', 'PR', 4119905, 1),
  (104, 'Cascavel', 'PR', 4104808, 1), (105, 'Goiânia', 'GO', 5208707, 1), (106, 'Anápolis', 'GO', 5201108, 1),
  (107, 'Aparecida de Goiânia', 'GO', 5201405, 1), (108, 'Rio Verde', 'GO', 5218805, 1);
CREATE TEMP TABLE bench_cidade (uf VARCHAR(2) NOT NULL, ordem INTEGER NOT NULL, cdcidade INTEGER NOT NULL, cep VARCHAR(9),
                                PRIMARY KEY (uf, ordem));
INSERT INTO bench_cidade (uf, ordem, cdcidade, cep) VALUES
  ('SP', 0, 1, '13010-050'), ('SP', 1, 2, '01001-000'), ('SP', 2, 3, '14010-000'), ('SP', 3, 4, '13201-000'),
  ('SP', 4, 5, '18010-000'), ('SP', 5, 10, '12210-000'), ('PR', 0, 8, '80010-000'), ('PR', 1, 101, '86010-000'),
  ('PR', 2, 102, '87013-000'), ('PR', 3, 103, '84010-000'), ('PR', 4, 104, '85801-000'), ('GO', 0, 105, '74003-010'),
  ('GO', 1, 106, '75020-000'), ('GO', 2, 107, '74905-000'), ('GO', 3, 108, '75901-000');

-- ICMS rate of a goods operation from one state to another (see the head of this file).
CREATE TEMP TABLE bench_aliquota (origem VARCHAR(2) NOT NULL, destino VARCHAR(2) NOT NULL, aliquota INTEGER NOT NULL,
                                  PRIMARY KEY (origem, destino));
INSERT INTO bench_aliquota (origem, destino, aliquota) VALUES ('SP', 'SP', 18), ('SP', 'PR', 12), ('SP', 'GO', 7),
  ('PR', 'SP', 12), ('GO', 'SP', 12);

INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (1353, 'Aquisição de serviço de transporte'),
  (1403, 'Compra para comercialização com ST'), (5405, 'Venda de mercadoria com ST retido anteriormente');

-- Check digits of the parties' documents. A scheme computes its digits in rounds; each round
-- weighs the first `tamanho` digits of the number so far (of `comprimento` digits): from the
-- right 2, 3, ... up to 1 + ciclo, then 2 again; São Paulo's first round (ciclo 0) weighs its
-- 8 digits 1, 3, 4, 5, 6, 7, 8, 10 from the left. regra 'C': the digit is 11 less the
-- remainder mod 11, 0 for a remainder of 0 or 1; 'R': the last digit of the remainder. São
-- Paulo's first digit goes in at position 9, before the two digits that follow it; every other
-- digit is appended. The numbers are integers (none starts with a zero), their digits taken by
-- division with the power of ten of each position.
CREATE TEMP TABLE bench_esquema (esquema VARCHAR(5) NOT NULL, rodada INTEGER NOT NULL, tamanho INTEGER NOT NULL,
                                 comprimento INTEGER NOT NULL, ciclo INTEGER NOT NULL, regra VARCHAR(1) NOT NULL,
                                 ultima INTEGER NOT NULL, PRIMARY KEY (esquema, rodada));
INSERT INTO bench_esquema (esquema, rodada, tamanho, comprimento, ciclo, regra, ultima) VALUES
  ('CNPJ', 1, 12, 12, 8, 'C', 0), ('CNPJ', 2, 13, 13, 8, 'C', 1), ('CPF', 1, 9, 9, 10, 'C', 0),
  ('CPF', 2, 10, 10, 10, 'C', 1), ('IE-SP', 1, 8, 10, 0, 'R', 0), ('IE-SP', 2, 11, 11, 9, 'R', 1),
  ('IE-PR', 1, 8, 8, 6, 'C', 0), ('IE-PR', 2, 9, 9, 6, 'C', 1), ('IE-GO', 1, 8, 8, 8, 'C', 1);
CREATE TEMP TABLE bench_pot (expoente INTEGER NOT NULL PRIMARY KEY, pot BIGINT NOT NULL);
INSERT INTO bench_pot (expoente, pot) VALUES (0, 1), (1, 10), (2, 100), (3, 1000), (4, 10000), (5, 100000),
  (6, 1000000), (7, 10000000), (8, 100000000), (9, 1000000000), (10, 10000000000), (11, 100000000000),
  (12, 1000000000000);
CREATE TEMP TABLE bench_peso (esquema VARCHAR(5) NOT NULL, rodada INTEGER NOT NULL, posicao INTEGER NOT NULL,
                              peso INTEGER NOT NULL, pot BIGINT NOT NULL, PRIMARY KEY (esquema, rodada, posicao));
INSERT INTO bench_peso (esquema, rodada, posicao, peso, pot)
SELECT e.esquema, e.rodada, n.i,
       CASE WHEN e.ciclo = 0 THEN CASE n.i WHEN 1 THEN 1 WHEN 8 THEN 10 ELSE n.i + 1 END
            ELSE 2 + (e.tamanho - n.i) % e.ciclo END, p.pot
  FROM bench_esquema e JOIN bench_n n ON n.i <= e.tamanho JOIN bench_pot p ON p.expoente = e.comprimento - n.i;

-- The numbers whose next digit is due (dono: C client, F supplier; id: its j), and that
-- digit; bench_pronto keeps the finished numbers as text (and the access keys, below).
CREATE TEMP TABLE bench_num (dono VARCHAR(1) NOT NULL, id INTEGER NOT NULL, esquema VARCHAR(5) NOT NULL,
                             rodada INTEGER NOT NULL, valor BIGINT NOT NULL, PRIMARY KEY (dono, id, esquema, rodada));
CREATE TEMP VIEW bench_digito AS
SELECT x.dono, x.id, x.esquema, x.rodada, x.valor, e.ultima,
       CASE WHEN e.regra = 'R' THEN x.soma % 11 % 10 WHEN x.soma % 11 < 2 THEN 0 ELSE 11 - x.soma % 11 END AS dv
  FROM (SELECT b.dono, b.id, b.esquema, b.rodada, MAX(b.valor) AS valor, SUM(b.valor / w.pot % 10 * w.peso) AS soma
          FROM bench_num b JOIN bench_peso w ON w.esquema = b.esquema AND w.rodada = b.rodada
         GROUP BY b.dono, b.id, b.esquema, b.rodada) x
  JOIN bench_esquema e ON e.esquema = x.esquema AND e.rodada = x.rodada;
CREATE TEMP TABLE bench_pronto (dono VARCHAR(1) NOT NULL, id INTEGER NOT NULL, esquema VARCHAR(5) NOT NULL,
                                valor VARCHAR(44) NOT NULL, PRIMARY KEY (dono, esquema, id));

-- Parties: client or supplier j, its state (by j, so that every state has parties at any
-- scale), city, and kind: clients J company or F person; suppliers V vendor or T carrier.
-- x numbers every party of both sides apart, shifted by the seed.
CREATE TEMP TABLE bench_pessoa (dono VARCHAR(1) NOT NULL, j INTEGER NOT NULL, codigo INTEGER NOT NULL,
                                tipo VARCHAR(1) NOT NULL, uf VARCHAR(2) NOT NULL, cdcidade INTEGER NOT NULL,
                                cep VARCHAR(9) NOT NULL, x BIGINT NOT NULL, PRIMARY KEY (dono, j));
INSERT INTO bench_pessoa (dono, j, codigo, tipo, uf, cdcidade, cep, x)
SELECT x.dono, x.j, 100000 + x.j, x.tipo, x.uf, c.cdcidade, c.cep,
       CAST(x.j AS BIGINT) + CASE x.dono WHEN 'F' THEN 500000 ELSE 0 END + x.semente * 1000003
  FROM (SELECT 'C' AS dono, n.i AS j, e.semente,
               CASE WHEN (n.i - 1) % 20 BETWEEN 4 AND 8 THEN 'F' ELSE 'J' END AS tipo,
               CASE WHEN (n.i - 1) % 20 < 2 THEN 'PR' WHEN (n.i - 1) % 20 < 4 THEN 'GO' ELSE 'SP' END AS uf
          FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.clientes
        UNION ALL
        SELECT 'F', n.i, e.semente, CASE WHEN (n.i - 1) % 20 = 1 THEN 'T' ELSE 'V' END,
               CASE WHEN (n.i - 1) % 20 BETWEEN 2 AND 4 THEN 'PR' WHEN (n.i - 1) % 20 BETWEEN 5 AND 7 THEN 'GO' ELSE 'SP' END
          FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.fornecedores) x
  JOIN bench_uf u ON u.uf = x.uf
  JOIN bench_cidade c ON c.uf = x.uf AND c.ordem = (x.j * 7) % u.cidades;
ANALYZE bench_pessoa;

-- Their documents: a CNPJ (8 digits, branch 0001) or a CPF, and a company's registration
-- (Goiás: first digits 10, then above 10119997, clear of the old range with its own rule),
-- without check digits; distinct numbers from a bijection of x (7919 and 104729 are prime to
-- the ranges' sizes).
INSERT INTO bench_num (dono, id, esquema, rodada, valor)
SELECT p.dono, p.j, CASE p.tipo WHEN 'F' THEN 'CPF' ELSE 'CNPJ' END, 1,
       CASE p.tipo WHEN 'F' THEN 100000000 + p.x * 7919 % 900000000 ELSE (10000000 + p.x * 7919 % 90000000) * 10000 + 1 END
  FROM bench_pessoa p
UNION ALL
SELECT p.dono, p.j, u.esquema, 1,
       CASE p.uf WHEN 'SP' THEN (10000000 + p.x * 104729 % 90000000) * 100 + 10 + p.j % 90
                 WHEN 'GO' THEN 10200000 + p.x * 104729 % 800000
                 ELSE 10000000 + p.x * 104729 % 90000000 END
  FROM bench_pessoa p JOIN bench_uf u ON u.uf = p.uf
 WHERE p.tipo <> 'F';
ANALYZE bench_num;
INSERT INTO bench_num (dono, id, esquema, rodada, valor)
SELECT d.dono, d.id, d.esquema, d.rodada + 1,
       CASE d.esquema WHEN 'IE-SP' THEN d.valor / 100 * 1000 + d.dv * 100 + d.valor % 100 ELSE d.valor * 10 + d.dv END
  FROM bench_digito d WHERE d.ultima = 0;
DELETE FROM bench_num
 WHERE EXISTS (SELECT 1 FROM bench_esquema e
                WHERE e.esquema = bench_num.esquema AND e.rodada = bench_num.rodada AND e.ultima = 0);
INSERT INTO bench_pronto (dono, id, esquema, valor)
SELECT d.dono, d.id, d.esquema, CAST(d.valor * 10 + d.dv AS VARCHAR(14)) FROM bench_digito d;
ANALYZE bench_pronto;
DROP VIEW bench_digito;
DROP TABLE bench_num;

-- The parties as an ERP stores them: documents with their masks.
CREATE TEMP VIEW bench_cadastro AS
SELECT p.dono, p.codigo,
       CASE WHEN p.dono = 'C' AND p.tipo = 'F' THEN 'Antônio Conceição Araújo ' || CAST(p.j AS VARCHAR(10))
            WHEN p.dono = 'C' THEN 'Comercial São João ' || CAST(p.j AS VARCHAR(10)) || ' Ltda'
            WHEN p.tipo = 'T' THEN 'Transportes Bandeirantes ' || CAST(p.j AS VARCHAR(10)) || ' Ltda'
            ELSE 'Fornecedor Irmãos ' || CAST(p.j AS VARCHAR(10)) || ' S.A.' END AS razaosocial,
       CASE p.tipo WHEN 'F' THEN 'F' ELSE 'J' END AS tipopessoa,
       CASE d.esquema WHEN 'CPF' THEN SUBSTR(d.valor, 1, 3) || '.' || SUBSTR(d.valor, 4, 3) || '.' || SUBSTR(d.valor, 7, 3)
                                      || '-' || SUBSTR(d.valor, 10, 2)
            ELSE SUBSTR(d.valor, 1, 2) || '.' || SUBSTR(d.valor, 3, 3) || '.' || SUBSTR(d.valor, 6, 3) || '/'
                 || SUBSTR(d.valor, 9, 4) || '-' || SUBSTR(d.valor, 13, 2) END AS cnpj_cpf,
       CASE r.esquema WHEN 'IE-SP' THEN SUBSTR(r.valor, 1, 3) || '.' || SUBSTR(r.valor, 4, 3) || '.' || SUBSTR(r.valor, 7, 3)
                                        || '.' || SUBSTR(r.valor, 10, 3)
                      WHEN 'IE-PR' THEN SUBSTR(r.valor, 1, 8) || '-' || SUBSTR(r.valor, 9, 2)
                      WHEN 'IE-GO' THEN SUBSTR(r.valor, 1, 2) || '.' || SUBSTR(r.valor, 3, 3) || '.' || SUBSTR(r.valor, 6, 3)
                                        || '-' || SUBSTR(r.valor, 9, 1) END AS ie_rg,
       CASE p.dono WHEN 'C' THEN 'Rua das Acácias' ELSE 'Avenida Brasil' END AS endereco,
       CAST(1 + p.j % 3000 AS VARCHAR(5)) AS endereconumero, CASE p.dono WHEN 'C' THEN 'Centro' ELSE 'Jardim' END AS bairro,
       p.cep, p.cdcidade
  FROM bench_pessoa p
  JOIN bench_uf u ON u.uf = p.uf
  JOIN bench_pronto d ON d.dono = p.dono AND d.esquema = CASE p.tipo WHEN 'F' THEN 'CPF' ELSE 'CNPJ' END AND d.id = p.j
  LEFT JOIN bench_pronto r ON r.dono = p.dono AND r.esquema = u.esquema AND r.id = p.j;

INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade)
SELECT codigo, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade
  FROM bench_cadastro WHERE dono = 'C';
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade)
SELECT codigo, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade
  FROM bench_cadastro WHERE dono = 'F';
-- The branch in Jundiaí as a client: the party of the transfers (its registration with the
-- check digits of São Paulo's rule).
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade)
VALUES (100000, 'Ferragens São José Comércio Ltda - Filial Jundiaí', 'J', '12.345.678/0002-76', '407.555.010.113',
        'Rua do Retiro', '880', 'Anhangabaú', '13209-000', 4);

-- The parties each kind of note draws from, numbered 1..quantos: CQ every client, CJ the
-- companies of São Paulo among them, CB the branch; FV vendors, FL the vendors of São Paulo,
-- FT carriers.
CREATE TEMP TABLE bench_parte (papel VARCHAR(2) NOT NULL, ordem INTEGER NOT NULL, cdparte INTEGER NOT NULL,
                               uf VARCHAR(2) NOT NULL, PRIMARY KEY (papel, ordem));
INSERT INTO bench_parte (papel, ordem, cdparte, uf)
SELECT 'CQ', j, codigo, uf FROM bench_pessoa WHERE dono = 'C'
UNION ALL
SELECT 'CJ', ROW_NUMBER() OVER (ORDER BY j), codigo, uf FROM bench_pessoa WHERE dono = 'C' AND tipo = 'J' AND uf = 'SP'
UNION ALL
SELECT 'CB', 1, 100000, 'SP' FROM bench_escala
UNION ALL
SELECT 'FV', ROW_NUMBER() OVER (ORDER BY j), codigo, uf FROM bench_pessoa WHERE dono = 'F' AND tipo = 'V'
UNION ALL
SELECT 'FL', ROW_NUMBER() OVER (ORDER BY j), codigo, uf FROM bench_pessoa WHERE dono = 'F' AND tipo = 'V' AND uf = 'SP'
UNION ALL
SELECT 'FT', ROW_NUMBER() OVER (ORDER BY j), codigo, uf FROM bench_pessoa WHERE dono = 'F' AND tipo = 'T';
CREATE TEMP TABLE bench_papel (papel VARCHAR(2) NOT NULL PRIMARY KEY, quantos INTEGER NOT NULL);
INSERT INTO bench_papel (papel, quantos) SELECT papel, COUNT(*) FROM bench_parte GROUP BY papel;
ANALYZE bench_parte;
ANALYZE bench_papel;

-- Catalogue: product j, whether it is under tax substitution (one in ten), its price and cost
-- in cents; NCM and CEST from a few real pairs (those of the demo's products).
CREATE TEMP TABLE bench_ncm (st INTEGER NOT NULL, ordem INTEGER NOT NULL, ncm VARCHAR(8) NOT NULL, cest VARCHAR(9) NOT NULL,
                             PRIMARY KEY (st, ordem));
INSERT INTO bench_ncm (st, ordem, ncm, cest) VALUES
  (1, 0, '39191010', '01.005.00'), (1, 1, '35069190', '10.016.00'), (1, 2, '32081010', '24.003.00'),
  (1, 3, '38140000', '24.004.00'), (0, 0, '73181500', '00.000.00'), (0, 1, '73181600', '00.000.00'),
  (0, 2, '73182200', '00.000.00'), (0, 3, '82052000', '00.000.00'), (0, 4, '82054010', '00.000.00'),
  (0, 5, '82032090', '00.000.00'), (0, 6, '90178010', '00.000.00'), (0, 7, '83011000', '00.000.00'),
  (0, 8, '83021000', '00.000.00'), (0, 9, '83014000', '00.000.00'), (0, 10, '68052000', '00.000.00'),
  (0, 11, '96034010', '00.000.00');
CREATE TEMP TABLE bench_produto (j INTEGER NOT NULL PRIMARY KEY, st INTEGER NOT NULL, preco BIGINT NOT NULL,
                                 custo BIGINT NOT NULL);
INSERT INTO bench_produto (j, st, preco, custo)
SELECT x.j, x.st, x.preco, x.preco * 6 / 10
  FROM (SELECT n.i AS j, CASE WHEN n.i % 10 = 0 THEN 1 ELSE 0 END AS st, 150 + (n.i * 373 + e.semente * 7) % 12000 AS preco
          FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.produtos) x;
ANALYZE bench_produto;
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda)
SELECT 100000 + p.j, 'Produto de revenda número ' || CAST(p.j AS VARCHAR(10)) || ' ção', 1 + (p.j + e.semente) % 8,
       c.ncm, c.cest, CAST(7890000000000 + p.j AS VARCHAR(13)), p.preco / 100e0
  FROM bench_produto p CROSS JOIN bench_escala e
  JOIN bench_ncm c ON c.st = p.st AND c.ordem = CASE p.st WHEN 1 THEN p.j / 10 % 4 ELSE p.j % 12 END;

-- Purchases: i's kind, supplier, days of receipt (spread over the month in order) and issue
-- (up to 2 days before from São Paulo, 2 to 5 from other states), CFOP, ICMS rate and count
-- of items. The kinds keep their shares in every run of 100 purchases (r = 37 i mod 100 takes
-- each remainder once), at any scale; h mixes i and the seed, and its digits drive the rest.
CREATE TEMP TABLE bench_entrada (i INTEGER NOT NULL PRIMARY KEY, cdcompra INTEGER NOT NULL, h BIGINT NOT NULL,
                                 tipo INTEGER NOT NULL, cte INTEGER NOT NULL, cdfornecedor INTEGER NOT NULL,
                                 uf VARCHAR(2) NOT NULL, recebimento INTEGER NOT NULL, emissao INTEGER NOT NULL,
                                 cfop INTEGER NOT NULL, aliquota INTEGER NOT NULL, itens INTEGER NOT NULL);
INSERT INTO bench_entrada (i, cdcompra, h, tipo, cte, cdfornecedor, uf, recebimento, emissao, cfop, aliquota, itens)
SELECT x.i, 100000 + x.i, x.h, x.tipo, CASE x.papel WHEN 'FT' THEN 1 ELSE 0 END, p.cdparte, p.uf, x.dia,
       x.dia - CASE p.uf WHEN 'SP' THEN x.h / 10 % 3 ELSE 2 + x.h / 10 % 4 END,
       CASE WHEN x.papel = 'FT' THEN 1353 WHEN x.tipo = 1 THEN 1551 WHEN x.tipo = 4 THEN 1556
            WHEN p.uf = 'SP' THEN 1102 ELSE 2102 END,
       CASE x.papel WHEN 'FT' THEN 12 ELSE a.aliquota END,
       CASE WHEN x.papel = 'FT' THEN 1 WHEN x.tipo = 1 THEN 1 + x.h / 100 % 2 WHEN x.tipo = 4 THEN 1 + x.h / 100 % 5
            ELSE 1 + x.h / 100 % 21 END
  FROM (SELECT y.i, y.h, 1 + (y.i - 1) * 31 / y.compras AS dia,
               CASE WHEN y.r < 2 THEN 'FT' WHEN y.r < 15 THEN 'FL' ELSE 'FV' END AS papel,
               CASE WHEN y.r < 2 THEN 4 WHEN y.r < 5 THEN 1 WHEN y.r < 15 THEN 4 ELSE 2 END AS tipo
          FROM (SELECT n.i, e.compras, (n.i * 37 + e.semente) % 100 AS r,
                       (CAST(n.i AS BIGINT) * 2654435761 + e.semente * 97) % 4294967291 AS h
                  FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.compras) y) x
  JOIN bench_papel q ON q.papel = x.papel
  JOIN bench_parte p ON p.papel = x.papel AND p.ordem = 1 + x.h / 1000 % q.quantos
  JOIN bench_aliquota a ON a.origem = p.uf AND a.destino = 'SP';
ANALYZE bench_entrada;

-- Their items, in cents. Goods for resale: a product of the catalogue at its cost (from
-- another state never an ST one); the tax retained by the supplier on ST goods is in the
-- value (margin 40 %). The CT-e has the one item "freight". An entry's base, rate and ICMS are
-- those the company may credit (the Guia Prático's rule for C170 on entries): none for
-- consumption material, fixed assets and the supplier's own tax on ST goods.
CREATE TEMP TABLE bench_linha_entrada (linha INTEGER NOT NULL PRIMARY KEY, cdcompra INTEGER NOT NULL,
                                       item INTEGER NOT NULL, cditem INTEGER NOT NULL,
                                       qtd BIGINT NOT NULL, preco BIGINT NOT NULL, desconto BIGINT NOT NULL,
                                       frete BIGINT NOT NULL, cst VARCHAR(3) NOT NULL, cfop INTEGER NOT NULL,
                                       aliquota INTEGER NOT NULL, pis_cst VARCHAR(2) NOT NULL);
INSERT INTO bench_linha_entrada (linha, cdcompra, item, cditem, qtd, preco, desconto, frete, cst, cfop, aliquota, pis_cst)
SELECT v.linha, v.cdcompra, v.item, v.cditem, v.qtd, v.qtd * v.unitario, v.qtd * v.unitario * v.desconto_pct / 100,
       v.qtd * v.unitario * v.frete_pct / 100, v.cst, v.cfop, v.aliquota, v.pis_cst
  FROM (SELECT c.i * 32 + c.item AS linha, c.cdcompra, c.item,
               CASE WHEN c.cte = 1 THEN 8 WHEN c.tipo = 1 THEN 1 + (c.h + c.item) % 8
                    WHEN c.tipo = 4 THEN 1 + (c.h + c.item * 3) % 9 + CASE WHEN (c.h + c.item * 3) % 9 >= 7 THEN 1 ELSE 0 END
                    ELSE 100000 + p.j END AS cditem,
               CASE WHEN c.tipo = 2 THEN 1 + (c.h / 7 + c.item * 5) % 24
                    WHEN c.tipo = 4 AND c.cte = 0 THEN 1 + (c.h / 7 + c.item) % 20 ELSE 1 END AS qtd,
               CASE WHEN c.cte = 1 THEN 8000 + c.h % 250000 WHEN c.tipo = 1 THEN 250000 + (c.h / 3 + c.item * 911) % 900000
                    WHEN c.tipo = 4 THEN 300 + (c.h / 3 + c.item * 17) % 8000 ELSE p.custo END AS unitario,
               CASE WHEN c.item = 1 AND c.h % 5 = 0 THEN 5 ELSE 0 END AS desconto_pct,
               CASE WHEN c.item = 1 AND c.tipo = 2 AND c.h / 10 % 7 = 0 THEN 3 ELSE 0 END AS frete_pct,
               CASE WHEN p.st = 1 THEN '010' ELSE '000' END AS cst,
               CASE WHEN p.st = 1 THEN 1403 ELSE c.cfop END AS cfop,
               CASE WHEN p.st = 0 OR c.cte = 1 THEN c.aliquota ELSE 0 END AS aliquota,
               CASE WHEN c.tipo = 1 THEN '98' WHEN c.tipo = 4 AND c.cte = 0 THEN '70' ELSE '50' END AS pis_cst
          FROM (SELECT c.*, k.i AS item, 1 + (c.h + k.i * 7919) % e.produtos AS j0
                  FROM bench_entrada c CROSS JOIN bench_escala e JOIN bench_n k ON k.i <= c.itens) c
          LEFT JOIN bench_produto p
                 ON c.tipo = 2 AND p.j = c.j0 - CASE WHEN c.uf <> 'SP' AND c.j0 % 10 = 0 THEN 1 ELSE 0 END) v;
ANALYZE bench_linha_entrada;
-- Their taxes, from the amounts: read by the headers' sums and by the rows.
CREATE TEMP VIEW bench_item_entrada AS
SELECT z.*, (z.pis_base * 165 + 5000) / 10000 AS pis, (z.pis_base * 760 + 5000) / 10000 AS cofins
  FROM (SELECT y.*, CASE y.pis_cst WHEN '50' THEN y.liquido - y.icms - y.icms_proprio ELSE 0 END AS pis_base
          FROM (SELECT x.*, CASE WHEN x.aliquota > 0 THEN x.liquido ELSE 0 END AS base,
                       (x.liquido * x.aliquota + 50) / 100 AS icms,
                       CASE x.cst WHEN '010' THEN (x.liquido * 18 + 50) / 100 ELSE 0 END AS icms_proprio,
                       CASE x.cst WHEN '010' THEN (x.liquido * 140 + 50) / 100 ELSE 0 END AS st_base,
                       CASE x.cst WHEN '010' THEN ((x.liquido * 140 + 50) / 100 * 18 + 50) / 100
                                                  - (x.liquido * 18 + 50) / 100 ELSE 0 END AS st_valor
                  FROM (SELECT l.*, l.preco - l.desconto + l.frete AS liquido FROM bench_linha_entrada l) x) y) z;

-- Outgoing notes: i's kind (shares kept in every run of 1000 notes, as for the purchases),
-- number (one series; after every 49 notes a number was voided), day of issue (in number
-- order), situation (one in 67 cancelled), party, CFOP, ICMS rate of the operation (a return
-- keeps that of the operation it returns) and count of items.
CREATE TEMP TABLE bench_saida (i INTEGER NOT NULL PRIMARY KEY, nota INTEGER NOT NULL, h BIGINT NOT NULL,
                               tipo INTEGER NOT NULL, dia INTEGER NOT NULL, pde INTEGER NOT NULL,
                               cdparte INTEGER NOT NULL, uf VARCHAR(2) NOT NULL, cfop INTEGER NOT NULL,
                               aliquota INTEGER NOT NULL, itens INTEGER NOT NULL);
INSERT INTO bench_saida (i, nota, h, tipo, dia, pde, cdparte, uf, cfop, aliquota, itens)
SELECT x.i, 100000 + x.i + (x.i + 24) / 49, x.h, x.tipo, 1 + (x.i - 1) * 31 / x.saidas,
       CASE WHEN (x.i * 7 + x.semente) % 67 = 0 THEN 3 ELSE 2 END, p.cdparte, p.uf,
       CASE x.tipo WHEN 1 THEN CASE p.uf WHEN 'SP' THEN 5102 ELSE 6102 END WHEN 2 THEN 5551 WHEN 3 THEN 5152
                   WHEN 4 THEN CASE p.uf WHEN 'SP' THEN 5202 ELSE 6202 END
                   ELSE CASE p.uf WHEN 'SP' THEN 1202 ELSE 2202 END END,
       a.aliquota, CASE x.tipo WHEN 2 THEN 1 + x.h / 100 % 2 ELSE 1 + x.h / 100 % 15 END
  FROM (SELECT y.i, y.h, y.saidas, y.semente,
               CASE WHEN y.r < 868 THEN 1 WHEN y.r < 918 THEN 3 WHEN y.r < 958 THEN 4 WHEN y.r < 998 THEN 5
                    ELSE 2 END AS tipo
          FROM (SELECT n.i, e.saidas, e.semente, (n.i * 379 + e.semente) % 1000 AS r,
                       (CAST(n.i AS BIGINT) * 2654435761 + e.semente * 89) % 4294967291 AS h
                  FROM bench_n n CROSS JOIN bench_escala e WHERE n.i <= e.saidas) y) x
  JOIN bench_papel q ON q.papel = CASE x.tipo WHEN 2 THEN 'CJ' WHEN 3 THEN 'CB' WHEN 4 THEN 'FV' ELSE 'CQ' END
  JOIN bench_parte p ON p.papel = q.papel AND p.ordem = 1 + x.h / 1000 % q.quantos
  JOIN bench_aliquota a ON a.origem = CASE x.tipo WHEN 4 THEN p.uf ELSE 'SP' END
                       AND a.destino = CASE x.tipo WHEN 4 THEN 'SP' ELSE p.uf END;
ANALYZE bench_saida;

-- Their items, in cents: products at their price (ST ones only in sales inside the state),
-- equipment in the sales of fixed assets.
CREATE TEMP TABLE bench_linha_saida (linha INTEGER NOT NULL PRIMARY KEY, tipo INTEGER NOT NULL, nota INTEGER NOT NULL,
                                     item INTEGER NOT NULL, cditem INTEGER NOT NULL, qtd BIGINT NOT NULL,
                                     preco BIGINT NOT NULL, desconto BIGINT NOT NULL, frete BIGINT NOT NULL,
                                     cst VARCHAR(3) NOT NULL, cfop INTEGER NOT NULL, aliquota INTEGER NOT NULL,
                                     pis_cst VARCHAR(2) NOT NULL);
INSERT INTO bench_linha_saida (linha, tipo, nota, item, cditem, qtd, preco, desconto, frete, cst, cfop, aliquota, pis_cst)
SELECT v.linha, v.tipo, v.nota, v.item, v.cditem, v.qtd, v.qtd * v.unitario, v.qtd * v.unitario * v.desconto_pct / 100,
       v.qtd * v.unitario * v.frete_pct / 100, v.cst, v.cfop, v.aliquota, v.pis_cst
  FROM (SELECT s.i * 32 + s.item AS linha, s.tipo, s.nota, s.item,
               CASE s.tipo WHEN 2 THEN 1 + (s.h + s.item) % 8 ELSE 100000 + p.j END AS cditem,
               CASE s.tipo WHEN 2 THEN 1 ELSE 1 + (s.h / 13 + s.item * 5) % 12 END AS qtd,
               CASE s.tipo WHEN 2 THEN 180000 + (s.h / 3 + s.item * 911) % 300000 ELSE p.preco END AS unitario,
               CASE WHEN s.item = 1 AND s.h % 5 = 0 THEN 5 ELSE 0 END AS desconto_pct,
               CASE WHEN s.item = 1 AND s.tipo = 1 AND s.h / 10 % 9 = 0 THEN 2 ELSE 0 END AS frete_pct,
               CASE WHEN p.st = 1 THEN '060' WHEN s.tipo = 2 THEN '041' ELSE '000' END AS cst,
               CASE WHEN p.st = 1 THEN 5405 ELSE s.cfop END AS cfop,
               CASE WHEN p.st = 1 OR s.tipo = 2 THEN 0 ELSE s.aliquota END AS aliquota,
               CASE s.tipo WHEN 1 THEN '01' WHEN 5 THEN '98' ELSE '49' END AS pis_cst
          FROM (SELECT s.*, k.i AS item, 1 + (s.h + k.i * 7919) % e.produtos AS j0
                  FROM bench_saida s CROSS JOIN bench_escala e JOIN bench_n k ON k.i <= s.itens) s
          LEFT JOIN bench_produto p
                 ON s.tipo <> 2
                AND p.j = s.j0 - CASE WHEN (s.tipo <> 1 OR s.uf <> 'SP') AND s.j0 % 10 = 0 THEN 1 ELSE 0 END) v;
ANALYZE bench_linha_saida;
-- Their taxes, from the amounts: read by the headers' sums and by the rows.
CREATE TEMP VIEW bench_item_saida AS
SELECT z.*, (z.pis_base * 165 + 5000) / 10000 AS pis, (z.pis_base * 760 + 5000) / 10000 AS cofins
  FROM (SELECT y.*, CASE y.pis_cst WHEN '01' THEN y.liquido - y.icms ELSE 0 END AS pis_base
          FROM (SELECT x.*, CASE x.cst WHEN '000' THEN x.liquido ELSE 0 END AS base,
                       CASE x.cst WHEN '000' THEN (x.liquido * x.aliquota + 50) / 100 ELSE 0 END AS icms
                  FROM (SELECT l.*, l.preco - l.desconto + l.frete AS liquido FROM bench_linha_saida l) x) y) z;

-- Access keys: the issuer's state and the year and month of issue, the issuer's CNPJ (the
-- supplier's, or the company's for its own notes), model and series, number, emission type 1
-- and a code; then the check digit: mod 11 of the 43 digits weighed 2 to 9 from the right, 0
-- for a remainder of 0 or 1. Each digit of the integer parts is weighed in the sum below: a
-- row per digit, as the parties' numbers are weighed, took several times as long for 120,000
-- keys.
CREATE TEMP TABLE bench_chave (dono VARCHAR(1) NOT NULL, id INTEGER NOT NULL, uf_aamm INTEGER NOT NULL,
                               cnpj BIGINT NOT NULL, modelo_serie INTEGER NOT NULL, numero INTEGER NOT NULL,
                               codigo INTEGER NOT NULL, PRIMARY KEY (dono, id));
INSERT INTO bench_chave (dono, id, uf_aamm, cnpj, modelo_serie, numero, codigo)
SELECT 'E', c.i, u.codigo * 10000 + d.aamm, CAST(f.valor AS BIGINT), CASE c.cte WHEN 1 THEN 57001 ELSE 55001 END,
       c.cdcompra, 100000000 + c.h % 100000000
  FROM bench_entrada c
  JOIN bench_uf u ON u.uf = c.uf
  JOIN bench_dia d ON d.dia = c.emissao
  JOIN bench_pronto f ON f.dono = 'F' AND f.esquema = 'CNPJ' AND f.id = c.cdfornecedor - 100000
UNION ALL
SELECT 'S', s.i, 35 * 10000 + d.aamm, CAST(REPLACE(REPLACE(REPLACE(m.cnpj, '.', ''), '/', ''), '-', '') AS BIGINT), 55002,
       s.nota, 100000000 + s.h % 100000000
  FROM bench_saida s
  JOIN bench_dia d ON d.dia = s.dia
  JOIN empresa m ON m.cdempresa = 1;
INSERT INTO bench_pronto (dono, id, esquema, valor)
SELECT x.dono, x.id, 'NFE',
       CAST(x.uf_aamm AS VARCHAR(6)) || CAST(x.cnpj AS VARCHAR(14)) || CAST(x.modelo_serie AS VARCHAR(5))
       || SUBSTR(CAST(1000000000 + x.numero AS VARCHAR(10)), 2) || CAST(x.codigo AS VARCHAR(9))
       || CAST(CASE WHEN x.soma % 11 < 2 THEN 0 ELSE 11 - x.soma % 11 END AS VARCHAR(1))
  FROM (SELECT k.*,
               k.uf_aamm / 100000 % 10 * 4 + k.uf_aamm / 10000 % 10 * 3 + k.uf_aamm / 1000 % 10 * 2
               + k.uf_aamm / 100 % 10 * 9 + k.uf_aamm / 10 % 10 * 8 + k.uf_aamm % 10 * 7
               + k.cnpj / 10000000000000 % 10 * 6 + k.cnpj / 1000000000000 % 10 * 5 + k.cnpj / 100000000000 % 10 * 4
               + k.cnpj / 10000000000 % 10 * 3 + k.cnpj / 1000000000 % 10 * 2 + k.cnpj / 100000000 % 10 * 9
               + k.cnpj / 10000000 % 10 * 8 + k.cnpj / 1000000 % 10 * 7 + k.cnpj / 100000 % 10 * 6
               + k.cnpj / 10000 % 10 * 5 + k.cnpj / 1000 % 10 * 4 + k.cnpj / 100 % 10 * 3 + k.cnpj / 10 % 10 * 2
               + k.cnpj % 10 * 9
               + k.modelo_serie / 10000 % 10 * 8 + k.modelo_serie / 1000 % 10 * 7 + k.modelo_serie / 100 % 10 * 6
               + k.modelo_serie / 10 % 10 * 5 + k.modelo_serie % 10 * 4
               + k.numero / 100000000 % 10 * 3 + k.numero / 10000000 % 10 * 2 + k.numero / 1000000 % 10 * 9
               + k.numero / 100000 % 10 * 8 + k.numero / 10000 % 10 * 7 + k.numero / 1000 % 10 * 6
               + k.numero / 100 % 10 * 5 + k.numero / 10 % 10 * 4 + k.numero % 10 * 3
               + k.codigo / 100000000 % 10 * 2 + k.codigo / 10000000 % 10 * 9 + k.codigo / 1000000 % 10 * 8
               + k.codigo / 100000 % 10 * 7 + k.codigo / 10000 % 10 * 6 + k.codigo / 1000 % 10 * 5
               + k.codigo / 100 % 10 * 4 + k.codigo / 10 % 10 * 3 + k.codigo % 10 * 2 AS soma
          FROM bench_chave k) x;
ANALYZE bench_pronto;

-- Headers from the sums of their items, then the items, each note's together.
INSERT INTO compra (cdcompra, cdempresa, tipocompra, cdfornecedor, modelo, serie, numnf, chavenfefornecedor, pde,
                    dataemissaonf, datarecebimento, cdtabcfop, totalcompra, desconto, totalproduto, frete, seguro,
                    outrasdespesas, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor,
                    pis_valor, cofins_valor)
SELECT c.cdcompra, 1, c.tipo, c.cdfornecedor, CASE c.cte WHEN 1 THEN '57' ELSE '55' END, '1',
       CAST(c.cdcompra AS VARCHAR(10)), k.valor, 3, de.data, dr.hora, c.cfop,
       (t.preco - t.desconto + t.frete + t.st_valor) / 100e0, t.desconto / 100e0, t.preco / 100e0,
       t.frete / 100e0, 0, 0, t.base / 100e0, t.icms / 100e0, t.st_base / 100e0, t.st_valor / 100e0, 0,
       t.pis / 100e0, t.cofins / 100e0
  FROM bench_entrada c
  JOIN (SELECT e.i, CAST(SUM(l.preco) AS BIGINT) AS preco, CAST(SUM(l.desconto) AS BIGINT) AS desconto,
               CAST(SUM(l.frete) AS BIGINT) AS frete, CAST(SUM(l.base) AS BIGINT) AS base,
               CAST(SUM(l.icms) AS BIGINT) AS icms, CAST(SUM(l.st_base) AS BIGINT) AS st_base,
               CAST(SUM(l.st_valor) AS BIGINT) AS st_valor,
               CAST(SUM(l.pis) AS BIGINT) AS pis, CAST(SUM(l.cofins) AS BIGINT) AS cofins
          FROM bench_entrada e JOIN bench_item_entrada l ON l.linha BETWEEN e.i * 32 AND e.i * 32 + 31
         GROUP BY e.i) t ON t.i = c.i
  JOIN bench_pronto k ON k.dono = 'E' AND k.esquema = 'NFE' AND k.id = c.i
  JOIN bench_dia de ON de.dia = c.emissao
  JOIN bench_dia dr ON dr.dia = c.recebimento;

INSERT INTO compraitem (cdcompra, itemcompra, cditem, quantidade, precototal, desconto, frete, seguro, outrasdespesas,
  icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst,
  ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade,
  pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade,
  cofins_valorunidade, cofins_valor)
SELECT cdcompra, item, cditem, qtd, preco / 100e0, desconto / 100e0, frete / 100e0, 0, 0,
       cst, CAST(cfop AS VARCHAR(10)), base / 100e0, aliquota, icms / 100e0, st_base / 100e0, st_valor / 100e0, '49',
       '999', 0, 0,
       pis_cst, CASE pis_cst WHEN '50' THEN 1.65 ELSE 0 END, pis_base / 100e0, 0, 0, pis / 100e0,
       pis_cst, CASE pis_cst WHEN '50' THEN 7.6 ELSE 0 END, pis_base / 100e0, 0, 0, cofins / 100e0
  FROM bench_item_entrada
 ORDER BY linha;

INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe,
                        cdtabcfop, valortotalnota, valordesconto, valortotalproduto, valorfrete, valorseguro,
                        valoroutrasdesp, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor,
                        pis_valor, cofins_valor)
SELECT s.tipo, s.nota, 1, s.cdparte, '2', d.data, d.hora, s.pde, k.valor, s.cfop,
       (t.preco - t.desconto + t.frete) / 100e0, t.desconto / 100e0, t.preco / 100e0, t.frete / 100e0, 0, 0,
       t.base / 100e0, t.icms / 100e0, 0, 0, 0, t.pis / 100e0, t.cofins / 100e0
  FROM bench_saida s
  JOIN (SELECT n.i, CAST(SUM(l.preco) AS BIGINT) AS preco, CAST(SUM(l.desconto) AS BIGINT) AS desconto,
               CAST(SUM(l.frete) AS BIGINT) AS frete, CAST(SUM(l.base) AS BIGINT) AS base,
               CAST(SUM(l.icms) AS BIGINT) AS icms, CAST(SUM(l.pis) AS BIGINT) AS pis,
               CAST(SUM(l.cofins) AS BIGINT) AS cofins
          FROM bench_saida n JOIN bench_item_saida l ON l.linha BETWEEN n.i * 32 AND n.i * 32 + 31
         GROUP BY n.i) t ON t.i = s.i
  JOIN bench_pronto k ON k.dono = 'S' AND k.esquema = 'NFE' AND k.id = s.i
  JOIN bench_dia d ON d.dia = s.dia;

INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal,
  desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor,
  icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota,
  pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo,
  cofins_quantunidade, cofins_valorunidade, cofins_valor)
SELECT tipo, nota, item, cditem, 1, qtd, preco / 100e0, desconto / 100e0, frete / 100e0, 0, 0,
       cst, CAST(cfop AS VARCHAR(10)), base / 100e0, aliquota, icms / 100e0, 0, 0, '53', '999', 0, 0,
       pis_cst, CASE pis_cst WHEN '01' THEN 1.65 ELSE 0 END, pis_base / 100e0, 0, 0, pis / 100e0,
       pis_cst, CASE pis_cst WHEN '01' THEN 7.6 ELSE 0 END, pis_base / 100e0, 0, 0, cofins / 100e0
  FROM bench_item_saida
 ORDER BY linha;

-- Voided numbers: the gap before note 49k - 24, voided on its day.
INSERT INTO nfeinutilizada (cdnfe_inutilizado, cdempresa, data, justificativa)
SELECT 100000 + k.i, 1, d.hora, 'Falha na transmissão: numeração pulada'
  FROM bench_n k JOIN bench_saida s ON s.i = 49 * k.i - 24 JOIN bench_dia d ON d.dia = s.dia;
INSERT INTO nfenuminutilizado (cdnfe_inutilizado, cdnfe_numinutilizado)
SELECT 100000 + k.i, s.nota - 1 FROM bench_n k JOIN bench_saida s ON s.i = 49 * k.i - 24;

-- The month-end (1) and year-end (2) inventories hold every product at its cost, a few out
-- of stock (quantity 0, not listed in the files); their totals take the new products in.
INSERT INTO inventarioproduto (cdinventario, cdproduto, quantidade, precofabrica, precototal)
SELECT x.cdinventario, 100000 + x.j, x.qtd, x.custo / 100e0, x.qtd * x.custo / 100e0
  FROM (SELECT v.cdinventario, p.j, p.custo,
               CASE WHEN (p.j + v.cdinventario) % 40 = 0 THEN 0
                    ELSE 1 + (p.j * 17 + v.cdinventario * 29 + e.semente) % 140 END AS qtd
          FROM inventario v CROSS JOIN bench_produto p CROSS JOIN bench_escala e) x;
ANALYZE inventarioproduto;
UPDATE inventario SET totalinventario =
  (SELECT SUM(CAST(ROUND(ip.precototal * 100) AS BIGINT)) FROM inventarioproduto ip
    WHERE ip.cdinventario = inventario.cdinventario) / 100e0;

DROP VIEW bench_item_saida;
DROP VIEW bench_item_entrada;
DROP VIEW bench_cadastro;
DROP TABLE bench_linha_saida;
DROP TABLE bench_linha_entrada;
DROP TABLE bench_saida;
DROP TABLE bench_entrada;
DROP TABLE bench_produto;
DROP TABLE bench_ncm;
DROP TABLE bench_papel;
DROP TABLE bench_parte;
DROP TABLE bench_pessoa;
DROP TABLE bench_chave;
DROP TABLE bench_pronto;
DROP TABLE bench_peso;
DROP TABLE bench_pot;
DROP TABLE bench_esquema;
DROP TABLE bench_aliquota;
DROP TABLE bench_cidade;
DROP TABLE bench_uf;
DROP TABLE bench_dia;
DROP TABLE bench_n;
DROP TABLE bench_escala;
