-- Demo data: March 2024 of a small hardware wholesaler in Campinas (SP), loaded over
-- schema.sql. Portable SQL: it loads unchanged into SQLite, PostgreSQL and Firebird 3, so it
-- keeps to what the three share: one row per INSERT, MOD() for remainders (cast to INTEGER
-- where the remainder is computed with, as SQLite's MOD gives a REAL), correlated subqueries
-- instead of UPDATE ... FROM, and amounts computed in whole cents and divided by the DOUBLE
-- 100e0 only when stored (Firebird truncates a division by the exact 100.0 to one decimal),
-- so that every database holds the same values. Bulk rows (notes and their items) come from
-- a counter table and modular arithmetic, so every run of this file gives the same data.

INSERT INTO pais (cdpais, nomepais, codibge) VALUES (1, 'Brasil', 1058);

INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (1, 'Campinas', 'SP', 3509502, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (2, 'São Paulo', 'SP', 3550308, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (3, 'Ribeirão Preto', 'SP', 3543402, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (4, 'Jundiaí', 'SP', 3525904, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (5, 'Sorocaba', 'SP', 3552205, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (6, 'Belo Horizonte', 'MG', 3106200, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (7, 'Uberlândia', 'MG', 3170206, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (8, 'Curitiba', 'PR', 4106902, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (9, 'Rio de Janeiro', 'RJ', 3304557, 1);
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (10, 'São José dos Campos', 'SP', 3549904, 1);

INSERT INTO contador (cdcontador, nomecontador, fone, cpf, crc, cnpj, cep, endereco,
                      endereconumero, enderecocomplemento, bairro, email, fax, cdcidade) VALUES
  (1, 'Conceição & Araújo Contabilidade Ltda', '(19) 3231-4455', '123.456.789-09',
   '1SP234567/O-8', '08.765.432/0001-03', '13010-050', 'Rua Barão de Jaguara', '1481',
   'Sala 1204', 'Centro', 'contato@conceicaoaraujo.com.br', '(19) 3231-4456', 1);

INSERT INTO empresa (cdempresa, razaosocial, nomefantasia, cnpj, ie, im, suframa, cdcidade, endereco, endereconumero, enderecocomplemento, bairro, cep, fone, fax, email, cdcontador) VALUES (1, 'Ferragens São José Comércio Ltda', 'Ferragens São José', '12.345.678/0001-95', '244.123.457.116', '0123456', NULL, 1, 'Avenida Andrade Neves', '2210', 'Galpão 3', 'Botafogo', '13070-001', '(19) 3242-1100', NULL, 'fiscal@ferragenssaojose.com.br', 1);
INSERT INTO empresa (cdempresa, razaosocial, nomefantasia, cnpj, ie, im, suframa, cdcidade, endereco, endereconumero, enderecocomplemento, bairro, cep, fone, fax, email, cdcontador) VALUES (2, 'Ferragens São José Comércio Ltda - Filial Jundiaí', 'São José Jundiaí', '12.345.678/0002-76', '407.555.010.113', NULL, NULL, 4, 'Rua do Retiro', '880', NULL, 'Anhangabaú', '13209-000', '(11) 4521-3300', NULL, 'jundiai@ferragenssaojose.com.br', 1);

INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2023, 12, '2023-12-01', '2024-01-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 1, '2024-01-01', '2024-02-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 2, '2024-02-01', '2024-03-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 3, '2024-03-01', '2024-04-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 4, '2024-04-01', '2024-05-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 5, '2024-05-01', '2024-06-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 6, '2024-06-01', '2024-07-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 7, '2024-07-01', '2024-08-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 8, '2024-08-01', '2024-09-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 9, '2024-09-01', '2024-10-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 10, '2024-10-01', '2024-11-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 11, '2024-11-01', '2024-12-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2024, 12, '2024-12-01', '2025-01-01');

INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (1, 'UN', 'UNIDADE');
INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (2, 'CX', 'CAIXA');
INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (3, 'KG', 'QUILOGRAMA');
INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (4, 'M', 'METRO');
INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (5, 'L', 'LITRO');
INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (6, 'PC', 'PEÇA');
INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (7, 'PAR', 'PAR');
INSERT INTO unidade (cdunidade, siglaunidade, descunidade) VALUES (8, 'RL', 'ROLO');

INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (1101, 'Compra para industrialização');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (1102, 'Compra para comercialização');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (1202, 'Devolução de venda de mercadoria');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (1551, 'Compra de bem para o ativo imobilizado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (1556, 'Compra de material para uso ou consumo');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (2101, 'Compra para industrialização - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (2102, 'Compra para comercialização - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (2202, 'Devolução de venda - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (2551, 'Compra de bem do ativo imobilizado - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (2556, 'Compra de material de consumo - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (5102, 'Venda de mercadoria adquirida de terceiros');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (5152, 'Transferência de mercadoria adquirida');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (5202, 'Devolução de compra para comercialização');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (5551, 'Venda de bem do ativo imobilizado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (6102, 'Venda de mercadoria - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (6152, 'Transferência de mercadoria - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (6202, 'Devolução de compra - outro estado');
INSERT INTO naturezaoperacao (cdtabcfop, desccfop) VALUES (6551, 'Venda de bem do ativo - outro estado');

INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (1, 'Parafuso sextavado 1/4 x 2 aço zincado', 2, '73181500', '10.010.00', '7891234500011', 38.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (2, 'Porca sextavada 1/4 aço zincado', 2, '73181600', '10.011.00', '7891234500028', 21.5);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (3, 'Arruela lisa 1/4 galvanizada', 2, '73182200', '00.000.00', '7891234500035', 12.4);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (4, 'Prego com cabeça 17x27', 3, '73170090', '10.012.00', '7891234500042', 14.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (5, 'Martelo unha 27 mm cabo de madeira', 1, '82052000', '00.000.00', '7891234500059', 32.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (6, 'Chave de fenda 1/4 x 6 ponta imantada', 1, '82054010', '00.000.00', '7891234500066', 11.5);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (7, 'Alicate universal 8 polegadas', 1, '82032090', '00.000.00', '7891234500073', 39.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (8, 'Trena de aço 5 m com trava', 1, '90178010', '00.000.00', '7891234500080', 24.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (9, 'Fita isolante antichama 19 mm x 20 m', 8, '39191010', '01.005.00', '7891234500097', 7.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (10, 'Cadeado latão maciço 40 mm', 1, '83011000', '00.000.00', '7891234500103', 45.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (11, 'Dobradiça de aço 3 1/2 com anéis', 7, '83021000', '00.000.00', '7891234500110', 16.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (12, 'Fechadura externa cromada', 1, '83014000', '00.000.00', '7891234500127', 89.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (13, 'Cola de contato 750 g', 1, '35069190', '10.016.00', '7891234500134', 42.5);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (14, 'Lixa d''água grão 220', 1, '68052000', '00.000.00', '7891234500141', 2.3);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (15, 'Tinta esmalte sintético branco 3,6 L', 1, '32081010', '24.003.00', '7891234500158', 98.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (16, 'Pincel cerdas gris 2 polegadas', 1, '96034010', '00.000.00', '7891234500165', 9.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (17, 'Rolo de lã de carneiro 23 cm', 1, '96034090', '00.000.00', '7891234500172', 27.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (18, 'Solvente aguarrás 900 ml', 1, '38140000', '24.004.00', '7891234500189', 18.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (19, 'Fio flexível 2,5 mm² azul', 4, '85444900', '12.001.00', '7891234500196', 2.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (20, 'Disjuntor monopolar 20 A', 1, '85362000', '12.002.00', '7891234500202', 16.5);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (21, 'Tomada 2P+T 10 A branca', 1, '85366990', '12.003.00', '7891234500219', 8.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (22, 'Interruptor simples 10 A', 1, '85365090', '12.004.00', '7891234500226', 7.5);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (23, 'Lâmpada LED bulbo 9 W', 1, '85395000', '09.005.00', '7891234500233', 9.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (24, 'Cano PVC soldável 25 mm barra 6 m', 6, '39172300', '10.006.00', '7891234500240', 24.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (25, 'Joelho PVC 90 graus 25 mm', 1, '39174090', '10.007.00', '7891234500257', 1.2);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (26, 'Registro de gaveta 3/4 bruto', 1, '84818099', '10.008.00', '7891234500264', 54.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (27, 'Torneira de jardim metálica', 1, '84818019', '10.009.00', '7891234500271', 36.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (28, 'Veda-rosca 18 mm x 25 m', 8, '39191020', '10.013.00', '7891234500288', 4.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (29, 'Abraçadeira rosca sem fim 1/2', 1, '73269090', '00.000.00', '7891234500295', 2.8);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (30, 'Serrote 22 polegadas', 1, '82022000', '00.000.00', '7891234500301', 49.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (31, 'Broca de aço rápido 6 mm', 1, '82075011', '00.000.00', '7891234500318', 8.5);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (32, 'Disco de corte 4 1/2 polegadas', 1, '68042211', '00.000.00', '7891234500325', 6.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (33, 'Luva de raspa cano curto', 7, '42032900', '00.000.00', '7891234500332', 14.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (34, 'Óculos de proteção incolor', 1, '90049010', '00.000.00', '7891234500349', 12.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (35, 'Cimento CP II 50 kg', 6, '25232910', '00.000.00', '7891234500356', 36.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (36, 'Argamassa colante AC-I 20 kg', 6, '32149000', '00.000.00', '7891234500363', 19.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (37, 'Corrente galvanizada 5 mm', 4, '73158200', '00.000.00', '7891234500370', 11.9);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (38, 'Mangueira de jardim 1/2 30 m', 8, '39173900', '10.014.00', '7891234500387', 89.0);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (39, 'Escada de alumínio 6 degraus', 1, '76169900', '00.000.00', '7891234500394', 219.0);
INSERT INTO produto (cdproduto, descproduto, cdunidade, numncm, codcest, codbarra, precovenda) VALUES (40, 'Carrinho de mão caçamba metálica', 1, '87168000', '00.000.00', '7891234500400', 289.0);

INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (1, 'Empilhadeira elétrica 1,5 t', 1, '84271011', NULL);
INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (2, 'Balança digital de plataforma 300 kg', 1, '84238190', NULL);
INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (3, 'Computador de mesa i5 16 GB', 1, '84714100', NULL);
INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (4, 'Impressora térmica de etiquetas', 1, '84433239', NULL);
INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (5, 'Estante porta-paletes 3 níveis', 1, '94032090', NULL);
INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (6, 'Máquina de cortar chaves', 1, '84613000', NULL);
INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (7, 'Misturador de tintas', 1, '84743900', NULL);
INSERT INTO equipamento (cdequipamento, descequipamento, cdunidade, numncm, codbarra) VALUES (8, 'Compressor de ar 10 pés', 1, '84148019', NULL);

INSERT INTO insumo (cdinsumo, descinsumo, cdunidade, numncm) VALUES (1, 'Base para tinta acrílica', 5, '32091010');
INSERT INTO insumo (cdinsumo, descinsumo, cdunidade, numncm) VALUES (2, 'Corante líquido para tinta', 5, '32129010');
INSERT INTO insumo (cdinsumo, descinsumo, cdunidade, numncm) VALUES (3, 'Chave virgem tetra', 1, '83017000');
INSERT INTO insumo (cdinsumo, descinsumo, cdunidade, numncm) VALUES (4, 'Etiqueta adesiva térmica', 8, '48211000');
INSERT INTO insumo (cdinsumo, descinsumo, cdunidade, numncm) VALUES (5, 'Embalagem plástica para parafusos', 1, '39232190');
INSERT INTO insumo (cdinsumo, descinsumo, cdunidade, numncm) VALUES (6, 'Lata vazia 3,6 L', 1, '73102110');

INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (1, 'Papel sulfite A4 500 folhas', 2, '48025610', '7896543200011');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (2, 'Café torrado e moído 500 g', 1, '09012100', '7896543200028');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (3, 'Copo descartável 200 ml', 2, '39241000', '7896543200035');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (4, 'Detergente neutro 500 ml', 1, '34022000', '7896543200042');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (5, 'Toner para impressora laser', 1, '84439933', '7896543200059');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (6, 'Fita adesiva transparente 48 mm', 8, '39191010', '7896543200066');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (7, 'Bobina de papel térmico 80 mm', 8, '48025599', '7896543200073');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (8, 'Frete de mercadorias (conhecimento de transporte)', 1, NULL, NULL);
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (9, 'Água mineral galão 20 L', 1, '22011000', '7896543200097');
INSERT INTO prodconsumo (cdprodconsumo, descproduto, cdunidade, numncm, codbarra) VALUES (10, 'Saco de lixo 100 L', 2, '39232190', '7896543200103');

INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (1, 'Metalúrgica Paulista de Fixadores S.A.', 'J', '61.234.567/0001-17', '110.042.338.110', 'Rua Guaicurus', '1500', 'Água Branca', '05033-002', 2);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (2, 'Tintas Horizonte Indústria e Comércio Ltda', 'J', '17.345.678/0001-09', '062.345.678.0027', 'Avenida do Contorno', '6594', 'Savassi', '30110-044', 6);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (3, 'Ferramentas Sul Distribuidora Ltda', 'J', '76.543.210/0001-98', '90123456-63', 'Rua XV de Novembro', '2300', 'Alto da XV', '80050-000', 8);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (4, 'Elétrica Triângulo Ltda', 'J', '25.678.901/0001-68', '702.123456.00-71', 'Avenida João Naves de Ávila', '1331', 'Tibery', '38408-100', 7);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (5, 'Hidráulica Ribeirão Comércio de Tubos Ltda', 'J', '45.987.654/0001-99', '582.456.781.117', 'Avenida Presidente Vargas', '2001', 'Jardim Santa Ângela', '14020-260', 3);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (6, 'Máquinas e Equipamentos Sorocaba Ltda', 'J', '48.111.222/0001-08', '669.345.119.112', 'Avenida Itavuvu', '3500', 'Vila Olímpia', '18078-005', 5);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (7, 'Papelaria e Suprimentos Campineira Ltda', 'J', '03.222.333/0001-53', '244.999.886.112', 'Rua Conceição', '233', 'Centro', '13010-050', 1);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (8, 'Transportadora Rápido Paulista Ltda', 'J', '09.444.555/0001-05', '110.777.667.118', 'Rodovia Anhanguera', 'km 98', 'Distrito Industrial', '13069-000', 1);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (9, 'Informática São José dos Campos Ltda', 'J', '11.666.777/0001-06', '645.222.337.113', 'Avenida Cassiano Ricardo', '601', 'Jardim Aquarius', '12246-870', 10);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (10, 'Distribuidora Carioca de Ferragens Ltda', 'J', '33.888.999/0001-06', '86.123.45-2', 'Avenida Brasil', '15000', 'Penha', '21012-351', 9);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (11, 'Antônio Luís Gonçalves', 'F', '987.654.321-00', '12.345.678-9', 'Sítio Boa Esperança', 's/n', 'Zona Rural', '13100-000', 1);
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (12, 'Cimentos do Vale Comércio Ltda', 'J', '52.123.987/0001-35', '407.321.650.110', 'Avenida Jundiaí', '1200', 'Anhangabaú', '13208-053', 4);

INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (1, 'Construtora Barão Geraldo Ltda', 'J', '14.111.222/0001-96', '244.555.668.112', 'Avenida Albino J. B. de Oliveira', '1200', 'Barão Geraldo', '13084-008', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (2, 'José Antônio Ribeiro', 'F', '111.222.333-96', '23.456.789-0', 'Rua Maria Monteiro', '845', 'Cambuí', '13025-151', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (3, 'Maria de Fátima Conceição', 'F', '222.333.444-05', NULL, 'Rua Coronel Quirino', '1200', 'Cambuí', '13025-002', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (4, 'Reformas e Acabamentos Taquaral Ltda - ME', 'J', '22.333.444/0001-81', '244.111.227.111', 'Avenida Heitor Penteado', '400', 'Taquaral', '13087-000', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (5, 'Condomínio Edifício Solar das Águas', 'J', '33.444.555/0001-81', 'ISENTO', 'Rua Sampainho', '320', 'Cambuí', '13025-300', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (6, 'Paulo Sérgio Araújo', 'F', '333.444.555-08', '34.567.890-1', 'Rua Uruguai', '77', NULL, '13070-100', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (7, 'Marcenaria Irmãos Lacerda Ltda', 'J', '44.555.666/0001-81', '244.333.442.117', 'Rua Abolição', '1500', 'Ponte Preta', '13041-445', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (8, 'Elétrica e Hidráulica Valinhos Ltda', 'J', '55.666.777/0001-81', '718.222.330.112', 'Avenida Independência', '2500', 'Centro', '13270-000', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (9, 'Ana Cláudia Nogueira', 'F', '444.555.666-19', NULL, 'Rua Dr. Quirino', '980', 'Centro', '13015-081', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (10, 'Prefeitura Municipal de Campinas', 'J', '51.885.242/0001-40', 'ISENTO', 'Avenida Anchieta', '200', 'Centro', '13015-904', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (11, 'Construções Jundiaí Ltda', 'J', '66.777.888/0001-81', '407.888.998.113', 'Rua Barão de Jundiaí', '800', 'Centro', '13201-010', 4);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (12, 'João Batista Gonçalves', 'F', '555.666.777-20', '45.678.901-2', 'Rua Ferreira Penteado', '150', 'Centro', '13010-040', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (13, 'Pintura Predial São Paulo Ltda', 'J', '77.888.999/0001-81', '110.444.551.110', 'Rua Vergueiro', '3000', 'Vila Mariana', '04101-300', 2);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (14, 'Sítio Três Irmãs Agropecuária', 'F', '666.777.888-30', '56.789.012-3', 'Estrada da Rhodia', 'km 12', 'Zona Rural', '13085-000', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (15, 'Lúcia Helena Peçanha', 'F', '777.888.999-41', NULL, 'Rua Buarquina', '50', 'Chácara da Barra', '13090-620', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (16, 'Hotel Fazenda Recanto Mineiro Ltda', 'J', '88.999.000/0001-98', '062.111.222.0010', 'Rodovia MG-050', 'km 45', 'Zona Rural', '35680-000', 6);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (17, 'Serralheria Sorocabana Ltda', 'J', '99.000.111/0001-65', '669.888.770.119', 'Rua São Bento', '211', 'Centro', '18010-030', 5);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (18, 'Márcio Tadeu Fernandes', 'F', '888.999.000-78', '67.890.123-4', 'Avenida Orosimbo Maia', '2600', 'Vila Itapura', '13023-002', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (19, 'Clínica Veterinária Bichos & Cia Ltda', 'J', '10.222.333/0001-19', '244.777.883.118', 'Rua Guilherme da Silva', '300', 'Cambuí', '13025-070', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (20, 'Escola Estadual Carlos Gomes', 'J', '46.111.000/0001-60', 'ISENTO', 'Avenida Anchieta', '1', 'Centro', '13015-100', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (21, 'Cristiane Mörbeck Assunção', 'F', '999.000.111-12', NULL, 'Rua Padre Almeida', '515', 'Cambuí', '13025-251', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (22, 'Materiais de Construção Ribeirão Ltda', 'J', '12.333.444/0001-28', '582.111.223.114', 'Avenida Dom Pedro I', '900', 'Ipiranga', '14055-630', 3);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (23, 'Supermercado Bom Preço Campinas Ltda', 'J', '23.444.555/0001-28', '244.222.330.118', 'Avenida John Boyd Dunlop', '3900', 'Jardim Ipaussurama', '13060-803', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (24, 'Benedito Aparecido dos Santos', 'F', '121.232.343-20', '78.901.234-5', 'Rua Ernesto Kühl', '35', 'Jardim Chapadão', '13070-350', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (25, 'Igreja Nossa Senhora da Conceição', 'J', '34.555.666/0001-28', 'ISENTO', 'Praça José Bonifácio', 's/n', 'Centro', '13010-070', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (26, 'Auto Peças e Acessórios Ouro Verde Ltda', 'J', '45.666.777/0001-28', '244.666.770.115', 'Avenida Ruy Rodriguez', '1800', 'Jardim Novo Campos Elíseos', '13060-192', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (27, 'Gráfica Expressão Ltda', 'J', '56.777.888/0001-28', '244.888.115.117', 'Rua Irmã Serafina', '863', 'Centro', '13015-201', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (28, 'Renato Évora Magalhães', 'F', '232.343.454-30', '89.012.345-6', 'Rua Dr. Antônio Castro Prado', '120', 'Taquaral', '13076-130', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (29, 'Padaria Pão Quente Campinas Ltda', 'J', '67.888.999/0001-28', '244.999.005.119', 'Avenida Brasil', '1500', 'Jardim Guanabara', '13073-001', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (30, 'Instalações Elétricas Curitibanas Ltda', 'J', '78.999.000/0001-34', '90234567-18', 'Rua Marechal Deodoro', '500', 'Centro', '80010-010', 8);

INSERT INTO tiponotafiscal (cdtiponotafiscal, desctiponotafiscal, tipoprocesso, papel, catalogo) VALUES (1, 'Venda de mercadoria', 10, 'C', 'P');
INSERT INTO tiponotafiscal (cdtiponotafiscal, desctiponotafiscal, tipoprocesso, papel, catalogo) VALUES (2, 'Venda de bem do ativo imobilizado', 17, 'C', 'E');
INSERT INTO tiponotafiscal (cdtiponotafiscal, desctiponotafiscal, tipoprocesso, papel, catalogo) VALUES (3, 'Transferência de mercadoria', 11, 'C', 'P');
INSERT INTO tiponotafiscal (cdtiponotafiscal, desctiponotafiscal, tipoprocesso, papel, catalogo) VALUES (4, 'Devolução de compra', 9, 'F', 'P');
INSERT INTO tiponotafiscal (cdtiponotafiscal, desctiponotafiscal, tipoprocesso, papel, catalogo) VALUES (5, 'Devolução de venda', 12, 'C', 'P');

-- Inventories: the month end of March 2024 and the year end of 2023.
INSERT INTO inventario (cdinventario, cdempresa, cdinventarioemp, cdtipoinventario, datainventario, totalinventario, pde) VALUES (1, 1, 15, 1, '2024-03-31 00:00:00', 0, 3);
INSERT INTO inventario (cdinventario, cdempresa, cdinventarioemp, cdtipoinventario, datainventario, totalinventario, pde) VALUES (2, 1, 12, 2, '2023-12-31 00:00:00', 0, 3);

-- The fiscal registers of March 2024: SINTEGRA (1) and EFD ICMS/IPI (2), everything on.
INSERT INTO registrofiscal (cdregistrofiscal, cdtiporegistrofiscal, cdempresa, cdusuario, cdinventariofinalmes, cdinventariofinalano, cdregistrofiscalemp, regcomprainsumo, regtransfequipamentocliente, regtransfequipamentofornecedor, regtransfprodutofornecedor, regdevcompraequipamento, regdevcompraprodconsumo, regdevcomprainsumo, regdevvendaequipamento, numreganterior, perfilapresentararq, indicadornatpessoajuridica, indicadormetodoapropcredito, indicadortipocontribuicao, ano, cdmes, etiqueta, reg_1011, reg_1010, reg_1012, modelo_nf, serie_nf, regvendaproduto, regcompraequipamento, regvendaequipamento, regcompraproduto, regcompraprodconsumo, regtransfprodutocliente, regdevvendaproduto, regdevcompraproduto, finalidadearquivo, obs, dataregistrofiscal, indicadorsitespecial, tipoexportacao, tipoexportacaoinicio, tipoexportacaofinal, indicadorincidenciatributaria, tipofiltrocompra, indicadortipoatividade, indicadorcritescrituracao, reginventariofinalmes, reginventariofinalano) VALUES (1, 1, 1, 3, 1, 2, 31, 'S', 'S', 'S', 'S', 'S', 'S', 'S', 'S', NULL, 'A', '00', '1', '1', 2024, 3, 'SINTEGRA março/2024', 'S', 'S', 'S', '55', '1', 'S', 'S', 'S', 'S', 'S', 'S', 'S', 'S', '1', 'Arquivo mensal do convênio 57/95.', '2024-04-05 09:12:00', '', 0, 0, 0, '1', 0, '1', '2', 'S', 'S');
INSERT INTO registrofiscal (cdregistrofiscal, cdtiporegistrofiscal, cdempresa, cdusuario, cdinventariofinalmes, cdinventariofinalano, cdregistrofiscalemp, regcomprainsumo, regtransfequipamentocliente, regtransfequipamentofornecedor, regtransfprodutofornecedor, regdevcompraequipamento, regdevcompraprodconsumo, regdevcomprainsumo, regdevvendaequipamento, numreganterior, perfilapresentararq, indicadornatpessoajuridica, indicadormetodoapropcredito, indicadortipocontribuicao, ano, cdmes, etiqueta, reg_1011, reg_1010, reg_1012, modelo_nf, serie_nf, regvendaproduto, regcompraequipamento, regvendaequipamento, regcompraproduto, regcompraprodconsumo, regtransfprodutocliente, regdevvendaproduto, regdevcompraproduto, finalidadearquivo, obs, dataregistrofiscal, indicadorsitespecial, tipoexportacao, tipoexportacaoinicio, tipoexportacaofinal, indicadorincidenciatributaria, tipofiltrocompra, indicadortipoatividade, indicadorcritescrituracao, reginventariofinalmes, reginventariofinalano) VALUES (2, 2, 1, 3, 1, 2, 32, 'S', 'S', 'S', 'S', 'S', 'S', 'S', 'S', NULL, 'A', '00', '1', '1', 2024, 3, 'EFD ICMS/IPI março/2024', 'S', 'S', 'S', '55', '1', 'S', 'S', 'S', 'S', 'S', 'S', 'S', 'S', '0', 'Escrituração original.', '2024-04-08 16:40:00', '', 0, 0, 0, '1', 0, '1', '2', 'S', 'S');

-- Helpers for the bulk rows, dropped at the end: a counter and the days of March 2024.
CREATE TABLE demo_n (i INTEGER NOT NULL PRIMARY KEY);
CREATE TABLE demo_digito (d INTEGER NOT NULL PRIMARY KEY);
INSERT INTO demo_digito (d) VALUES (0);
INSERT INTO demo_digito (d) VALUES (1);
INSERT INTO demo_digito (d) VALUES (2);
INSERT INTO demo_digito (d) VALUES (3);
INSERT INTO demo_digito (d) VALUES (4);
INSERT INTO demo_digito (d) VALUES (5);
INSERT INTO demo_digito (d) VALUES (6);
INSERT INTO demo_digito (d) VALUES (7);
INSERT INTO demo_digito (d) VALUES (8);
INSERT INTO demo_digito (d) VALUES (9);
INSERT INTO demo_n (i)
SELECT 1 + c.d * 100 + b.d * 10 + a.d
  FROM demo_digito a CROSS JOIN demo_digito b CROSS JOIN demo_digito c
 WHERE c.d < 4;
DROP TABLE demo_digito;

CREATE TABLE demo_dia (dia INTEGER NOT NULL PRIMARY KEY, data TIMESTAMP, manha TIMESTAMP, tarde TIMESTAMP);
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (1, '2024-03-01 00:00:00', '2024-03-01 08:15:00', '2024-03-01 14:40:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (2, '2024-03-02 00:00:00', '2024-03-02 08:20:00', '2024-03-02 11:05:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (3, '2024-03-03 00:00:00', '2024-03-03 09:00:00', '2024-03-03 10:30:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (4, '2024-03-04 00:00:00', '2024-03-04 08:05:00', '2024-03-04 15:25:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (5, '2024-03-05 00:00:00', '2024-03-05 08:30:00', '2024-03-05 16:10:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (6, '2024-03-06 00:00:00', '2024-03-06 07:55:00', '2024-03-06 13:45:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (7, '2024-03-07 00:00:00', '2024-03-07 08:10:00', '2024-03-07 17:20:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (8, '2024-03-08 00:00:00', '2024-03-08 08:45:00', '2024-03-08 14:00:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (9, '2024-03-09 00:00:00', '2024-03-09 08:00:00', '2024-03-09 11:50:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (10, '2024-03-10 00:00:00', '2024-03-10 09:10:00', '2024-03-10 10:40:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (11, '2024-03-11 00:00:00', '2024-03-11 08:25:00', '2024-03-11 15:35:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (12, '2024-03-12 00:00:00', '2024-03-12 08:35:00', '2024-03-12 16:55:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (13, '2024-03-13 00:00:00', '2024-03-13 07:50:00', '2024-03-13 13:15:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (14, '2024-03-14 00:00:00', '2024-03-14 08:15:00', '2024-03-14 17:05:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (15, '2024-03-15 00:00:00', '2024-03-15 08:40:00', '2024-03-15 14:30:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (16, '2024-03-16 00:00:00', '2024-03-16 08:05:00', '2024-03-16 11:45:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (17, '2024-03-17 00:00:00', '2024-03-17 09:05:00', '2024-03-17 10:20:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (18, '2024-03-18 00:00:00', '2024-03-18 08:20:00', '2024-03-18 15:50:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (19, '2024-03-19 00:00:00', '2024-03-19 08:30:00', '2024-03-19 16:25:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (20, '2024-03-20 00:00:00', '2024-03-20 07:45:00', '2024-03-20 13:35:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (21, '2024-03-21 00:00:00', '2024-03-21 08:10:00', '2024-03-21 17:40:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (22, '2024-03-22 00:00:00', '2024-03-22 08:50:00', '2024-03-22 14:15:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (23, '2024-03-23 00:00:00', '2024-03-23 08:00:00', '2024-03-23 11:30:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (24, '2024-03-24 00:00:00', '2024-03-24 09:15:00', '2024-03-24 10:45:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (25, '2024-03-25 00:00:00', '2024-03-25 08:20:00', '2024-03-25 15:05:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (26, '2024-03-26 00:00:00', '2024-03-26 08:35:00', '2024-03-26 16:40:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (27, '2024-03-27 00:00:00', '2024-03-27 07:55:00', '2024-03-27 13:55:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (28, '2024-03-28 00:00:00', '2024-03-28 08:10:00', '2024-03-28 17:15:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (29, '2024-03-29 00:00:00', '2024-03-29 08:45:00', '2024-03-29 14:25:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (30, '2024-03-30 00:00:00', '2024-03-30 08:05:00', '2024-03-30 11:10:00');
INSERT INTO demo_dia (dia, data, manha, tarde) VALUES (31, '2024-03-31 00:00:00', '2024-03-31 09:20:00', '2024-03-31 10:50:00');

-- Purchases 1-120: 30 of each kind (tipocompra = 1 + i mod 4), spread over the month; the
-- last two of each kind still in checking (pde 2), so left out. Model 55 but for a few
-- notes of model 1 and, among consumption products, transport documents (57) and a consumer
-- note (65) that no driver takes.
INSERT INTO compra (cdcompra, cdempresa, tipocompra, cdfornecedor, modelo, serie, numnf,
                    chavenfefornecedor, pde, dataemissaonf, datarecebimento, cdtabcfop)
SELECT n.i, 1, 1 + CAST(MOD(n.i, 4) AS INTEGER),
       CASE 1 + CAST(MOD(n.i, 4) AS INTEGER) WHEN 1 THEN 6 + CAST(MOD(n.i, 2) AS INTEGER) * 3 WHEN 4 THEN 7 + CAST(MOD(n.i, 2) AS INTEGER) ELSE 1 + CAST(MOD(n.i, 6) AS INTEGER) END,
       CASE WHEN MOD(n.i, 4) = 3 AND MOD(n.i, 12) = 7 THEN '57' WHEN n.i = 111 THEN '65'
            WHEN MOD(n.i, 17) = 5 THEN '01' ELSE '55' END,
       CASE WHEN MOD(n.i, 17) = 5 THEN 'U' ELSE '1' END,
       CAST(20000 + CAST(MOD(n.i * 37, 9000) AS INTEGER) AS VARCHAR(30)),
       NULL,
       CASE WHEN n.i > 112 THEN 2 ELSE 3 END,
       e.data, r.tarde,
       CASE 1 + CAST(MOD(n.i, 4) AS INTEGER) WHEN 1 THEN 1551 WHEN 2 THEN 1102 WHEN 3 THEN 1101 ELSE 1556 END
  FROM demo_n n
  JOIN demo_dia r ON r.dia = 1 + (n.i - 1) * 31 / 120
  JOIN demo_dia e ON e.dia = CASE WHEN r.dia > 2 THEN r.dia - 2 ELSE 1 END
 WHERE n.i <= 120;

-- A supplier of another state makes it an interstate operation: CFOP 2xxx instead of 1xxx.
UPDATE compra SET cdtabcfop = cdtabcfop + 1000
 WHERE EXISTS (SELECT 1 FROM parte a WHERE a.papel = 'F' AND a.cdparte = compra.cdfornecedor AND a.cdestado <> 'SP');

-- Items: 1 to 4 per purchase, from the catalogue of the purchase's kind.
INSERT INTO compraitem (cdcompra, itemcompra, cditem, quantidade, precototal, desconto, frete,
  seguro, outrasdespesas, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor,
  icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor,
  pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor,
  cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade,
  cofins_valor)
SELECT x.cdcompra, x.item, x.cditem, x.qtd, x.total / 100e0, (x.total * x.descontopct / 100) / 100e0,
       x.frete / 100e0, 0, 0, '000', CAST(x.cfop AS VARCHAR(10)),
       (x.total - (x.total * x.descontopct / 100)) / 100e0, x.aliquota,
       (x.total - (x.total * x.descontopct / 100)) * x.aliquota / 100 / 100e0, 0, 0,
       CASE WHEN x.tipo = 1 THEN '00' ELSE '49' END, '999',
       CASE WHEN x.tipo = 1 THEN x.total / 100e0 ELSE 0 END,
       CASE WHEN x.tipo = 1 THEN x.total * 5 / 100 / 100e0 ELSE 0 END,
       '50', 1.65, x.total / 100e0, 0, 0, x.total * 165 / 10000 / 100e0,
       '50', 7.6, x.total / 100e0, 0, 0, x.total * 760 / 10000 / 100e0
  FROM (SELECT c.cdcompra, c.tipocompra AS tipo, k.i AS item, c.cdtabcfop AS cfop,
               -- 18% inside São Paulo; 12% between states of the South and Southeast but ES
               -- (Resolução do Senado 22/1989), which are all the other states of the demo.
               CASE WHEN c.cdtabcfop >= 2000 THEN 12 ELSE 18 END AS aliquota,
               CASE c.tipocompra WHEN 1 THEN 1 + CAST(MOD(c.cdcompra + k.i, 8) AS INTEGER)
                                 WHEN 2 THEN 1 + CAST(MOD(c.cdcompra * 7 + k.i * 11, 40) AS INTEGER)
                                 WHEN 3 THEN 1 + CAST(MOD(c.cdcompra + k.i, 6) AS INTEGER)
                                 ELSE 1 + CAST(MOD(c.cdcompra + k.i * 3, 10) AS INTEGER) END AS cditem,
               CASE c.tipocompra WHEN 1 THEN 1 ELSE 5 + CAST(MOD(c.cdcompra * k.i, 20) AS INTEGER) * 5 END AS qtd,
               CASE c.tipocompra WHEN 1 THEN 350000 + CAST(MOD(c.cdcompra * 1237, 900000) AS INTEGER)
                                 ELSE (5 + CAST(MOD(c.cdcompra * k.i, 20) AS INTEGER) * 5) * (180 + CAST(MOD(c.cdcompra * 31 + k.i * 17, 4000) AS INTEGER)) END AS total,
               CASE WHEN k.i = 1 AND MOD(c.cdcompra, 5) = 0 THEN 5 ELSE 0 END AS descontopct,
               CASE WHEN k.i = 1 AND MOD(c.cdcompra, 3) = 0 THEN 4500 ELSE 0 END AS frete
          FROM compra c
          JOIN demo_n k ON k.i <= 1 + CAST(MOD(c.cdcompra, 4) AS INTEGER)) x;

-- Outgoing notes: numbers 4101-4460 of series 1, by date. Every 85th number was voided
-- (below); the kind of the others follows from the number; a few are cancelled (pde 3) and
-- the last two are still being typed (pde 1).
CREATE TABLE demo_saida (i INTEGER NOT NULL PRIMARY KEY, tipo SMALLINT NOT NULL);
INSERT INTO demo_saida (i, tipo)
SELECT n.i, CASE WHEN MOD(n.i, 85) = 42 THEN 0
                 WHEN MOD(n.i, 60) = 21 THEN 2
                 WHEN MOD(n.i, 30) = 7 THEN 3
                 WHEN MOD(n.i, 40) = 13 THEN 4
                 WHEN MOD(n.i, 33) = 5 THEN 5
                 ELSE 1 END
  FROM demo_n n
 WHERE n.i <= 360;

INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao,
                        saida, pde, chavenfe, cdtabcfop)
SELECT s.tipo, 4100 + s.i, 1,
       CASE s.tipo WHEN 4 THEN 1 + CAST(MOD(s.i, 12) AS INTEGER) ELSE 1 + CAST(MOD(s.i * 7, 30) AS INTEGER) END,
       '1', d.data, d.tarde,
       CASE WHEN s.i > 358 THEN 1 WHEN MOD(s.i, 50) = 17 THEN 3 ELSE 2 END,
       NULL,
       CASE s.tipo WHEN 1 THEN 5102 WHEN 2 THEN 5551 WHEN 3 THEN 5152 WHEN 4 THEN 5202 ELSE 1202 END
  FROM demo_saida s
  JOIN demo_dia d ON d.dia = 1 + (s.i - 1) * 31 / 360
 WHERE s.tipo <> 0;

-- A party of another state makes it an interstate operation: CFOP 6xxx (2xxx for returns in).
UPDATE notafiscal SET cdtabcfop = cdtabcfop + 1000
 WHERE EXISTS (SELECT 1 FROM tiponotafiscal t JOIN parte a ON a.papel = t.papel
                WHERE t.cdtiponotafiscal = notafiscal.cdtiponotafiscal AND a.cdparte = notafiscal.cdparte
                  AND a.cdestado <> 'SP');

-- Access keys of the electronic notes (all but model 01 and the notes still being typed):
-- the issuer's state code (35 for the company and the suppliers of São Paulo, 31 for Minas
-- Gerais, 41 for Paraná, 33 for Rio de Janeiro), year and month 2403, the issuer's CNPJ, model, series, number, emission type 1, a
-- code, and the check digit: modulo 11 of the digits weighted 2 to 9 from the right, 0 when
-- the remainder is 0 or 1. The digits come out of the key's numeric parts by integer
-- arithmetic, which every database here does alike.
CREATE VIEW demo_chave_parte (origem, nota, uf, cnpj, modelo, serie, numero, numero9, codigo) AS
SELECT 'C', c.cdcompra, CASE u.cdestado WHEN 'MG' THEN 31 WHEN 'PR' THEN 41 WHEN 'RJ' THEN 33 ELSE 35 END,
       REPLACE(REPLACE(REPLACE(f.cnpj_cpf, '.', ''), '/', ''), '-', ''), c.modelo, c.serie,
       CAST(c.numnf AS BIGINT), '0000' || c.numnf, 10000000 + c.cdcompra
  FROM compra c JOIN fornecedor f ON f.cdfornecedor = c.cdfornecedor JOIN cidade u ON u.cdcidade = f.cdcidade
 WHERE c.modelo <> '01'
UNION ALL
SELECT 'S', n.cdnotafiscal, 35, REPLACE(REPLACE(REPLACE(e.cnpj, '.', ''), '/', ''), '-', ''), '55', n.numserie,
       n.cdnotafiscal, '00000' || CAST(n.cdnotafiscal AS VARCHAR(4)), 50000000 + (n.cdnotafiscal - 4100) * 113
  FROM notafiscal n JOIN empresa e ON e.cdempresa = n.cdempresa
 WHERE n.pde <> 1;

-- Position 1 to 43 of a key: the numeric part holding its digit (1 state and month, 2 CNPJ,
-- 3 model and series, 4 number, 5 emission type and code), that digit's power of ten in its
-- part, and its weight.
CREATE TABLE demo_pot (expoente SMALLINT NOT NULL PRIMARY KEY, pot BIGINT NOT NULL);
INSERT INTO demo_pot (expoente, pot) VALUES (0, 1);
INSERT INTO demo_pot (expoente, pot) VALUES (1, 10);
INSERT INTO demo_pot (expoente, pot) VALUES (2, 100);
INSERT INTO demo_pot (expoente, pot) VALUES (3, 1000);
INSERT INTO demo_pot (expoente, pot) VALUES (4, 10000);
INSERT INTO demo_pot (expoente, pot) VALUES (5, 100000);
INSERT INTO demo_pot (expoente, pot) VALUES (6, 1000000);
INSERT INTO demo_pot (expoente, pot) VALUES (7, 10000000);
INSERT INTO demo_pot (expoente, pot) VALUES (8, 100000000);
INSERT INTO demo_pot (expoente, pot) VALUES (9, 1000000000);
INSERT INTO demo_pot (expoente, pot) VALUES (10, 10000000000);
INSERT INTO demo_pot (expoente, pot) VALUES (11, 100000000000);
INSERT INTO demo_pot (expoente, pot) VALUES (12, 1000000000000);
INSERT INTO demo_pot (expoente, pot) VALUES (13, 10000000000000);
CREATE TABLE demo_posicao (posicao SMALLINT NOT NULL PRIMARY KEY, parte SMALLINT NOT NULL,
                           pot BIGINT NOT NULL, peso SMALLINT NOT NULL);
INSERT INTO demo_posicao (posicao, parte, pot, peso)
SELECT n.i, CASE WHEN n.i <= 6 THEN 1 WHEN n.i <= 20 THEN 2 WHEN n.i <= 25 THEN 3 WHEN n.i <= 34 THEN 4 ELSE 5 END,
       p.pot, 2 + (43 - n.i) - (43 - n.i) / 8 * 8
  FROM demo_n n
  JOIN demo_pot p ON p.expoente = CASE WHEN n.i <= 6 THEN 6 WHEN n.i <= 20 THEN 20 WHEN n.i <= 25 THEN 25
                                       WHEN n.i <= 34 THEN 34 ELSE 43 END - n.i
 WHERE n.i <= 43;

CREATE VIEW demo_chave (origem, nota, chave) AS
SELECT k.origem, k.nota,
       CAST(k.uf AS VARCHAR(2)) || '2403' || k.cnpj || k.modelo || '00' || k.serie || k.numero9 || '1' || CAST(k.codigo AS VARCHAR(8))
       || CAST(CASE WHEN s.soma - s.soma / 11 * 11 < 2 THEN 0 ELSE 11 - (s.soma - s.soma / 11 * 11) END AS VARCHAR(2))
  FROM demo_chave_parte k
  JOIN (SELECT d.origem, d.nota, CAST(SUM((d.valor / d.pot - d.valor / d.pot / 10 * 10) * d.peso) AS BIGINT) AS soma
          FROM (SELECT c.origem, c.nota, p.pot, p.peso,
                       CASE p.parte WHEN 1 THEN c.uf * 10000 + 2403
                                    WHEN 2 THEN CAST(c.cnpj AS BIGINT)
                                    WHEN 3 THEN CAST(c.modelo AS BIGINT) * 1000 + CAST(c.serie AS BIGINT)
                                    WHEN 4 THEN c.numero
                                    ELSE 100000000 + c.codigo END AS valor
                  FROM demo_chave_parte c CROSS JOIN demo_posicao p) d
         GROUP BY d.origem, d.nota) s ON s.origem = k.origem AND s.nota = k.nota;

UPDATE compra SET chavenfefornecedor =
  (SELECT k.chave FROM demo_chave k WHERE k.origem = 'C' AND k.nota = compra.cdcompra);
UPDATE notafiscal SET chavenfe =
  (SELECT k.chave FROM demo_chave k WHERE k.origem = 'S' AND k.nota = notafiscal.cdnotafiscal);
DROP VIEW demo_chave;
DROP TABLE demo_posicao;
DROP TABLE demo_pot;
DROP VIEW demo_chave_parte;

-- A few notes of the branch in the same month: another company, so no register here lists them.
INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe, cdtabcfop, valortotalnota, valortotalproduto) VALUES (1, 101, 2, 11, '2', '2024-03-04 00:00:00', '2024-03-04 10:00:00', 2, NULL, 5102, 150, 150);
INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe, cdtabcfop, valortotalnota, valortotalproduto) VALUES (1, 102, 2, 11, '2', '2024-03-18 00:00:00', '2024-03-18 10:00:00', 2, NULL, 5102, 320.5, 320.5);

INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote,
  quantidade, precototal, desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop,
  icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst,
  ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo,
  pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota,
  cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor)
SELECT x.tipo, x.nota, x.item, x.cditem, 1, x.qtd, x.total / 100e0, (x.total * x.descontopct / 100) / 100e0, 0, 0,
       0, CASE WHEN x.aliquota = 0 THEN '060' ELSE '000' END,
       CAST(x.cfop AS VARCHAR(10)),
       CASE WHEN x.aliquota = 0 THEN 0 ELSE (x.total - (x.total * x.descontopct / 100)) / 100e0 END, x.aliquota,
       (x.total - (x.total * x.descontopct / 100)) * x.aliquota / 100 / 100e0, 0, 0, '53', '999', 0, 0,
       '01', 1.65, x.total / 100e0, 0, 0, x.total * 165 / 10000 / 100e0,
       '01', 7.6, x.total / 100e0, 0, 0, x.total * 760 / 10000 / 100e0
  FROM (SELECT n.cdtiponotafiscal AS tipo, n.cdnotafiscal AS nota, k.i AS item, n.cdtabcfop AS cfop,
               -- Sales of goods under tax substitution (CST 060) carry no ICMS of their own; the
               -- rest 18% inside São Paulo, 12% to and from the other states of the demo
               -- (Resolução do Senado 22/1989).
               CASE WHEN n.cdtiponotafiscal = 1
                          AND 1 + CAST(MOD(n.cdnotafiscal * 13 + k.i * 7, 40) AS INTEGER) IN (9, 13, 15, 18) THEN 0
                    WHEN n.cdtabcfop >= 6000 OR (n.cdtabcfop >= 2000 AND n.cdtabcfop < 3000) THEN 12
                    ELSE 18 END AS aliquota,
               CASE n.cdtiponotafiscal WHEN 2 THEN 1 + CAST(MOD(n.cdnotafiscal + k.i, 8) AS INTEGER)
                    ELSE 1 + CAST(MOD(n.cdnotafiscal * 13 + k.i * 7, 40) AS INTEGER) END AS cditem,
               CASE n.cdtiponotafiscal WHEN 2 THEN 1 ELSE 1 + CAST(MOD(n.cdnotafiscal * k.i, 12) AS INTEGER) END AS qtd,
               CASE n.cdtiponotafiscal WHEN 2 THEN 180000 + CAST(MOD(n.cdnotafiscal * 911, 300000) AS INTEGER)
                    ELSE (1 + CAST(MOD(n.cdnotafiscal * k.i, 12) AS INTEGER)) * (120 + CAST(MOD(n.cdnotafiscal * 29 + k.i * 13, 9000) AS INTEGER)) END AS total,
               CASE WHEN k.i = 1 AND MOD(n.cdnotafiscal, 9) = 0 THEN 5 ELSE 0 END AS descontopct
          FROM notafiscal n
          JOIN demo_n k ON k.i <= 1 + CAST(MOD(n.cdnotafiscal, 4) AS INTEGER)) x;

-- Header totals from the items, summed in cents per note (purchases as kind 0) into a helper
-- table that the headers read by key. The branch's notes keep the totals written above.
CREATE TABLE demo_soma (tipo INTEGER NOT NULL, nota INTEGER NOT NULL, produto BIGINT, desconto BIGINT,
                        frete BIGINT, icms_base BIGINT, icms BIGINT, ipi BIGINT, pis BIGINT, cofins BIGINT,
                        PRIMARY KEY (tipo, nota));
INSERT INTO demo_soma (tipo, nota, produto, desconto, frete, icms_base, icms, ipi, pis, cofins)
SELECT 0, cdcompra,
       SUM(CAST(ROUND(precototal * 100) AS INTEGER)), SUM(CAST(ROUND(desconto * 100) AS INTEGER)),
       SUM(CAST(ROUND(frete * 100) AS INTEGER)), SUM(CAST(ROUND(icms_basecalculo * 100) AS INTEGER)),
       SUM(CAST(ROUND(icms_valor * 100) AS INTEGER)), SUM(CAST(ROUND(ipi_valor * 100) AS INTEGER)),
       SUM(CAST(ROUND(pis_valor * 100) AS INTEGER)), SUM(CAST(ROUND(cofins_valor * 100) AS INTEGER))
  FROM compraitem GROUP BY cdcompra;
INSERT INTO demo_soma (tipo, nota, produto, desconto, frete, icms_base, icms, ipi, pis, cofins)
SELECT cdtiponotafiscal, cdnotafiscal,
       SUM(CAST(ROUND(precototal * 100) AS INTEGER)), SUM(CAST(ROUND(desconto * 100) AS INTEGER)), 0,
       SUM(CAST(ROUND(icms_basecalculo * 100) AS INTEGER)), SUM(CAST(ROUND(icms_valor * 100) AS INTEGER)), 0,
       SUM(CAST(ROUND(pis_valor * 100) AS INTEGER)), SUM(CAST(ROUND(cofins_valor * 100) AS INTEGER))
  FROM notafiscalitem GROUP BY cdtiponotafiscal, cdnotafiscal;

UPDATE compra SET
  totalproduto = (SELECT t.produto FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  desconto = (SELECT t.desconto FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  frete = (SELECT t.frete FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  seguro = 0, outrasdespesas = 0,
  icms_basecalculo = (SELECT t.icms_base FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  icms_valor = (SELECT t.icms FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  icms_st_basecalculo = 0, icms_st_valor = 0,
  ipi_valor = (SELECT t.ipi FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  pis_valor = (SELECT t.pis FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  cofins_valor = (SELECT t.cofins FROM demo_soma t WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0,
  totalcompra = (SELECT t.produto - t.desconto + t.frete + t.ipi FROM demo_soma t
                  WHERE t.tipo = 0 AND t.nota = compra.cdcompra) / 100e0;

UPDATE notafiscal SET
  valortotalproduto = (SELECT t.produto FROM demo_soma t
                        WHERE t.tipo = notafiscal.cdtiponotafiscal AND t.nota = notafiscal.cdnotafiscal) / 100e0,
  valordesconto = (SELECT t.desconto FROM demo_soma t
                    WHERE t.tipo = notafiscal.cdtiponotafiscal AND t.nota = notafiscal.cdnotafiscal) / 100e0,
  valorfrete = 0, valorseguro = 0, valoroutrasdesp = 0,
  icms_basecalculo = (SELECT t.icms_base FROM demo_soma t
                       WHERE t.tipo = notafiscal.cdtiponotafiscal AND t.nota = notafiscal.cdnotafiscal) / 100e0,
  icms_valor = (SELECT t.icms FROM demo_soma t
                 WHERE t.tipo = notafiscal.cdtiponotafiscal AND t.nota = notafiscal.cdnotafiscal) / 100e0,
  icms_st_basecalculo = 0, icms_st_valor = 0, ipi_valor = 0,
  pis_valor = (SELECT t.pis FROM demo_soma t
                WHERE t.tipo = notafiscal.cdtiponotafiscal AND t.nota = notafiscal.cdnotafiscal) / 100e0,
  cofins_valor = (SELECT t.cofins FROM demo_soma t
                   WHERE t.tipo = notafiscal.cdtiponotafiscal AND t.nota = notafiscal.cdnotafiscal) / 100e0,
  valortotalnota = (SELECT t.produto - t.desconto FROM demo_soma t
                     WHERE t.tipo = notafiscal.cdtiponotafiscal AND t.nota = notafiscal.cdnotafiscal) / 100e0
 WHERE cdempresa = 1;
DROP TABLE demo_soma;

-- A product sold by weight, with a fractional quantity.
UPDATE notafiscalitem SET quantidade = 2.5 WHERE cdtiponotafiscal = 1 AND cdnotafiscal = 4102 AND itemnotafiscal = 1;

-- The voided numbers: each its own voiding, dated the day of the neighbouring notes.
INSERT INTO nfeinutilizada (cdnfe_inutilizado, cdempresa, data, justificativa)
SELECT s.i, 1, d.manha, 'Falha na transmissão: numeração pulada pelo emissor'
  FROM demo_saida s
  JOIN demo_dia d ON d.dia = 1 + (s.i - 1) * 31 / 360
 WHERE s.tipo = 0;
INSERT INTO nfenuminutilizado (cdnfe_inutilizado, cdnfe_numinutilizado)
SELECT s.i, 4100 + s.i FROM demo_saida s WHERE s.tipo = 0;

-- Inventories: every product, a few out of stock (total 0, not listed in the file).
INSERT INTO inventarioproduto (cdinventario, cdproduto, quantidade, precofabrica, precototal)
SELECT v.cdinventario, p.cdproduto, x.qtd, x.preco / 100e0, x.qtd * x.preco / 100e0
  FROM inventario v
  CROSS JOIN produto p
  JOIN (SELECT n.i AS cdproduto,
               CASE WHEN MOD(n.i, 13) = 0 THEN 0 ELSE 10 + CAST(MOD(n.i * 17, 140) AS INTEGER) END AS qtd,
               150 + CAST(MOD(n.i * 373, 12000) AS INTEGER) AS preco
          FROM demo_n n) x ON x.cdproduto = p.cdproduto;
UPDATE inventarioproduto SET quantidade = quantidade + 8 WHERE cdinventario = 1;
UPDATE inventarioproduto SET precototal = quantidade * CAST(ROUND(precofabrica * 100) AS INTEGER) / 100e0;
UPDATE inventario SET totalinventario =
  (SELECT SUM(CAST(ROUND(ip.precototal * 100) AS INTEGER)) FROM inventarioproduto ip WHERE ip.cdinventario = inventario.cdinventario) / 100e0;

DROP TABLE demo_saida;
DROP TABLE demo_dia;
DROP TABLE demo_n;

-- ---- August 2026: a second month, with the identities of 2026 ----
-- A supplier whose CNPJ carries letters (alphanumeric CNPJ, given to new registrations since
-- July 2026), a client who is a person (CPF; the identity card number in ie_rg is never an IE)
-- and a client in Bahia, to whom São Paulo sells at 7% (Resolução do Senado 22/1989). The
-- SINTEGRA register of the month leaves out the purchases of consumption products: the
-- supplier with letters in its CNPJ sells those, and the SINTEGRA's CNPJ fields are numeric
-- (docs/sintegra.md). The notes are written one by one, with their totals.
INSERT INTO cidade (cdcidade, nomecidade, cdestado, codibge, cdpais) VALUES (11, 'Salvador', 'BA', 2927408, 1);
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2026, 7, '2026-07-01', '2026-08-01');
INSERT INTO periodofiscal (ano, cdmes, inicio, fim) VALUES (2026, 8, '2026-08-01', '2026-09-01');
INSERT INTO fornecedor (cdfornecedor, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (13, 'Papelaria Nova Era Suprimentos Ltda', 'J', 'A1.B2C.3D4/0001-93', '148.722.911.182', 'Rua da Consolação', '1200', 'Consolação', '01302-001', 2);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (31, 'Beatriz Nakamura Souza', 'F', '390.533.447-05', '27.418.903-X', 'Rua Sacramento', '410', 'Centro', '13010-210', 1);
INSERT INTO cliente (cdcliente, razaosocial, tipopessoa, cnpj_cpf, ie_rg, endereco, endereconumero, bairro, cep, cdcidade) VALUES (32, 'Construtora Baía de Todos os Santos Ltda', 'J', '41.655.287/0001-75', '054.721.957', 'Avenida Tancredo Neves', '1632', 'Caminho das Árvores', '41820-020', 11);

INSERT INTO compra (cdcompra, cdempresa, tipocompra, cdfornecedor, modelo, serie, numnf, chavenfefornecedor, pde, dataemissaonf, datarecebimento, cdtabcfop, totalcompra, desconto, totalproduto, frete, seguro, outrasdespesas, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor, pis_valor, cofins_valor) VALUES (201, 1, 2, 1, '55', '1', '31001', '35260861234567000117550010000310011200002015', 3, '2026-08-02 00:00:00', '2026-08-03 14:00:00', 1102, 1423.00, 0, 1423.00, 0, 0, 0, 1423.00, 256.14, 0, 0, 0, 23.47, 108.14);
INSERT INTO compraitem (cdcompra, itemcompra, cditem, quantidade, precototal, desconto, frete, seguro, outrasdespesas, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (201, 1, 1, 20, 778.00, 0, 0, 0, 0, '000', '1102', 778.00, 18, 140.04, 0, 0, '49', '999', 0, 0, '50', 1.65, 778.00, 0, 0, 12.83, '50', 7.6, 778.00, 0, 0, 59.12);
INSERT INTO compraitem (cdcompra, itemcompra, cditem, quantidade, precototal, desconto, frete, seguro, outrasdespesas, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (201, 2, 2, 30, 645.00, 0, 0, 0, 0, '000', '1102', 645.00, 18, 116.10, 0, 0, '49', '999', 0, 0, '50', 1.65, 645.00, 0, 0, 10.64, '50', 7.6, 645.00, 0, 0, 49.02);
INSERT INTO compra (cdcompra, cdempresa, tipocompra, cdfornecedor, modelo, serie, numnf, chavenfefornecedor, pde, dataemissaonf, datarecebimento, cdtabcfop, totalcompra, desconto, totalproduto, frete, seguro, outrasdespesas, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor, pis_valor, cofins_valor) VALUES (202, 1, 4, 13, '55', '1', '5501', '352608A1B2C3D4000193550010000055011200002027', 3, '2026-08-05 00:00:00', '2026-08-06 14:00:00', 1556, 289.00, 0, 289.00, 0, 0, 0, 289.00, 52.02, 0, 0, 0, 4.76, 21.96);
INSERT INTO compraitem (cdcompra, itemcompra, cditem, quantidade, precototal, desconto, frete, seguro, outrasdespesas, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (202, 1, 1, 10, 289.00, 0, 0, 0, 0, '000', '1556', 289.00, 18, 52.02, 0, 0, '49', '999', 0, 0, '50', 1.65, 289.00, 0, 0, 4.76, '50', 7.6, 289.00, 0, 0, 21.96);
INSERT INTO compra (cdcompra, cdempresa, tipocompra, cdfornecedor, modelo, serie, numnf, chavenfefornecedor, pde, dataemissaonf, datarecebimento, cdtabcfop, totalcompra, desconto, totalproduto, frete, seguro, outrasdespesas, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor, pis_valor, cofins_valor) VALUES (203, 1, 2, 2, '55', '1', '88123', '31260817345678000109550010000881231200002030', 3, '2026-08-11 00:00:00', '2026-08-12 14:00:00', 2102, 1186.80, 0, 1186.80, 0, 0, 0, 1186.80, 142.41, 0, 0, 0, 19.58, 90.19);
INSERT INTO compraitem (cdcompra, itemcompra, cditem, quantidade, precototal, desconto, frete, seguro, outrasdespesas, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (203, 1, 15, 12, 1186.80, 0, 0, 0, 0, '000', '2102', 1186.80, 12, 142.41, 0, 0, '49', '999', 0, 0, '50', 1.65, 1186.80, 0, 0, 19.58, '50', 7.6, 1186.80, 0, 0, 90.19);
INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe, cdtabcfop, valortotalnota, valordesconto, valortotalproduto, valorfrete, valorseguro, valoroutrasdesp, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor, pis_valor, cofins_valor) VALUES (1, 9101, 1, 31, '1', '2026-08-04 00:00:00', '2026-08-04 15:30:00', 2, '35260812345678000195550010000091011600091010', 5102, 65.80, 0, 65.80, 0, 0, 0, 65.80, 11.84, 0, 0, 0, 1.08, 5.00);
INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal, desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (1, 9101, 1, 5, 1, 2, 65.80, 0, 0, 0, 0, '000', '5102', 65.80, 18, 11.84, 0, 0, '53', '999', 0, 0, '01', 1.65, 65.80, 0, 0, 1.08, '01', 7.6, 65.80, 0, 0, 5.00);
INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe, cdtabcfop, valortotalnota, valordesconto, valortotalproduto, valorfrete, valorseguro, valoroutrasdesp, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor, pis_valor, cofins_valor) VALUES (1, 9102, 1, 32, '1', '2026-08-10 00:00:00', '2026-08-10 15:30:00', 2, '35260812345678000195550010000091021600091026', 6102, 1973.50, 0, 1973.50, 0, 0, 0, 1973.50, 138.14, 0, 0, 0, 32.55, 149.98);
INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal, desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (1, 9102, 1, 35, 1, 40, 1476.00, 0, 0, 0, 0, '000', '6102', 1476.00, 7, 103.32, 0, 0, '53', '999', 0, 0, '01', 1.65, 1476.00, 0, 0, 24.35, '01', 7.6, 1476.00, 0, 0, 112.17);
INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal, desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (1, 9102, 2, 36, 1, 25, 497.50, 0, 0, 0, 0, '000', '6102', 497.50, 7, 34.82, 0, 0, '53', '999', 0, 0, '01', 1.65, 497.50, 0, 0, 8.20, '01', 7.6, 497.50, 0, 0, 37.81);
INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe, cdtabcfop, valortotalnota, valordesconto, valortotalproduto, valorfrete, valorseguro, valoroutrasdesp, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor, pis_valor, cofins_valor) VALUES (1, 9103, 1, 1, '1', '2026-08-17 00:00:00', '2026-08-17 15:30:00', 2, '35260812345678000195550010000091031600091031', 5102, 259.80, 0, 259.80, 0, 0, 0, 165.00, 29.70, 0, 0, 0, 4.28, 19.74);
INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal, desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (1, 9103, 1, 9, 1, 12, 94.80, 0, 0, 0, 0, '060', '5102', 0.00, 0, 0.00, 0, 0, '53', '999', 0, 0, '01', 1.65, 94.80, 0, 0, 1.56, '01', 7.6, 94.80, 0, 0, 7.20);
INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal, desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (1, 9103, 2, 20, 1, 10, 165.00, 0, 0, 0, 0, '000', '5102', 165.00, 18, 29.70, 0, 0, '53', '999', 0, 0, '01', 1.65, 165.00, 0, 0, 2.72, '01', 7.6, 165.00, 0, 0, 12.54);
INSERT INTO notafiscal (cdtiponotafiscal, cdnotafiscal, cdempresa, cdparte, numserie, emissao, saida, pde, chavenfe, cdtabcfop, valortotalnota, valordesconto, valortotalproduto, valorfrete, valorseguro, valoroutrasdesp, icms_basecalculo, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_valor, pis_valor, cofins_valor) VALUES (1, 9104, 1, 4, '1', '2026-08-24 00:00:00', '2026-08-24 15:30:00', 2, '35260812345678000195550010000091041600091047', 5102, 7.25, 0, 7.25, 0, 0, 0, 7.25, 1.30, 0, 0, 0, 0.11, 0.55);
INSERT INTO notafiscalitem (cdtiponotafiscal, cdnotafiscal, itemnotafiscal, cditem, cdlote, quantidade, precototal, desconto, frete, seguro, outrasdesp, icms_cst, icms_cfop, icms_basecalculo, icms_aliquota, icms_valor, icms_st_basecalculo, icms_st_valor, ipi_cst, ipi_enquadramento, ipi_basecalculo, ipi_valor, pis_cst, pis_aliquota, pis_basecalculo, pis_quantunidade, pis_valorunidade, pis_valor, cofins_cst, cofins_aliquota, cofins_basecalculo, cofins_quantunidade, cofins_valorunidade, cofins_valor) VALUES (1, 9104, 1, 19, 1, 2.5, 7.25, 0, 0, 0, 0, '000', '5102', 7.25, 18, 1.30, 0, 0, '53', '999', 0, 0, '01', 1.65, 7.25, 0, 0, 0.11, '01', 7.6, 7.25, 0, 0, 0.55);
-- The fiscal registers of August 2026: SINTEGRA (3) and EFD ICMS/IPI (4), without inventories.
INSERT INTO registrofiscal (cdregistrofiscal, cdtiporegistrofiscal, cdempresa, cdusuario, cdinventariofinalmes, cdinventariofinalano, cdregistrofiscalemp, regcomprainsumo, regtransfequipamentocliente, regtransfequipamentofornecedor, regtransfprodutofornecedor, regdevcompraequipamento, regdevcompraprodconsumo, regdevcomprainsumo, regdevvendaequipamento, numreganterior, perfilapresentararq, indicadornatpessoajuridica, indicadormetodoapropcredito, indicadortipocontribuicao, ano, cdmes, etiqueta, reg_1011, reg_1010, reg_1012, modelo_nf, serie_nf, regvendaproduto, regcompraequipamento, regvendaequipamento, regcompraproduto, regcompraprodconsumo, regtransfprodutocliente, regdevvendaproduto, regdevcompraproduto, finalidadearquivo, obs, dataregistrofiscal, indicadorsitespecial, tipoexportacao, tipoexportacaoinicio, tipoexportacaofinal, indicadorincidenciatributaria, tipofiltrocompra, indicadortipoatividade, indicadorcritescrituracao, reginventariofinalmes, reginventariofinalano) VALUES (3, 1, 1, 3, NULL, NULL, 41, 'S', 'S', 'S', 'S', 'S', 'S', 'S', 'S', NULL, 'A', '00', '1', '1', 2026, 8, 'SINTEGRA agosto/2026', 'S', 'S', 'S', '55', '1', 'S', 'S', 'S', 'S', 'N', 'S', 'S', 'S', '1', 'Sem as compras de material de consumo: o fornecedor de CNPJ alfanumérico não cabe no SINTEGRA.', '2026-09-04 10:20:00', '', 0, 0, 0, '1', 0, '1', '2', 'N', 'N');
INSERT INTO registrofiscal (cdregistrofiscal, cdtiporegistrofiscal, cdempresa, cdusuario, cdinventariofinalmes, cdinventariofinalano, cdregistrofiscalemp, regcomprainsumo, regtransfequipamentocliente, regtransfequipamentofornecedor, regtransfprodutofornecedor, regdevcompraequipamento, regdevcompraprodconsumo, regdevcomprainsumo, regdevvendaequipamento, numreganterior, perfilapresentararq, indicadornatpessoajuridica, indicadormetodoapropcredito, indicadortipocontribuicao, ano, cdmes, etiqueta, reg_1011, reg_1010, reg_1012, modelo_nf, serie_nf, regvendaproduto, regcompraequipamento, regvendaequipamento, regcompraproduto, regcompraprodconsumo, regtransfprodutocliente, regdevvendaproduto, regdevcompraproduto, finalidadearquivo, obs, dataregistrofiscal, indicadorsitespecial, tipoexportacao, tipoexportacaoinicio, tipoexportacaofinal, indicadorincidenciatributaria, tipofiltrocompra, indicadortipoatividade, indicadorcritescrituracao, reginventariofinalmes, reginventariofinalano) VALUES (4, 2, 1, 3, NULL, NULL, 42, 'S', 'S', 'S', 'S', 'S', 'S', 'S', 'S', NULL, 'A', '00', '1', '1', 2026, 8, 'EFD ICMS/IPI agosto/2026', 'S', 'S', 'S', '55', '1', 'S', 'S', 'S', 'S', 'S', 'S', 'S', 'S', '0', 'Escrituração original.', '2026-09-08 11:05:00', '', 0, 0, 0, '1', 0, '1', '2', 'N', 'N');
