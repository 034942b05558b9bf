-- What drawing code asks for, and the layer that it gets in each layer system. A key that a layer system does not
-- have falls back on the key DEFAULT of the same system. The key of a pipe is PIPE and the short name of its type.

-- Without a layer system: the layers of new work.
INSERT INTO tblLayerKey (ixLayerKey, ixLayerSystem, ixLayer, sKey)
VALUES
    (1, NULL, 15, 'DEFAULT'),
    (2, NULL, 1, 'PIPE CW'),
    (3, NULL, 2, 'PIPE HW'),
    (4, NULL, 3, 'PIPE HWR'),
    (5, NULL, 4, 'PIPE SAN'),
    (6, NULL, 5, 'PIPE V'),
    (7, NULL, 6, 'PIPE ST'),
    (8, NULL, 7, 'PIPE G'),
    (9, NULL, 8, 'PIPE LABEL'),
    (10, NULL, 9, 'PIPE ARROW'),
    (11, NULL, 10, 'PIPE HANGER'),
    (12, NULL, 11, 'PIPE HIDDEN'),
    (13, NULL, 12, 'FIXTURE'),
    (14, NULL, 13, 'VALVE'),
    (15, NULL, 14, 'EQUIPMENT'),
    (16, NULL, 46, 'NOTE'),
    (17, NULL, 47, 'ELEVATION LABEL'),
    (18, NULL, 48, 'SCHEDULE'),
    (19, NULL, 49, 'ISOMETRIC'),
    (20, NULL, 50, 'ALIGNMENT POINT'),
    (21, NULL, 51, 'SHEET');

-- New.
INSERT INTO tblLayerKey (ixLayerKey, ixLayerSystem, ixLayer, sKey)
VALUES
    (22, 1, 15, 'DEFAULT'),
    (23, 1, 1, 'PIPE CW'),
    (24, 1, 2, 'PIPE HW'),
    (25, 1, 3, 'PIPE HWR'),
    (26, 1, 4, 'PIPE SAN'),
    (27, 1, 5, 'PIPE V'),
    (28, 1, 6, 'PIPE ST'),
    (29, 1, 7, 'PIPE G'),
    (30, 1, 8, 'PIPE LABEL'),
    (31, 1, 9, 'PIPE ARROW'),
    (32, 1, 10, 'PIPE HANGER'),
    (33, 1, 11, 'PIPE HIDDEN'),
    (34, 1, 12, 'FIXTURE'),
    (35, 1, 13, 'VALVE'),
    (36, 1, 14, 'EQUIPMENT'),
    (37, 1, 46, 'NOTE'),
    (38, 1, 47, 'ELEVATION LABEL'),
    (39, 1, 48, 'SCHEDULE'),
    (40, 1, 49, 'ISOMETRIC'),
    (41, 1, 50, 'ALIGNMENT POINT'),
    (42, 1, 51, 'SHEET');

-- Existing.
INSERT INTO tblLayerKey (ixLayerKey, ixLayerSystem, ixLayer, sKey)
VALUES
    (43, 2, 30, 'DEFAULT'),
    (44, 2, 16, 'PIPE CW'),
    (45, 2, 17, 'PIPE HW'),
    (46, 2, 18, 'PIPE HWR'),
    (47, 2, 19, 'PIPE SAN'),
    (48, 2, 20, 'PIPE V'),
    (49, 2, 21, 'PIPE ST'),
    (50, 2, 22, 'PIPE G'),
    (51, 2, 23, 'PIPE LABEL'),
    (52, 2, 24, 'PIPE ARROW'),
    (53, 2, 25, 'PIPE HANGER'),
    (54, 2, 26, 'PIPE HIDDEN'),
    (55, 2, 27, 'FIXTURE'),
    (56, 2, 28, 'VALVE'),
    (57, 2, 29, 'EQUIPMENT'),
    (58, 2, 46, 'NOTE'),
    (59, 2, 47, 'ELEVATION LABEL'),
    (60, 2, 48, 'SCHEDULE'),
    (61, 2, 49, 'ISOMETRIC'),
    (62, 2, 50, 'ALIGNMENT POINT'),
    (63, 2, 51, 'SHEET');

-- Demolition.
INSERT INTO tblLayerKey (ixLayerKey, ixLayerSystem, ixLayer, sKey)
VALUES
    (64, 3, 45, 'DEFAULT'),
    (65, 3, 31, 'PIPE CW'),
    (66, 3, 32, 'PIPE HW'),
    (67, 3, 33, 'PIPE HWR'),
    (68, 3, 34, 'PIPE SAN'),
    (69, 3, 35, 'PIPE V'),
    (70, 3, 36, 'PIPE ST'),
    (71, 3, 37, 'PIPE G'),
    (72, 3, 38, 'PIPE LABEL'),
    (73, 3, 39, 'PIPE ARROW'),
    (74, 3, 40, 'PIPE HANGER'),
    (75, 3, 41, 'PIPE HIDDEN'),
    (76, 3, 42, 'FIXTURE'),
    (77, 3, 43, 'VALVE'),
    (78, 3, 44, 'EQUIPMENT'),
    (79, 3, 46, 'NOTE'),
    (80, 3, 47, 'ELEVATION LABEL'),
    (81, 3, 48, 'SCHEDULE'),
    (82, 3, 49, 'ISOMETRIC'),
    (83, 3, 50, 'ALIGNMENT POINT'),
    (84, 3, 51, 'SHEET');
