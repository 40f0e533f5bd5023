#include "projectschema.h"

#include <QStringList>

#include <cstring>

namespace {

const char *const settingsColumns = "item text unique, value text";

} // namespace

const QList<ProjectSchema::Table> &ProjectSchema::globalTables()
{
    static const QList<Table> tables{
        {"Strings", "id integer primary key, string text"},
        {"Nodes",
         "nodeId integer primary key, name text, edspath text, xddpath text, dcfpath text, tpdocnt integer, "
         "rpdocnt integer, ismaster integer, issyncproducer integer, issyncconsumer integer, ishbconsumer integer, "
         "isemergencyproducer integer, isemergencyconsumer integer, ismpdosupported integer, "
         "iscanopengateway integer, allpdosstatic integer, excludegeneration integer, generatedcf integer, "
         "prefix text, outputpath text, iconpath text, isbootupmanager integer, isconfigmanager integer, "
         "excludepdolinking integer, multilinedata integer, lssslave"},
        {"GeneralSettings", settingsColumns},
        {"DescriptionSettings", settingsColumns},
        {"EnergyBusSettings", settingsColumns},
        {"J1939Settings", settingsColumns},
        {"MiscSettings", settingsColumns},
        {"Connections",
         "prodnode integer, prodindex integer, prodsub integer, connode integer, conindex integer, consub integer, "
         "priority integer"},
        {"LockedMappings", "node integer, pdoindex integer"},
        {"LockedPDOs", "node integer, pdoindex integer"},
        {"VirtualNodes", "virtualnodeid integer primary key, line integer, dbnodeid integer, name text"},
        {"SignalGroups", "sigid integer primary key, name text"},
        {"Signals",
         "sigid integer primary key, nodeid integer, name integer, datatype integer not null, "
         "accesstype text not null, defaultvalue text, signalgroup integer, ref integer, transmittype integer, "
         "transmittrigger integer, eventtimer integer, syncvalue integer, syncstartvalue integer, routing integer"},
        {"Groups", "name text, nodeidlist text"},
    };
    return tables;
}

const QList<ProjectSchema::Table> &ProjectSchema::lineTables()
{
    static const QList<Table> tables{
        {"Objects",
         "objectindex integer primary key, name integer, datatype integer not null, objecttype integer not null, "
         "description integer, category integer, device_class integer, fwsupported integer, metadata blob"},
        {"SubObjects",
         "objectindex integer not null, subindex integer not null, name integer, datatype integer not null, "
         "accesstype text not null, defaultvalue text, currentvalue text, pdomapping integer, lowlimit text, "
         "uplimit text, size integer, defaultineds integer, limitineds integer, refuseread integer, "
         "refusewrite integer, allowedaccesstypes text, implementation integer not null, varname text, "
         "description integer, category integer, writedefaulttoeds integer, cyclicread integer, "
         "dcfcomponent integer, changedbyuser integer, wizardsource integer, denotation integer, "
         "sharedlines integer, managedbymrn integer, signalid integer, nvstorage integer, metadata blob, "
         "UNIQUE(objectindex, subindex)"},
        {"PGNs",
         "number integer not null, edp_dp_key integer, priority integer, cycletime_ms integer, "
         "inhibittime_ms integer, mappingcount integer, direction integer, name integer, desc integer, "
         "issafe integer, srvt_ms integer, FD_TrailerFormat integer, FD_AssuranceType integer, "
         "FD_AssuranceDataSize integer, multisourceaddress integer, safetytype integer, FD_DataId integer"},
        {"SPNs",
         "pgnnumber integer not null, spnnumber integer not null, datatype integer, implementation integer, "
         "varname text, defaultvalue text, name integer, desc integer, pos integer, bitsize integer, "
         "direction integer, slot_df integer, bitposition integer"},
        {"CANIDs",
         "id integer not null, cycletime_ms integer, inhibittime_ms integer, mappingcount integer, "
         "direction integer, name integer, desc integer"},
        {"DataElements",
         "canid integer not null, number integer not null, datatype integer, implementation integer, "
         "varname text, defaultvalue text, name integer, desc integer, pos integer, bitsize integer, "
         "direction integer, bitpos integer"},
        {"UDSSettings",
         "sid integer not null, active integer, sessions text, userlevels text, authentication text, "
         "UNIQUE(sid)"},
    };
    return tables;
}

QString ProjectSchema::createStatement(const Table &table, bool ifNotExists)
{
    return QStringLiteral("create table %1%2 (%3)")
        .arg(ifNotExists ? QStringLiteral("if not exists ") : QString(), QLatin1String(table.name),
             QLatin1String(table.columns));
}

QString ProjectSchema::createLineStatement(const Table &table, quint8 line, bool ifNotExists)
{
    return QStringLiteral("create table %1%2%3 (%4)")
        .arg(ifNotExists ? QStringLiteral("if not exists ") : QString(), QLatin1String(table.name))
        .arg(line)
        .arg(QLatin1String(table.columns));
}

namespace {

const ProjectSchema::Table *findTable(const QList<ProjectSchema::Table> &tables, const char *name)
{
    for (const auto &table : tables) {
        if (std::strcmp(table.name, name) == 0)
            return &table;
    }
    return nullptr;
}

} // namespace

const ProjectSchema::Table *ProjectSchema::lineTable(const char *name)
{
    return findTable(lineTables(), name);
}

const ProjectSchema::Table *ProjectSchema::globalTable(const char *name)
{
    return findTable(globalTables(), name);
}

QStringList ProjectSchema::lineTableNames(quint8 line)
{
    QStringList names;
    for (const auto &table : lineTables())
        names << QLatin1String(table.name) + QString::number(line);
    return names;
}
