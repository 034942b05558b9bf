-- Fixture and valve types. The fixture units of a type are its total water supply fixture units, which the code
-- assigns and which are not the sum of cold and hot; those of a drain are drainage fixture units. The schedule notes
-- carry the rest: water units, drainage units with trap and least supply, and the values of the other code family.
-- The first drawing note is the callout.

INSERT INTO tblValveSGroup (ixValveSGroup, sName)
VALUES
    (1, 'Water closets'),
    (2, 'Urinals'),
    (3, 'Lavatories and bidets'),
    (4, 'Bathtubs and showers'),
    (5, 'Sinks'),
    (6, 'Appliances'),
    (7, 'Drinking fountains'),
    (8, 'Drains'),
    (9, 'Hose bibbs'),
    (10, 'Equipment'),
    (11, 'Valves'),
    (12, 'Piping specialties');

-- Fixtures, drains, equipment.
INSERT INTO tblValveS (
    ixValveS, ixDwgValve, ixValveSGroup, sName, dFU, sScheduleNote1, sScheduleNote2, sScheduleNote3, sDwgNote1,
    sDwgNote2, sDwgNote3, bShowInSchedule, bIncludeOnIsometric, bIncludeOnPlanView)
VALUES
    (1, 1, 1, 'Water closet, private, flush tank', 2.2, 'IPC WSFU: cold 2.2, hot none, total 2.2', 'IPC DFU: 3 at 1.6 gpf. Supply 3/8 in, 3 gpm at 20 psi', 'UPC: 2.5 WSFU, 3 DFU', 'WC-1', ' ', ' ', -1, -1, -1),
    (2, 2, 1, 'Water closet, public, flushometer', 10, 'IPC WSFU: cold 10, hot none, total 10', 'IPC DFU: 4 at 1.6 gpf, 6 above. Supply 1 in', 'UPC: WSFU by count of fixtures, 4 DFU', 'WC-2', ' ', ' ', -1, -1, -1),
    (3, 1, 1, 'Water closet, public, flush tank', 5, 'IPC WSFU: cold 5, hot none, total 5', 'IPC DFU: 4 at 1.6 gpf, 6 above. Supply 3/8 in', 'UPC: 2.5 WSFU, 4 DFU', 'WC-3', ' ', ' ', -1, -1, -1),
    (4, 3, 2, 'Urinal, public, 3/4 in flushometer', 5, 'IPC WSFU: cold 5, hot none, total 5', 'IPC DFU: 4, or 2 at 1 gpf and less. Supply 3/4 in', 'UPC: 2 DFU', 'UR-1', ' ', ' ', -1, -1, -1),
    (5, 3, 2, 'Urinal, public, 1 in flushometer', 10, 'IPC WSFU: cold 10, hot none, total 10', 'IPC DFU: 4, or 2 at 1 gpf and less. Supply 1 in', 'UPC: 2 DFU', 'UR-2', ' ', ' ', -1, -1, -1),
    (6, 3, 2, 'Urinal, public, flush tank', 3, 'IPC WSFU: cold 3, hot none, total 3', 'IPC DFU: 4, or 2 at 1 gpf and less', 'UPC: 2 WSFU, 2 DFU', 'UR-3', ' ', ' ', -1, -1, -1),
    (7, 4, 3, 'Lavatory, private', 0.7, 'IPC WSFU: cold 0.5, hot 0.5, total 0.7', 'IPC DFU: 1, trap 1-1/4 in. Supply 3/8 in, 0.8 gpm at 8 psi', 'UPC: 1 WSFU, 1 DFU', 'L-1', ' ', ' ', -1, -1, -1),
    (8, 4, 3, 'Lavatory, public', 2, 'IPC WSFU: cold 1.5, hot 1.5, total 2', 'IPC DFU: 1, trap 1-1/4 in. Supply 3/8 in, 0.4 gpm at 8 psi', 'UPC: 1 WSFU, 1 DFU', 'L-2', ' ', ' ', -1, -1, -1),
    (9, 5, 3, 'Bidet, private', 2, 'IPC WSFU: cold 1.5, hot 1.5, total 2', 'IPC DFU: 1, trap 1-1/4 in. Supply 3/8 in, 2 gpm at 20 psi', 'UPC: 1 WSFU, 1 DFU', 'BD-1', ' ', ' ', -1, -1, -1),
    (10, 6, 4, 'Bathtub, private', 1.4, 'IPC WSFU: cold 1, hot 1, total 1.4', 'IPC DFU: 2, trap 1-1/2 in. Supply 1/2 in, 4 gpm at 20 psi', 'UPC: 4 WSFU, 2 DFU', 'BT-1', ' ', ' ', -1, -1, -1),
    (11, 6, 4, 'Bathtub, public', 4, 'IPC WSFU: cold 3, hot 3, total 4', 'IPC DFU: 2, trap 1-1/2 in. Supply 1/2 in, 4 gpm at 20 psi', ' ', 'BT-2', ' ', ' ', -1, -1, -1),
    (12, 7, 4, 'Shower, private', 1.4, 'IPC WSFU: cold 1, hot 1, total 1.4', 'IPC DFU: 2, trap 1-1/2 in, to 5.7 gpm. Supply 1/2 in, 2.5 gpm at 20 psi', 'UPC: 2 WSFU, 2 DFU, trap 2 in', 'SH-1', ' ', ' ', -1, -1, -1),
    (13, 7, 4, 'Shower, public', 4, 'IPC WSFU: cold 3, hot 3, total 4', 'IPC DFU: 2, trap 1-1/2 in, to 5.7 gpm. Supply 1/2 in, 2.5 gpm at 20 psi', ' ', 'SH-2', ' ', ' ', -1, -1, -1),
    (14, 8, 5, 'Kitchen sink, private', 1.4, 'IPC WSFU: cold 1, hot 1, total 1.4', 'IPC DFU: 2, trap 1-1/2 in. Supply 1/2 in, 1.75 gpm at 8 psi', 'UPC: 1.5 WSFU, 2 DFU', 'S-1', ' ', ' ', -1, -1, -1),
    (15, 8, 5, 'Kitchen sink, restaurant', 4, 'IPC WSFU: cold 3, hot 3, total 4', 'IPC DFU: by the table of the code in force', ' ', 'S-2', ' ', ' ', -1, -1, -1),
    (16, 9, 5, 'Service sink', 3, 'IPC WSFU: cold 2.25, hot 2.25, total 3', 'IPC DFU: 2, trap 1-1/2 in. Supply 1/2 in, 3 gpm at 8 psi', 'UPC: 3 WSFU public, 3 DFU', 'SS-1', ' ', ' ', -1, -1, -1),
    (17, 10, 5, 'Laundry tray, private', 1.4, 'IPC WSFU: cold 1, hot 1, total 1.4', 'IPC DFU: 2, trap 1-1/2 in. Supply 1/2 in, 4 gpm at 8 psi', 'UPC: 1.5 WSFU, 2 DFU', 'LT-1', ' ', ' ', -1, -1, -1),
    (18, 11, 6, 'Dishwasher, private', 1.4, 'IPC WSFU: cold none, hot 1.4, total 1.4', 'IPC DFU: 2, trap 1-1/2 in. Supply 1/2 in, 2.75 gpm at 8 psi', 'UPC: 1.5 WSFU, 2 DFU', 'DW-1', ' ', ' ', -1, -1, -1),
    (19, 12, 6, 'Clothes washer 8 lb, private', 1.4, 'IPC WSFU: cold 1, hot 1, total 1.4', 'IPC DFU: 2, trap 2 in. Supply 1/2 in', 'UPC: 4 WSFU, 3 DFU', 'CWA-1', ' ', ' ', -1, -1, -1),
    (20, 12, 6, 'Clothes washer 8 lb, public', 3, 'IPC WSFU: cold 2.25, hot 2.25, total 3', 'IPC DFU: 3, trap 2 in. Supply 1/2 in', ' ', 'CWA-2', ' ', ' ', -1, -1, -1),
    (21, 13, 7, 'Drinking fountain', 0.25, 'IPC WSFU: cold 0.25, hot none, total 0.25', 'IPC DFU: 0.5, trap 1-1/4 in. Supply 3/8 in, 0.75 gpm at 8 psi', 'UPC: 0.5 WSFU, 0.5 DFU', 'DF-1', ' ', ' ', -1, -1, -1),
    (22, 14, 8, 'Floor drain', 2, 'Fixture units are DFU: no water supply', 'IPC DFU: 2, trap 2 in', 'UPC: 2 DFU', 'FD-1', ' ', ' ', -1, -1, -1),
    (23, 14, 8, 'Floor drain, emergency', 0, 'Fixture units are DFU: no water supply', 'IPC DFU: 0, trap 2 in', ' ', 'FD-2', ' ', ' ', -1, -1, -1),
    (24, 15, 8, 'Roof drain', 0, 'Sized by roof area and rainfall, not by fixture units', ' ', ' ', 'RD-1', ' ', ' ', -1, -1, -1),
    (25, 17, 9, 'Hose bibb', 0, 'Continuous demand: enter 5 gpm as flow, no WSFU', 'Supply 1/2 in, 5 gpm at 8 psi', 'UPC: 2.5 WSFU for the first, 1 for each further', 'HB-1', ' ', ' ', -1, -1, -1),
    (26, 16, 10, 'Water heater', 0, ' ', ' ', ' ', 'WH-1', ' ', ' ', -1, -1, -1),
    (27, 34, 10, 'Circulation pump', 0, ' ', ' ', ' ', 'CP-1', ' ', ' ', -1, -1, -1);

-- Valves and specialties.
INSERT INTO tblValveS (
    ixValveS, ixDwgValve, ixValveSGroup, sName, dFU, sScheduleNote1, sScheduleNote2, sScheduleNote3, sDwgNote1,
    sDwgNote2, sDwgNote3, bShowInSchedule, bIncludeOnIsometric, bIncludeOnPlanView)
VALUES
    (28, 18, 11, 'Gate valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (29, 19, 11, 'Ball valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (30, 20, 11, 'Globe valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (31, 21, 11, 'Butterfly valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (32, 22, 11, 'Check valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (33, 23, 11, 'Balancing valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (34, 24, 11, 'Pressure reducing valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (35, 25, 11, 'Relief valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (36, 26, 11, 'Mixing valve', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (37, 27, 11, 'Gas cock', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (38, 28, 12, 'Backflow preventer', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (39, 29, 12, 'Strainer', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (40, 30, 12, 'Union', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (41, 31, 12, 'Water meter', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (42, 32, 12, 'Gas meter', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (43, 33, 12, 'Water hammer arrester', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (44, 35, 12, 'Floor cleanout', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (45, 36, 12, 'Wall cleanout', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1),
    (46, 37, 12, 'Vent through roof', 0, ' ', ' ', ' ', ' ', ' ', ' ', 0, -1, -1);
