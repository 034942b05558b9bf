-- Flow categories. The first of a type is its base, the unit of its sizing tables; the others convert to it, by a
-- multiplier (1) or a lookup table (2).
--
-- Water: fixture units become gpm by the demand curves. Continuous demands, such as 5 gpm for a hose bibb, are
-- entered as gpm. A main takes the total units of a fixture, a branch its cold or hot units.
-- Sanitary: a gpm of continuous flow counts as 2 drainage fixture units.
-- Storm: the multiplier of the roof area is gpm for 1 sq ft at 1 in of rain an hour; set it to that times the
-- local rate. Gas: the multiplier is for 1000 Btu per cu ft; set it to 1000 through the local heating value.

INSERT INTO tblPipeSumCategory (
    ixPipeSumCategory, sName, ixPipeType, iOrder, iConversionType, dMultiplier, sLabelPrefix, sLabelSuffix)
VALUES
    (1, 'Flow (gpm)', 1, 0, 1, 1, ' ', ' GPM'),
    (2, 'WSFU, flush tanks', 1, 1, 2, 1, ' ', ' WSFU'),
    (3, 'WSFU, flushometers', 1, 2, 2, 1, ' ', ' WSFU'),
    (4, 'Flow (gpm)', 2, 0, 1, 1, ' ', ' GPM'),
    (5, 'WSFU', 2, 1, 2, 1, ' ', ' WSFU'),
    (6, 'Flow (gpm)', 3, 0, 1, 1, ' ', ' GPM'),
    (7, 'Drainage fixture units', 4, 0, 1, 1, ' ', ' DFU'),
    (8, 'Continuous flow (gpm)', 4, 1, 1, 2, ' ', ' GPM'),
    (9, 'Drainage fixture units', 5, 0, 1, 1, ' ', ' DFU'),
    (10, 'Flow (gpm)', 6, 0, 1, 1, ' ', ' GPM'),
    (11, 'Roof area at 1 in/h (sq ft)', 6, 1, 1, 0.01039, ' ', ' SF'),
    (12, 'Gas flow (cu ft/h)', 7, 0, 1, 1, ' ', ' CFH'),
    (13, 'Gas input (1000 Btu/h)', 7, 1, 1, 1, ' ', ' MBH');
