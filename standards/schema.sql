-- Tables and indexes of a project database.
--
-- Order of use: this file, the files of starter/ in the order of their names, and for a standards file,
-- which carries no building of its own, standards-file.sql behind them.
--
-- A yes is -1 and a no is 0. An empty text is stored as one blank. Columns without a default may be null.
-- An index is named after its table and the name that a record asks for; a table's first column is its key.

-- Named settings of the project. A row holds a number when bNumeric is set, else a text.
CREATE TABLE tblGlobal (
    ixGlobal INTEGER PRIMARY KEY AUTOINCREMENT,
    sKey TEXT(100) COLLATE NOCASE DEFAULT ' ',
    bNumeric YESNO DEFAULT 0,
    sText TEXT(255) COLLATE NOCASE,
    dNumber DOUBLE
);
CREATE UNIQUE INDEX [tblGlobal.sKey] ON tblGlobal(sKey);

-- Layer systems: every pipe and every label format belongs to one. The hatch columns are kept for the ductwork
-- of other modules.
CREATE TABLE tblLayerSystem (
    ixLayerSystem INTEGER PRIMARY KEY AUTOINCREMENT,
    sDescription TEXT(100) COLLATE NOCASE DEFAULT ' ',
    iSortOrder INTEGER DEFAULT 0,
    bSolid YESNO DEFAULT -1,
    sPrefix TEXT(50) COLLATE NOCASE DEFAULT ' ',
    sSuffix TEXT(50) COLLATE NOCASE DEFAULT ' ',
    supplyHatchOn YESNO DEFAULT 0,
    supplyHatchType TEXT(50) COLLATE NOCASE DEFAULT ' ',
    supplyHatchPattern TEXT(100) COLLATE NOCASE DEFAULT ' ',
    supplyHatchAngle DOUBLE DEFAULT 0,
    supplyHatchScale DOUBLE DEFAULT 0,
    returnHatchOn YESNO DEFAULT 0,
    returnHatchType TEXT(50) COLLATE NOCASE DEFAULT ' ',
    returnHatchPattern TEXT(100) COLLATE NOCASE DEFAULT ' ',
    returnHatchAngle DOUBLE DEFAULT 0,
    returnHatchScale DOUBLE DEFAULT 0,
    exhaustHatchOn YESNO DEFAULT 0,
    exhaustHatchType TEXT(50) COLLATE NOCASE DEFAULT ' ',
    exhaustHatchPattern TEXT(100) COLLATE NOCASE DEFAULT ' ',
    exhaustHatchAngle DOUBLE DEFAULT 0,
    exhaustHatchScale DOUBLE DEFAULT 0,
    outsideHatchOn YESNO DEFAULT 0,
    outsideHatchType TEXT(50) COLLATE NOCASE DEFAULT ' ',
    outsideHatchPattern TEXT(100) COLLATE NOCASE DEFAULT ' ',
    outsideHatchAngle DOUBLE DEFAULT 0,
    outsideHatchScale DOUBLE DEFAULT 0,
    bHatchFlexDucts YESNO DEFAULT 0,
    dHatchOverhang DOUBLE DEFAULT 0,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE INDEX [tblLayerSystem.iSortOrder] ON tblLayerSystem(iSortOrder);

-- Layers of the project standards: what a layer is called and how it looks when a drawing gets it.
CREATE TABLE tblLayer (
    ixLayer INTEGER PRIMARY KEY AUTOINCREMENT,
    sName TEXT(255) COLLATE NOCASE DEFAULT ' ',
    bRGBColor YESNO DEFAULT 0,
    iColor INTEGER,
    iRed INTEGER,
    iGreen INTEGER,
    iBlue INTEGER,
    sLinetype TEXT(255) COLLATE NOCASE DEFAULT ' ',
    bPlot YESNO DEFAULT -1,
    sLineweight TEXT(20) COLLATE NOCASE,
    sPlotstyle TEXT(255) COLLATE NOCASE,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE UNIQUE INDEX [tblLayer.sName] ON tblLayer(sName);

-- Which layer a symbolic layer key means in a layer system; without a layer system, where no system is named.
CREATE TABLE tblLayerKey (
    ixLayerKey INTEGER PRIMARY KEY AUTOINCREMENT,
    ixLayerSystem INTEGER,
    ixLayer INTEGER DEFAULT 0,
    sKey TEXT(100) COLLATE NOCASE DEFAULT ' ',
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE UNIQUE INDEX [tblLayerKey.isxLayerSystemKey] ON tblLayerKey(ixLayerSystem, sKey);
CREATE INDEX [tblLayerKey.sKey] ON tblLayerKey(sKey);
CREATE INDEX [tblLayerKey.ixLayerSystem] ON tblLayerKey(ixLayerSystem);
CREATE INDEX [tblLayerKey.ixLayer] ON tblLayerKey(ixLayer);

-- Text styles by symbolic key. A row without a style name or height takes that of the row DEFAULT.
CREATE TABLE tblTextStyle (
    ixTextStyle INTEGER PRIMARY KEY AUTOINCREMENT,
    sKey TEXT(100) COLLATE NOCASE DEFAULT ' ',
    sStyleName TEXT(255) COLLATE NOCASE,
    dHeight DOUBLE,
    dScaleFactor DOUBLE,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE UNIQUE INDEX [tblTextStyle.sKey] ON tblTextStyle(sKey);

-- Kinds of pipe systems.
CREATE TABLE tblPipeType (
    ixPipeType INTEGER PRIMARY KEY AUTOINCREMENT,
    sName TEXT(100) COLLATE NOCASE DEFAULT ' ',
    sShortName TEXT(100) COLLATE NOCASE DEFAULT ' ',
    iSortOrder INTEGER DEFAULT 0,
    bReversed YESNO DEFAULT 0,
    iElbow INTEGER DEFAULT 0,
    iTee INTEGER DEFAULT 0,
    bFittingTicks YESNO DEFAULT 0,
    iLabelLocation INTEGER DEFAULT 0,
    bHidePipe YESNO DEFAULT 0,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE INDEX [tblPipeType.iSortOrder] ON tblPipeType(iSortOrder);

-- The sizes that a pipe type comes in. Diameters are inches.
CREATE TABLE tblPipeSize (
    ixPipeSize INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipeType INTEGER DEFAULT 0,
    sLabel TEXT(255) COLLATE NOCASE DEFAULT ' ',
    dInteriorDiameter DOUBLE DEFAULT 0,
    dExteriorDiameter DOUBLE DEFAULT 0,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE INDEX [tblPipeSize.ixPipeType_sLabel] ON tblPipeSize(ixPipeType, sLabel);
CREATE INDEX [tblPipeSize.ixPipeType] ON tblPipeSize(ixPipeType);

-- Sizing tables of a pipe type.
CREATE TABLE tblPipeSizingTable (
    ixPipeSizingTable INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipeType INTEGER DEFAULT 0,
    iSortOrder INTEGER DEFAULT 0,
    sName TEXT(100) COLLATE NOCASE DEFAULT ' ',
    bActive YESNO DEFAULT -1,
    bHorizontalOnly YESNO DEFAULT 0
);
CREATE INDEX [tblPipeSizingTable.ixPipeType] ON tblPipeSizingTable(ixPipeType);
CREATE INDEX [tblPipeSizingTable.iSortOrder] ON tblPipeSizingTable(iSortOrder);

-- One row for each size of a sizing table: the flow up to which the size is used.
CREATE TABLE tblPipeSizingValue (
    ixPipeSizingValue INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipeSizingTable INTEGER DEFAULT 0,
    ixPipeSize INTEGER DEFAULT 0,
    dFlow DOUBLE DEFAULT 0,
    dFlowVertical DOUBLE DEFAULT 0,
    bEnable YESNO DEFAULT -1
);
CREATE INDEX [tblPipeSizingValue.ixPipeSizingTable] ON tblPipeSizingValue(ixPipeSizingTable);
CREATE INDEX [tblPipeSizingValue.ixPipeSize] ON tblPipeSizingValue(ixPipeSize);

-- Flow categories of a pipe type. The first is the base; the others convert to it by a multiplier (1) or a
-- lookup table (2).
CREATE TABLE tblPipeSumCategory (
    ixPipeSumCategory INTEGER PRIMARY KEY AUTOINCREMENT,
    sName TEXT(100) COLLATE NOCASE DEFAULT ' ',
    ixPipeType INTEGER DEFAULT 0,
    iOrder INTEGER DEFAULT 0,
    iConversionType INTEGER DEFAULT 1,
    dMultiplier DOUBLE DEFAULT 1,
    sLabelPrefix TEXT(255) COLLATE NOCASE,
    sLabelSuffix TEXT(255) COLLATE NOCASE,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE UNIQUE INDEX [tblPipeSumCategory.ixPipeTypeName] ON tblPipeSumCategory(ixPipeType, sName);
CREATE INDEX [tblPipeSumCategory.ixPipeType] ON tblPipeSumCategory(ixPipeType);
CREATE INDEX [tblPipeSumCategory.iOrder] ON tblPipeSumCategory(iOrder);

-- The value of a flow category on a pipe, entered (fixed) or calculated.
CREATE TABLE tblPipeSum (
    ixPipeSum INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipe INTEGER DEFAULT 0,
    ixPipeSumCategory INTEGER DEFAULT 0,
    bFixed YESNO DEFAULT 0,
    dValue DOUBLE DEFAULT 0
);
CREATE UNIQUE INDEX [tblPipeSum.ixPipePipeSumCategoryFixed] ON tblPipeSum(ixPipe, ixPipeSumCategory, bFixed);
CREATE INDEX [tblPipeSum.ixPipe] ON tblPipeSum(ixPipe);
CREATE INDEX [tblPipeSum.ixPipeSumCategory] ON tblPipeSum(ixPipeSumCategory);

-- Lookup tables of flow categories. A row of -1 fixtures holds the flow of each fixture unit beyond the table.
CREATE TABLE tblPipeFlowLookup (
    ixPipeFlowLookup INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipeSumCategory INTEGER DEFAULT 0,
    iFixtures INTEGER DEFAULT 0,
    dFlow DOUBLE DEFAULT 0,
    ixPipeSizeMin INTEGER
);
CREATE INDEX [tblPipeFlowLookup.ixPipeSumCategory] ON tblPipeFlowLookup(ixPipeSumCategory);
CREATE INDEX [tblPipeFlowLookup.ixPipeSizeMin] ON tblPipeFlowLookup(ixPipeSizeMin);

-- Label formats of a pipe type in a layer system. A blank isometric format means that of the plan.
CREATE TABLE tblPipeLabel (
    ixPipeLabel INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipeType INTEGER DEFAULT 0,
    ixLayerSystem INTEGER DEFAULT 0,
    sLabelFormat TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sLabelFormatIsometric TEXT(255) COLLATE NOCASE DEFAULT ' ',
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE UNIQUE INDEX [tblPipeLabel.ixPipeTypeLayerSystem] ON tblPipeLabel(ixPipeType, ixLayerSystem);
CREATE INDEX [tblPipeLabel.ixPipeType] ON tblPipeLabel(ixPipeType);
CREATE INDEX [tblPipeLabel.ixLayerSystem] ON tblPipeLabel(ixLayerSystem);

-- Linetypes of a pipe type in a layer system, each from a length of pipe upward.
CREATE TABLE tblPipeLinetype (
    ixPipeLinetype INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipeType INTEGER DEFAULT 0,
    ixLayerSystem INTEGER DEFAULT 0,
    sLinetype TEXT(255) COLLATE NOCASE DEFAULT ' ',
    dMinimumLength DOUBLE DEFAULT 0,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE INDEX [tblPipeLinetype.ixPipeType] ON tblPipeLinetype(ixPipeType);
CREATE INDEX [tblPipeLinetype.ixLayerSystem] ON tblPipeLinetype(ixLayerSystem);

-- The text in the line of a pipe type in a layer system.
CREATE TABLE tblPipeLinetypeText (
    ixPipeLinetypeText INTEGER PRIMARY KEY AUTOINCREMENT,
    ixPipeType INTEGER DEFAULT 0,
    ixLayerSystem INTEGER DEFAULT 0,
    sLinetypeText TEXT(255) COLLATE NOCASE DEFAULT ' ',
    bLinetypeTextRotateTo0 YESNO DEFAULT 0
);
CREATE UNIQUE INDEX [tblPipeLinetypeText.ixPipeType_ixLayerSystem] ON tblPipeLinetypeText(ixPipeType, ixLayerSystem);
CREATE INDEX [tblPipeLinetypeText.ixPipeType] ON tblPipeLinetypeText(ixPipeType);
CREATE INDEX [tblPipeLinetypeText.ixLayerSystem] ON tblPipeLinetypeText(ixLayerSystem);

-- Symbol blocks of fixtures and valves.
CREATE TABLE tblDwgValve (
    ixDwgValve INTEGER PRIMARY KEY AUTOINCREMENT,
    iSortOrder INTEGER DEFAULT 0,
    sDescription TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sBlockName TEXT(255) COLLATE NOCASE DEFAULT ' ',
    bToScale YESNO DEFAULT 0,
    ixMasterDatabase INTEGER,
    iMasterDatabaseIndex INTEGER
);
CREATE INDEX [tblDwgValve.iSortOrder] ON tblDwgValve(iSortOrder);

-- Groups of fixture and valve types.
CREATE TABLE tblValveSGroup (
    ixValveSGroup INTEGER PRIMARY KEY AUTOINCREMENT,
    sName TEXT(100) COLLATE NOCASE DEFAULT ' '
);

-- Fixture and valve types. In a standards file this table is tblValveM.
CREATE TABLE tblValveS (
    ixValveS INTEGER PRIMARY KEY AUTOINCREMENT,
    ixDwgValve INTEGER DEFAULT 0,
    ixValveSGroup INTEGER DEFAULT 0,
    sName TEXT(100) COLLATE NOCASE DEFAULT ' ',
    dFU DOUBLE DEFAULT 0,
    sScheduleNote1 TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sScheduleNote2 TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sScheduleNote3 TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sDwgNote1 TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sDwgNote2 TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sDwgNote3 TEXT(255) COLLATE NOCASE DEFAULT ' ',
    bShowInSchedule YESNO DEFAULT -1,
    bIncludeOnIsometric YESNO DEFAULT -1,
    bIncludeOnPlanView YESNO DEFAULT -1
);
CREATE INDEX [tblValveS.ixDwgValve] ON tblValveS(ixDwgValve);
CREATE INDEX [tblValveS.ixValveSGroup] ON tblValveS(ixValveSGroup);

-- Fixtures and valves placed in drawings.
CREATE TABLE tblValveL (
    ixValveL INTEGER PRIMARY KEY AUTOINCREMENT,
    ixValveS INTEGER DEFAULT 0,
    ixLayerSystem INTEGER DEFAULT 0,
    ixPipeType INTEGER DEFAULT 0,
    sDwgNote1 TEXT(255) COLLATE NOCASE,
    sDwgNote2 TEXT(255) COLLATE NOCASE,
    sDwgNote3 TEXT(255) COLLATE NOCASE,
    dX DOUBLE DEFAULT 0,
    dY DOUBLE DEFAULT 0,
    dZ DOUBLE DEFAULT 0,
    bMirrored YESNO DEFAULT 0,
    dRotation DOUBLE DEFAULT 0,
    sDrawing TEXT(255) COLLATE NOCASE DEFAULT ' ',
    iAlignmentPointNumber INTEGER DEFAULT 0,
    bDeleted YESNO DEFAULT 0
);
CREATE INDEX [tblValveL.ixValveS] ON tblValveL(ixValveS);
CREATE INDEX [tblValveL.ixLayerSystem] ON tblValveL(ixLayerSystem);
CREATE INDEX [tblValveL.ixPipeType] ON tblValveL(ixPipeType);
CREATE INDEX [tblValveL.sDrawing_iAlignmentPointNumber] ON tblValveL(sDrawing, iAlignmentPointNumber);

-- Floors of the building. Lengths are inches.
CREATE TABLE tblFloor (
    ixFloor INTEGER PRIMARY KEY AUTOINCREMENT,
    ixFloorAbove INTEGER,
    sName TEXT(100) COLLATE NOCASE DEFAULT ' ',
    dElevation DOUBLE DEFAULT 0,
    dCeilingHeight DOUBLE DEFAULT 0,
    dFloorToFloorHeight DOUBLE DEFAULT 0,
    ixElecFloor INTEGER,
    ixHVACFloor INTEGER
);
CREATE UNIQUE INDEX [tblFloor.sName] ON tblFloor(sName);
CREATE INDEX [tblFloor.ixFloorAbove] ON tblFloor(ixFloorAbove);

-- Rectangles of drawings that show a part of a floor, with their alignment points.
CREATE TABLE tblAlignmentPointArea (
    ixAlignmentPointArea INTEGER PRIMARY KEY AUTOINCREMENT,
    ixFloor INTEGER DEFAULT 0,
    sName TEXT(100) COLLATE NOCASE DEFAULT ' ',
    sDrawing TEXT(255) COLLATE NOCASE DEFAULT ' ',
    iAlignmentPointNumber INTEGER DEFAULT 0,
    dXMin DOUBLE,
    dXMax DOUBLE,
    dYMin DOUBLE,
    dYMax DOUBLE,
    dX DOUBLE,
    dY DOUBLE,
    dAngle DOUBLE,
    bDeleted YESNO DEFAULT 0
);
CREATE INDEX [tblAlignmentPointArea.sName] ON tblAlignmentPointArea(sName);
CREATE INDEX [tblAlignmentPointArea.ixFloor] ON tblAlignmentPointArea(ixFloor);
CREATE INDEX [tblAlignmentPointArea.sDrawing_iAlignmentPointNumber] ON tblAlignmentPointArea(sDrawing, iAlignmentPointNumber);

-- Which pipe types an area shows.
CREATE TABLE tblPipeAreaMap (
    ixPipeAreaMap INTEGER PRIMARY KEY AUTOINCREMENT,
    ixAlignmentPointArea INTEGER DEFAULT 0,
    ixPipeType INTEGER DEFAULT 0
);
CREATE INDEX [tblPipeAreaMap.ixAlignmentPointArea] ON tblPipeAreaMap(ixAlignmentPointArea);
CREATE INDEX [tblPipeAreaMap.ixPipeType] ON tblPipeAreaMap(ixPipeType);

-- Pipes in drawings.
CREATE TABLE tblPipe (
    ixPipe INTEGER PRIMARY KEY AUTOINCREMENT,
    ixLayerSystem INTEGER DEFAULT 0,
    ixValveLNext INTEGER,
    ixValveLPrevious INTEGER,
    iValvePreviousPoint INTEGER,
    ixPipeRiserPrevious INTEGER,
    ixPipeType INTEGER DEFAULT 0,
    dSize DOUBLE DEFAULT 0,
    dExteriorLining DOUBLE DEFAULT 0,
    dSizeMinimum DOUBLE DEFAULT 0,
    dDistanceToFarthestFixture DOUBLE DEFAULT 0,
    dMaxFixtureZ DOUBLE DEFAULT 0,
    dX1 DOUBLE DEFAULT 0,
    dY1 DOUBLE DEFAULT 0,
    dZ1 DOUBLE DEFAULT 0,
    dX2 DOUBLE DEFAULT 0,
    dY2 DOUBLE DEFAULT 0,
    dZ2 DOUBLE DEFAULT 0,
    dOffsetPlan DOUBLE,
    sDrawing TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sOffsetZ TEXT(10) COLLATE NOCASE DEFAULT ' ',
    sOffsetY TEXT(10) COLLATE NOCASE DEFAULT ' ',
    iAlignmentPointNumber INTEGER DEFAULT 0,
    bDeleted YESNO DEFAULT 0,
    bPTrap YESNO DEFAULT 0,
    dDistanceFromSource DOUBLE DEFAULT 0,
    dHangerZ DOUBLE DEFAULT 0,
    dHangerSize DOUBLE DEFAULT 0,
    dHangerDepth DOUBLE DEFAULT 0,
    dHangerStartOffset DOUBLE DEFAULT 0,
    dHangerSpacing DOUBLE DEFAULT 0,
    dHangerEndOffset DOUBLE DEFAULT 0,
    dHangerLeftExtension DOUBLE DEFAULT 0,
    dHangerRightExtension DOUBLE DEFAULT 0,
    iHangerType INTEGER DEFAULT 0,
    ixPipeSize INTEGER DEFAULT 0,
    ixPipeSizingTable INTEGER,
    bSizeLocked YESNO DEFAULT 0,
    bTransparent YESNO DEFAULT 0
);
CREATE INDEX [tblPipe.ixLayerSystem] ON tblPipe(ixLayerSystem);
CREATE INDEX [tblPipe.ixValveLNext] ON tblPipe(ixValveLNext);
CREATE INDEX [tblPipe.ixValveLPrevious] ON tblPipe(ixValveLPrevious);
CREATE INDEX [tblPipe.ixPipeRiserPrevious] ON tblPipe(ixPipeRiserPrevious);
CREATE INDEX [tblPipe.ixPipeType] ON tblPipe(ixPipeType);
CREATE INDEX [tblPipe.ixPipeSize] ON tblPipe(ixPipeSize);
CREATE INDEX [tblPipe.ixPipeSizingTable] ON tblPipe(ixPipeSizingTable);
CREATE INDEX [tblPipe.sDrawing_iAlignmentPointNumber] ON tblPipe(sDrawing, iAlignmentPointNumber);

-- Texts of schedules, by group and key.
CREATE TABLE tblLabelGroup (
    ixLabelGroup INTEGER PRIMARY KEY AUTOINCREMENT,
    sGroup TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sKey TEXT(100) COLLATE NOCASE DEFAULT ' ',
    sLabel TEXT(255) COLLATE NOCASE DEFAULT ' ',
    bDisplay YESNO DEFAULT -1
);
CREATE INDEX [tblLabelGroup.sGroup] ON tblLabelGroup(sGroup);
CREATE INDEX [tblLabelGroup.sKey] ON tblLabelGroup(sKey);

-- Floors that isometric views show.
CREATE TABLE tblIsometricFloor (
    ixIsometricFloor INTEGER PRIMARY KEY AUTOINCREMENT,
    ixFloor INTEGER DEFAULT 0
);
CREATE INDEX [tblIsometricFloor.ixFloor] ON tblIsometricFloor(ixFloor);

-- Where the rows of a table come from: publication and edition of what sTable holds about sSubject.
CREATE TABLE tblStandardsSource (
    ixStandardsSource INTEGER PRIMARY KEY AUTOINCREMENT,
    sTable TEXT(100) COLLATE NOCASE DEFAULT ' ',
    sSubject TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sSource TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sEdition TEXT(255) COLLATE NOCASE DEFAULT ' ',
    sNote LONGTEXT COLLATE NOCASE DEFAULT ' '
);
CREATE INDEX [tblStandardsSource.sTable] ON tblStandardsSource(sTable);
