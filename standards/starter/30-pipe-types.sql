-- Kinds of pipe systems, in the order of lists. Supply pipes run toward the fixtures; return, drainage and vent
-- pipes away from them. Drains turn and join at 45 degrees, all others at right angles, and pipes with screwed or
-- soldered fittings show ticks. Labels stand in the line along the pipe.

INSERT INTO tblPipeType (
    ixPipeType, sName, sShortName, iSortOrder, bReversed, iElbow, iTee, bFittingTicks, iLabelLocation, bHidePipe)
VALUES
    (1, 'Domestic cold water', 'CW', 1, 0, 0, 0, -1, 1, 0),
    (2, 'Domestic hot water', 'HW', 2, 0, 0, 0, -1, 1, 0),
    (3, 'Hot water return', 'HWR', 3, -1, 0, 0, -1, 1, 0),
    (4, 'Sanitary waste', 'SAN', 4, -1, 1, 1, 0, 1, 0),
    (5, 'Vent', 'V', 5, -1, 0, 0, 0, 1, 0),
    (6, 'Storm drainage', 'ST', 6, -1, 1, 1, 0, 1, 0),
    (7, 'Natural gas', 'G', 7, 0, 0, 0, -1, 1, 0);
