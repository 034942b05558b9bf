-- Sizing tables: the flow up to which a size is used, in the base unit of the pipe type, with a row for each size.
--
-- Water is sized by velocity: gpm = ft/s x bore^2 / 0.4085, rounded to 0.1 gpm. Pressure loss is a check of its own.
-- Drains are sized by drainage fixture units; where a capacity is not given, the size is no standard size of the
-- table. Beside the tables: a building drain that serves a water closet is 3 in or larger, and pipes to 2-1/2 in
-- fall 1/4 in per ft or more, 3 to 6 in 1/8, 8 in and over 1/16.
-- The vertical flow of a building drain is that of a stack of up to three branch intervals.
-- Vents, storm drains and gas have no table here: their sizes hang on length, local rainfall and pressure.

INSERT INTO tblPipeSizingTable (ixPipeSizingTable, ixPipeType, iSortOrder, sName, bActive, bHorizontalOnly)
VALUES
    (1, 1, 1, 'Velocity up to 8 ft/s', -1, -1),
    (2, 1, 2, 'Velocity up to 5 ft/s', -1, -1),
    (3, 2, 1, 'Velocity up to 5 ft/s', -1, -1),
    (4, 3, 1, 'Velocity up to 5 ft/s', -1, -1),
    (5, 4, 1, 'Branches, stacks up to 3 intervals', -1, 0),
    (6, 4, 2, 'Branches, stacks over 3 intervals', -1, 0),
    (7, 4, 3, 'Branches, stack within an interval', -1, 0),
    (8, 4, 4, 'Building drain, 1/16 in per ft', -1, 0),
    (9, 4, 5, 'Building drain, 1/8 in per ft', -1, 0),
    (10, 4, 6, 'Building drain, 1/4 in per ft', -1, 0),
    (11, 4, 7, 'Building drain, 1/2 in per ft', -1, 0);

-- CW: velocity up to 8 ft/s.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (1, 1, 1, 3.6, 3.6, -1),
    (2, 1, 2, 5.8, 5.8, -1),
    (3, 1, 3, 12.1, 12.1, -1),
    (4, 1, 4, 20.6, 20.6, -1),
    (5, 1, 5, 31.3, 31.3, -1),
    (6, 1, 6, 44.4, 44.4, -1),
    (7, 1, 7, 77.2, 77.2, -1),
    (8, 1, 8, 119, 119, -1),
    (9, 1, 9, 169.9, 169.9, -1),
    (10, 1, 10, 297.4, 297.4, -1),
    (11, 1, 11, 669.1, 669.1, -1);

-- CW: velocity up to 5 ft/s.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (12, 2, 1, 2.3, 2.3, -1),
    (13, 2, 2, 3.6, 3.6, -1),
    (14, 2, 3, 7.5, 7.5, -1),
    (15, 2, 4, 12.9, 12.9, -1),
    (16, 2, 5, 19.6, 19.6, -1),
    (17, 2, 6, 27.7, 27.7, -1),
    (18, 2, 7, 48.2, 48.2, -1),
    (19, 2, 8, 74.4, 74.4, -1),
    (20, 2, 9, 106.2, 106.2, -1),
    (21, 2, 10, 185.9, 185.9, -1),
    (22, 2, 11, 418.2, 418.2, -1);

-- HW: velocity up to 5 ft/s.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (23, 3, 12, 2.3, 2.3, -1),
    (24, 3, 13, 3.6, 3.6, -1),
    (25, 3, 14, 7.5, 7.5, -1),
    (26, 3, 15, 12.9, 12.9, -1),
    (27, 3, 16, 19.6, 19.6, -1),
    (28, 3, 17, 27.7, 27.7, -1),
    (29, 3, 18, 48.2, 48.2, -1),
    (30, 3, 19, 74.4, 74.4, -1),
    (31, 3, 20, 106.2, 106.2, -1),
    (32, 3, 21, 185.9, 185.9, -1),
    (33, 3, 22, 418.2, 418.2, -1);

-- HWR: velocity up to 5 ft/s.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (34, 4, 23, 2.3, 2.3, -1),
    (35, 4, 24, 3.6, 3.6, -1),
    (36, 4, 25, 7.5, 7.5, -1),
    (37, 4, 26, 12.9, 12.9, -1),
    (38, 4, 27, 19.6, 19.6, -1),
    (39, 4, 28, 27.7, 27.7, -1),
    (40, 4, 29, 48.2, 48.2, -1),
    (41, 4, 30, 74.4, 74.4, -1),
    (42, 4, 31, 106.2, 106.2, -1),
    (43, 4, 32, 185.9, 185.9, -1),
    (44, 4, 33, 418.2, 418.2, -1);

-- SAN: branches, stacks up to 3 intervals.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (45, 5, 34, 0, 0, 0),
    (46, 5, 35, 3, 4, -1),
    (47, 5, 36, 6, 10, -1),
    (48, 5, 37, 12, 20, -1),
    (49, 5, 38, 20, 48, -1),
    (50, 5, 39, 160, 240, -1),
    (51, 5, 40, 620, 960, -1),
    (52, 5, 41, 1400, 2200, -1);

-- SAN: branches, stacks over 3 intervals.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (53, 6, 34, 0, 0, 0),
    (54, 6, 35, 3, 8, -1),
    (55, 6, 36, 6, 24, -1),
    (56, 6, 37, 12, 42, -1),
    (57, 6, 38, 20, 72, -1),
    (58, 6, 39, 160, 500, -1),
    (59, 6, 40, 620, 1900, -1),
    (60, 6, 41, 1400, 3600, -1);

-- SAN: branches, stack within an interval.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (61, 7, 34, 0, 0, 0),
    (62, 7, 35, 3, 2, -1),
    (63, 7, 36, 6, 6, -1),
    (64, 7, 37, 12, 9, -1),
    (65, 7, 38, 20, 20, -1),
    (66, 7, 39, 160, 90, -1),
    (67, 7, 40, 620, 350, -1),
    (68, 7, 41, 1400, 600, -1);

-- SAN: building drain, 1/16 in per ft.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (69, 8, 34, 0, 0, 0),
    (70, 8, 35, 0, 4, 0),
    (71, 8, 36, 0, 10, 0),
    (72, 8, 37, 0, 20, 0),
    (73, 8, 38, 0, 48, 0),
    (74, 8, 39, 0, 240, 0),
    (75, 8, 40, 0, 960, 0),
    (76, 8, 41, 1400, 2200, -1);

-- SAN: building drain, 1/8 in per ft.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (77, 9, 34, 0, 0, 0),
    (78, 9, 35, 0, 4, 0),
    (79, 9, 36, 0, 10, 0),
    (80, 9, 37, 0, 20, 0),
    (81, 9, 38, 36, 48, -1),
    (82, 9, 39, 180, 240, -1),
    (83, 9, 40, 700, 960, -1),
    (84, 9, 41, 1600, 2200, -1);

-- SAN: building drain, 1/4 in per ft.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (85, 10, 34, 1, 0, -1),
    (86, 10, 35, 3, 4, -1),
    (87, 10, 36, 21, 10, -1),
    (88, 10, 37, 24, 20, -1),
    (89, 10, 38, 42, 48, -1),
    (90, 10, 39, 216, 240, -1),
    (91, 10, 40, 840, 960, -1),
    (92, 10, 41, 1920, 2200, -1);

-- SAN: building drain, 1/2 in per ft.
INSERT INTO tblPipeSizingValue (ixPipeSizingValue, ixPipeSizingTable, ixPipeSize, dFlow, dFlowVertical, bEnable)
VALUES
    (93, 11, 34, 1, 0, -1),
    (94, 11, 35, 3, 4, -1),
    (95, 11, 36, 26, 10, -1),
    (96, 11, 37, 31, 20, -1),
    (97, 11, 38, 50, 48, -1),
    (98, 11, 39, 250, 240, -1),
    (99, 11, 40, 1000, 960, -1),
    (100, 11, 41, 2300, 2200, -1);

-- Texts of the schedule of each sizing table. The column of the vertical flow shows where it differs.
INSERT INTO tblLabelGroup (ixLabelGroup, sGroup, sKey, sLabel, bDisplay)
VALUES
    (1, 'Pipe Sizing Table:1', 'Schedule Title', 'Velocity up to 8 ft/s', -1),
    (2, 'Pipe Sizing Table:1', 'Vertical Flow', 'Vertical Flow', 0),
    (3, 'Pipe Sizing Table:2', 'Schedule Title', 'Velocity up to 5 ft/s', -1),
    (4, 'Pipe Sizing Table:2', 'Vertical Flow', 'Vertical Flow', 0),
    (5, 'Pipe Sizing Table:3', 'Schedule Title', 'Velocity up to 5 ft/s', -1),
    (6, 'Pipe Sizing Table:3', 'Vertical Flow', 'Vertical Flow', 0),
    (7, 'Pipe Sizing Table:4', 'Schedule Title', 'Velocity up to 5 ft/s', -1),
    (8, 'Pipe Sizing Table:4', 'Vertical Flow', 'Vertical Flow', 0),
    (9, 'Pipe Sizing Table:5', 'Schedule Title', 'Branches, stacks up to 3 intervals', -1),
    (10, 'Pipe Sizing Table:5', 'Vertical Flow', 'Vertical Flow', -1),
    (11, 'Pipe Sizing Table:6', 'Schedule Title', 'Branches, stacks over 3 intervals', -1),
    (12, 'Pipe Sizing Table:6', 'Vertical Flow', 'Vertical Flow', -1),
    (13, 'Pipe Sizing Table:7', 'Schedule Title', 'Branches, stack within an interval', -1),
    (14, 'Pipe Sizing Table:7', 'Vertical Flow', 'Vertical Flow', -1),
    (15, 'Pipe Sizing Table:8', 'Schedule Title', 'Building drain, 1/16 in per ft', -1),
    (16, 'Pipe Sizing Table:8', 'Vertical Flow', 'Vertical Flow', -1),
    (17, 'Pipe Sizing Table:9', 'Schedule Title', 'Building drain, 1/8 in per ft', -1),
    (18, 'Pipe Sizing Table:9', 'Vertical Flow', 'Vertical Flow', -1),
    (19, 'Pipe Sizing Table:10', 'Schedule Title', 'Building drain, 1/4 in per ft', -1),
    (20, 'Pipe Sizing Table:10', 'Vertical Flow', 'Vertical Flow', -1),
    (21, 'Pipe Sizing Table:11', 'Schedule Title', 'Building drain, 1/2 in per ft', -1),
    (22, 'Pipe Sizing Table:11', 'Vertical Flow', 'Vertical Flow', -1);
