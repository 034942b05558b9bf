-- Text styles by key. Heights are inches on the sheet. A style of its own is only named where it differs from that of
-- the key DEFAULT.

INSERT INTO tblTextStyle (ixTextStyle, sKey, sStyleName, dHeight, dScaleFactor)
VALUES
    (1, 'DEFAULT', 'Standard', 0.09375, 1),
    (2, 'PIPE LABEL', NULL, 0.09375, 1),
    (3, 'FIXTURE LABEL', NULL, 0.09375, 1),
    (4, 'ELEVATION LABEL', NULL, 0.09375, 1),
    (5, 'NOTE', NULL, 0.09375, 1),
    (6, 'SCHEDULE', NULL, 0.09375, 1),
    (7, 'SCHEDULE COLUMN', NULL, 0.09375, 1),
    (8, 'SCHEDULE TITLE', NULL, 0.15625, 1),
    (9, 'ISOMETRIC', NULL, 0.09375, 1),
    (10, 'ROOM', NULL, 0.125, 1),
    (11, 'TITLE', NULL, 0.1875, 1);
