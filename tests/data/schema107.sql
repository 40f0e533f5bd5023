-- The tables of a project file of schema version 107, written from the file format description, for
-- tests that build projects without the program and compare the program's schema with it.
create table Strings (id integer primary key, string text);
create table Nodes (nodeId integer primary key, name text, edspath text, xddpath text, dcfpath text, tpdocnt integer, rpdocnt integer, ismaster integer, issyncproducer integer, issyncconsumer integer, ishbconsumer integer, isemergencyproducer integer, isemergencyconsumer integer, ismpdosupported integer, iscanopengateway integer, allpdosstatic integer, excludegeneration integer, generatedcf integer, prefix text, outputpath text, iconpath text, isbootupmanager integer, isconfigmanager integer, excludepdolinking integer, multilinedata integer, lssslave);
create table GeneralSettings (item text unique, value text);
create table DescriptionSettings (item text unique, value text);
create table EnergyBusSettings (item text unique, value text);
create table J1939Settings (item text unique, value text);
create table MiscSettings (item text unique, value text);
create table Connections (prodnode integer, prodindex integer, prodsub integer, connode integer, conindex integer, consub integer, priority integer);
create table LockedMappings (node integer, pdoindex integer);
create table LockedPDOs (node integer, pdoindex integer);
create table VirtualNodes (virtualnodeid integer primary key, line integer, dbnodeid integer, name text);
create table SignalGroups (sigid integer primary key, name text);
create table Signals (sigid integer primary key, nodeid integer, name integer, datatype integer not null, accesstype text not null, defaultvalue text, signalgroup integer, ref integer, transmittype integer, transmittrigger integer, eventtimer integer, syncvalue integer, syncstartvalue integer, routing integer);
create table Groups (name text, nodeidlist text);
create table Objects0 (objectindex integer primary key, name integer, datatype integer not null, objecttype integer not null, description integer, category integer, device_class integer, fwsupported integer, metadata blob);
create table SubObjects0 (objectindex integer not null, subindex integer not null, name integer, datatype integer not null, accesstype text not null, defaultvalue text, currentvalue text, pdomapping integer, lowlimit text, uplimit text, size integer, defaultineds integer, limitineds integer, refuseread integer, refusewrite integer, allowedaccesstypes text, implementation integer not null, varname text, description integer, category integer, writedefaulttoeds integer, cyclicread integer, dcfcomponent integer, changedbyuser integer, wizardsource integer, denotation integer, sharedlines integer, managedbymrn integer, signalid integer, nvstorage integer, metadata blob, UNIQUE(objectindex, subindex));
create table PGNs0 (number integer not null, edp_dp_key integer, priority integer, cycletime_ms integer, inhibittime_ms integer, mappingcount integer, direction integer, name integer, desc integer, issafe integer, srvt_ms integer, FD_TrailerFormat integer, FD_AssuranceType integer, FD_AssuranceDataSize integer, multisourceaddress integer, safetytype integer, FD_DataId integer);
create table SPNs0 (pgnnumber integer not null, spnnumber integer not null, datatype integer, implementation integer, varname text, defaultvalue text, name integer, desc integer, pos integer, bitsize integer, direction integer, slot_df integer, bitposition integer);
create table CANIDs0 (id integer not null, cycletime_ms integer, inhibittime_ms integer, mappingcount integer, direction integer, name integer, desc integer);
create table DataElements0 (canid integer not null, number integer not null, datatype integer, implementation integer, varname text, defaultvalue text, name integer, desc integer, pos integer, bitsize integer, direction integer, bitpos integer);
create table UDSSettings0 (sid integer not null, active integer, sessions text, userlevels text, authentication text, UNIQUE(sid));
insert into Strings values(1, '');
insert into Nodes values(0, '', '', '', '', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, '_', 'C:/', '', 0, 0, 0, 0, 0);
insert into MiscSettings values('DatabaseVersion', '107');
