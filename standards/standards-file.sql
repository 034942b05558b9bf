-- Turns a project database that holds no building into a standards file. It runs behind the starter rows,
-- which stay.

-- A standards file has no master of its own.
ALTER TABLE tblLayerSystem DROP COLUMN ixMasterDatabase;
ALTER TABLE tblLayerSystem DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblLayer DROP COLUMN ixMasterDatabase;
ALTER TABLE tblLayer DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblLayerKey DROP COLUMN ixMasterDatabase;
ALTER TABLE tblLayerKey DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblTextStyle DROP COLUMN ixMasterDatabase;
ALTER TABLE tblTextStyle DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblPipeType DROP COLUMN ixMasterDatabase;
ALTER TABLE tblPipeType DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblPipeSize DROP COLUMN ixMasterDatabase;
ALTER TABLE tblPipeSize DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblPipeSumCategory DROP COLUMN ixMasterDatabase;
ALTER TABLE tblPipeSumCategory DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblPipeLabel DROP COLUMN ixMasterDatabase;
ALTER TABLE tblPipeLabel DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblPipeLinetype DROP COLUMN ixMasterDatabase;
ALTER TABLE tblPipeLinetype DROP COLUMN iMasterDatabaseIndex;
ALTER TABLE tblDwgValve DROP COLUMN ixMasterDatabase;
ALTER TABLE tblDwgValve DROP COLUMN iMasterDatabaseIndex;

-- Fixture and valve types are the masters of those that projects schedule.
DROP INDEX [tblValveS.ixDwgValve];
DROP INDEX [tblValveS.ixValveSGroup];
ALTER TABLE tblValveS RENAME TO tblValveM;
ALTER TABLE tblValveM RENAME COLUMN ixValveS TO ixValveM;
CREATE INDEX [tblValveM.ixDwgValve] ON tblValveM(ixDwgValve);
CREATE INDEX [tblValveM.ixValveSGroup] ON tblValveM(ixValveSGroup);
UPDATE tblStandardsSource SET sTable = 'tblValveM' WHERE sTable = 'tblValveS';

-- What belongs to a building or mirrors its drawings.
DROP TABLE tblPipeSum;
DROP TABLE tblPipe;
DROP TABLE tblValveL;
DROP TABLE tblPipeAreaMap;
DROP TABLE tblAlignmentPointArea;
DROP TABLE tblIsometricFloor;
DROP TABLE tblFloor;
