-- Layer systems. The suffix is the status at the end of layer names.

INSERT INTO tblLayerSystem (ixLayerSystem, sDescription, iSortOrder, bSolid, sPrefix, sSuffix)
VALUES
    (1, 'New', 1, -1, ' ', ' '),
    (2, 'Existing', 2, -1, ' ', '-E'),
    (3, 'Demolition', 3, 0, ' ', '-D');
