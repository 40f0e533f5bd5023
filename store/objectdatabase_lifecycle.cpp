// Creating, opening, migrating, saving and hashing the working file of a project.

#include "objectdatabase.h"
#include "projectschema.h"
#include "settingskeys.h"
#include "databasetextconverter.h"

#include "busmodel/cohelper.h"
#include "texttools/filepermissions.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStandardPaths>
#include <QThread>

#include <cstdlib>

namespace {

// The UDS services a project of an older version gets, with the sessions that they had there.
const QList<QPair<quint8, const char *>> legacyUdsServices{
    {16, "1,2,3,4"}, {17, "1,2,3,4"}, {62, "1,2,3,4"}, {34, "1,2,3,4"}, {46, "1,2,3,4"}, {35, "1,2,3,4"},
    {61, "1,2,3,4"}, {20, "1,2,3,4"}, {25, "1,2,3,4"}, {49, "1,2,3,4"}, {39, "2,3,4"},   {40, "2,3,4"},
    {47, "2,3,4"},   {52, "2,3,4"},   {53, "2,3,4"},   {54, "2,3,4"},   {55, "2,3,4"},
};

struct Pragma
{
    const char *name;
    const char *newDatabase;
    const char *openedFile;
};

const Pragma pragmas[] = {
    {"page_size", "4096", "4096"},         {"cache_size", "16384", "64000"},   {"temp_store", "MEMORY", "MEMORY"},
    {"journal_mode", "OFF", "OFF"},        {"locking_mode", "EXCLUSIVE", "EXCLUSIVE"},
    {"synchronous", "OFF", "OFF"},
};

// Columns that later versions added, in the order they were added.
const char *const subObjectColumnsOfLine0[] = {"writedefaulttoeds integer", "cyclicread integer",
                                               "dcfcomponent integer",      "changedbyuser integer",
                                               "wizardsource integer",      "sharedlines integer",
                                               "managedbymrn integer",      "signalid integer",
                                               "nvstorage integer",         "metadata blob"};
const char *const nodeColumns[] = {
    "dcfpath text",          "tpdocnt integer",           "rpdocnt integer",           "ismaster integer",
    "issyncproducer integer", "issyncconsumer integer",   "ishbconsumer integer",      "isemergencyproducer integer",
    "isemergencyconsumer integer", "ismpdosupported integer", "iscanopengateway integer", "allpdosstatic integer",
    "excludegeneration integer", "generatedcf integer",    "prefix text",               "outputpath text",
    "iconpath text",         "isbootupmanager integer",   "isconfigmanager integer",   "excludepdolinking integer",
    "multilinedata integer", "lssslave integer"};
const char *const signalColumns[] = {"transmittype integer", "transmittrigger integer", "eventtimer integer",
                                     "syncvalue integer", "syncstartvalue integer", "routing integer"};
const char *const objectColumns[] = {"fwsupported integer", "device_class integer", "metadata blob"};
const char *const subObjectColumns[] = {"writedefaulttoeds integer", "cyclicread integer", "dcfcomponent integer",
                                        "changedbyuser integer",     "wizardsource integer", "denotation integer",
                                        "sharedlines integer",       "nvstorage integer",    "metadata blob",
                                        "managedbymrn integer",      "signalid integer"};
const char *const spnColumns[] = {"pos integer", "bitsize integer", "direction integer", "slot_df integer",
                                  "bitposition integer"};
const char *const pgnColumns[] = {"issafe integer",           "srvt_ms integer",
                                  "FD_TrailerFormat integer", "FD_AssuranceType integer",
                                  "FD_AssuranceDataSize integer", "multisourceaddress integer"};
const char *const pgnColumnsOfVersion106[] = {"safetytype integer", "FD_DataID integer"};

} // namespace

QString ObjectDataBase::makeWorkingFileName()
{
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(directory);
    QString name;
    do {
        name = QStringLiteral("%1/projdatatemp_%2_%3").arg(directory).arg(std::rand()).arg(std::rand());
    } while (QFile::exists(name) || tempFiles.contains(name));
    tempFiles << name;
    return name;
}

QString ObjectDataBase::workingFile() const
{
    return database.databaseName();
}

bool ObjectDataBase::openConnection(const QString &file)
{
    if (database.isOpen())
        closeDatabase();
    subCache.clear();
    nameCache.clear();
    spnCache = SpnCache();
    database.setDatabaseName(file);
    return database.open();
}

void ObjectDataBase::executePragmas(bool newDatabase)
{
    QSqlQuery query(database);
    for (const auto &pragma : pragmas) {
        execQuery(query, QStringLiteral("PRAGMA %1 = %2")
                             .arg(QLatin1String(pragma.name),
                                  QLatin1String(newDatabase ? pragma.newDatabase : pragma.openedFile)));
    }
}

bool ObjectDataBase::createGlobalTables()
{
    QSqlQuery query(database);
    for (const auto &table : ProjectSchema::globalTables()) {
        if (!execQuery(query, ProjectSchema::createStatement(table))) {
            const QString name = QLatin1String(table.name);
            const bool namedLog = name == QLatin1String("VirtualNodes") || name == QLatin1String("SignalGroups") ||
                                  name == QLatin1String("Signals") || name == QLatin1String("Groups");
            qDebug() << (namedLog ? QStringLiteral("Create ") + name : QStringLiteral("Create VirtualNodes"))
                     << false << query.lastError().text();
            return false;
        }
    }
    return true;
}

bool ObjectDataBase::createNewDataBase()
{
    const QString file = makeWorkingFileName();
    const bool opened = openConnection(file);
    if (!opened)
        qDebug() << "error sqlDbFile.open()" << database.lastError().text();
    executePragmas(true);
    createGlobalTables();
    stringsById.clear();
    idsByString.clear();
    addNode(0, NODE_DATA_T());
    notify(ChangeSet{ProjectReplaced});
    setMiscSetting(QStringLiteral("CreateToolVersion"), QCoreApplication::applicationVersion());
    setMiscSetting(QStringLiteral("CreateToolName"), QCoreApplication::applicationName());
    setMiscSetting(QStringLiteral("DatabaseVersion"), QString::number(SchemaVersion));
    return opened;
}

int ObjectDataBase::storedDatabaseVersion()
{
    return getMiscSetting(QStringLiteral("DatabaseVersion")).toInt();
}

bool ObjectDataBase::openDataBase(const QString &path)
{
    lastErrorText.clear();
    if (path.endsWith(QLatin1String("ktxt"))) {
        loadTextDatabase(path);
        return true;
    }
    if (path.isEmpty())
        return false;

    const QString file = makeWorkingFileName();
    if (QFile::copy(path, file))
        QFile::setPermissions(file, QFile::permissions(file) | QFile::WriteOwner | QFile::WriteUser);
    projectPath = path;
    if (!openConnection(QDir::toNativeSeparators(file)))
        return false;
    const QList<quint8> lines = getLines();
    if (lines.isEmpty())
        return false;
    executePragmas(false);
    const int version = storedDatabaseVersion();

    migrateSchema();
    if (!toolCheckPasses()) {
        emit wrongTool();
        lastErrorText = tr("File was not created with this tool.");
        return false;
    }
    inferLineTypes();
    activateDefaultUDSServices();
    if (version < 100)
        repairSPNDirections();
    if (projectPath.endsWith(QLatin1String("kedp")))
        makeEdsPathsAbsolute();
    addMissingDescriptionDefaults();
    cacheStrings();
    if (version < 105)
        recomputeBitPositions();
    updateMappingCounts();
    cutPerLineLists();

    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("VACUUM")))
        qDebug() << "VACUUM" << query.lastError().text();
    notify(ChangeSet{ProjectReplaced});
    verifyFileHash();
    return true;
}

void ObjectDataBase::migrationExec(QSqlQuery &query, const QString &statement)
{
    if (execQuery(query, statement))
        return;
    const QString error = query.lastError().text();
    if (!error.contains(QLatin1String("duplicate column name"), Qt::CaseInsensitive))
        qDebug() << "migration statement failed:" << statement << error;
}

void ObjectDataBase::migrateSchema()
{
    QSqlQuery query(database);
    bool miscSettingsCreated = true;
    for (const char *name : {"GeneralSettings", "DescriptionSettings", "VirtualNodes", "SignalGroups", "Signals",
                             "Groups", "EnergyBusSettings", "J1939Settings", "MiscSettings"}) {
        if (!execQuery(query, ProjectSchema::createStatement(*ProjectSchema::globalTable(name), true))) {
            qDebug() << "in open" << query.lastError().text();
            miscSettingsCreated = QLatin1String(name) != QLatin1String("MiscSettings");
        }
    }

    auto addColumns = [&](const QString &table, const auto &columns, bool logged) {
        for (const char *column : columns) {
            const QString statement = QStringLiteral("alter table %1 add %2").arg(table, QLatin1String(column));
            if (logged)
                migrationExec(query, statement);
            else
                execQuery(query, statement);
        }
    };
    addColumns(QStringLiteral("SubObjects0"), subObjectColumnsOfLine0, false);
    addColumns(QStringLiteral("Nodes"), nodeColumns, false);
    addColumns(QStringLiteral("Signals"), signalColumns, false);

    const int version = storedDatabaseVersion();
    const auto lines = getLines();
    for (const quint8 line : lines) {
        const QString number = QString::number(line);
        addColumns(QStringLiteral("Objects") + number, objectColumns, true);
        addColumns(QStringLiteral("SubObjects") + number, subObjectColumns, true);
        addColumns(QStringLiteral("SPNs") + number, spnColumns, true);
        if (version < 101)
            addUniqueColumnsToSubDatabase(line);
        if (version < 105)
            migrationExec(query, QStringLiteral("alter table DataElements%1 add bitpos integer").arg(line));
        if (version < 107)
            execQuery(query, QStringLiteral("alter table UDSSettings%1 add authentication text").arg(line));
        addColumns(QStringLiteral("PGNs") + number, pgnColumns, true);
        if (version < 106)
            addColumns(QStringLiteral("PGNs") + number, pgnColumnsOfVersion106, true);
    }
    migrationExec(query, QStringLiteral("alter table Connections add priority integer"));

    if (!miscSettingsCreated)
        return;
    for (const char *name : {"Connections", "LockedMappings", "LockedPDOs"})
        execQuery(query, ProjectSchema::createStatement(*ProjectSchema::globalTable(name), true));
    // Older files lack some per-line tables; every line gets the full set.
    for (const quint8 line : lines) {
        for (const auto &table : ProjectSchema::lineTables()) {
            if (!execQuery(query, ProjectSchema::createLineStatement(table, line)))
                qDebug() << QStringLiteral("create table %1%2").arg(QLatin1String(table.name)).arg(line)
                         << query.lastError().text();
        }
    }
}

bool ObjectDataBase::addUniqueColumnsToSubDatabase(quint8 line)
{
    QSqlQuery query(database);
    const QString table = QStringLiteral("SubObjects%1").arg(line);
    const QString old = table + QStringLiteral("_old");
    execQuery(query, QStringLiteral("DROP TABLE %1").arg(old));

    QStringList oldColumns;
    if (execQuery(query, QStringLiteral("SELECT name FROM PRAGMA_TABLE_INFO('%1')").arg(table))) {
        while (query.next())
            oldColumns << query.value(0).toString();
    }
    const QString columns = oldColumns.join(QStringLiteral(", "));
    // Columns are named, since the migrations appended them in another order than a new table has them;
    // duplicate rows of a table without the constraint collapse into the last one.
    const QStringList steps{
        QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(table, old),
        ProjectSchema::createLineStatement(*ProjectSchema::lineTable("SubObjects"), line, false),
        QStringLiteral("INSERT OR REPLACE INTO %1 (%3) SELECT %3 FROM %2").arg(table, old, columns),
        QStringLiteral("DROP TABLE %1").arg(old),
    };
    for (const auto &statement : steps) {
        if (!execQuery(query, statement)) {
            qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
            return false;
        }
    }
    return true;
}

bool ObjectDataBase::toolCheckPasses()
{
    const QString application = QCoreApplication::applicationName();
    const QString savedBy = getMiscSetting(QStringLiteral("SaveToolType"));
    if (savedBy.isEmpty() || savedBy == application || application == QLatin1String("CAN Kestrel"))
        return true;
    QList<int> refused;
    if (application == QLatin1String("CANopen Kestrel"))
        refused = {2, 4, 5};
    else if (application == QLatin1String("J1939 Kestrel"))
        refused = {1, 4, 5};
    const auto lines = getLines();
    for (const quint8 line : lines) {
        if (refused.contains(getGeneralSetting(QStringLiteral("line%1type").arg(line)).toInt()))
            return false;
    }
    return true;
}

void ObjectDataBase::inferLineTypes()
{
    const QString createdBy = getMiscSetting(QStringLiteral("CreateToolName"));
    const auto lines = getLines();
    for (const quint8 line : lines) {
        const QString key = QStringLiteral("line%1type").arg(line);
        if (!getGeneralSetting(key).isEmpty())
            continue;
        QString type;
        if (createdBy == QLatin1String("CANopen Kestrel"))
            type = QStringLiteral("1");
        else if (createdBy == QLatin1String("J1939 Kestrel"))
            type = QStringLiteral("2");
        else
            type = getIndices(line, 0x1000).size() > getPGNs(line).size() ? QStringLiteral("1")
                                                                          : QStringLiteral("2");
        setGeneralSetting(key, type);
    }
}

void ObjectDataBase::activateDefaultUDSServices()
{
    QSqlQuery query(database);
    const auto lines = getLines();
    for (const quint8 line : lines) {
        createUDSSettingsTable(line, query);
        if (countActiveUDSServices(line) > 0)
            continue;
        for (const auto &[sid, sessions] : legacyUdsServices) {
            setUDSServiceActive(line, sid, true);
            setUDSServiceSessions(line, sid, QLatin1String(sessions));
        }
    }
}

void ObjectDataBase::repairSPNDirections()
{
    const auto lines = getLines();
    for (const quint8 line : lines) {
        if (getGeneralSetting(QStringLiteral("line%1type").arg(line)) != QLatin1String("2"))
            continue;
        const auto transmit = getPGNs(line, Direction::Transmit);
        const auto receive = getPGNs(line, Direction::Receive);
        database.transaction();
        QSqlQuery query(database);
        query.prepare(QStringLiteral("update SPNs%1 SET direction = :direction where pgnnumber = :pgnnumber").arg(line));
        auto repair = [&](const QList<quint32> &numbers, const QList<quint32> &other, quint8 direction) {
            for (const quint32 number : numbers) {
                if (other.contains(number))
                    continue;
                query.bindValue(QStringLiteral(":direction"), direction);
                query.bindValue(QStringLiteral(":pgnnumber"), number);
                if (!execQuery(query, QString()))
                    qDebug() << Q_FUNC_INFO << query.lastError().text();
            }
        };
        repair(transmit, receive, Direction::Transmit);
        repair(receive, transmit, Direction::Receive);
        database.commit();
    }
}

void ObjectDataBase::makeEdsPathsAbsolute()
{
    QDir::setCurrent(QFileInfo(projectPath).absolutePath());
    const auto lines = getLines();
    for (const quint8 line : lines) {
        NODE_DATA_T node;
        if (!getNode(line, node) || node.edspath.isEmpty() || QFileInfo(node.edspath).isAbsolute())
            continue;
        node.edspath = QFileInfo(node.edspath).absoluteFilePath();
        addNode(line, node);
    }
}

void ObjectDataBase::addMissingDescriptionDefaults()
{
    const auto lines = getLines();
    for (const quint8 line : lines)
        writeDescriptionDefaults(line);
}

void ObjectDataBase::recomputeBitPositions()
{
    QSqlQuery query(database);
    auto sizeOf = [](quint16 datatype, quint16 bitsize) -> quint32 {
        return datatype == 10 || datatype == 120 || datatype == 121 ? bitsize
                                                                    : COHelper::getDataLengthBits(datatype);
    };
    const auto lines = getLines();
    for (const quint8 line : lines) {
        if (line >= 32)
            continue;
        for (const quint8 direction : {Direction::Transmit, Direction::Receive}) {
            const auto canIds = getCANIDs(line, direction);
            for (const quint32 id : canIds) {
                QList<DataElement> elements;
                for (const quint32 number : getDataElements(line, id, direction)) {
                    DataElement element;
                    if (getDataElement(line, id, direction, number, element))
                        elements << element;
                }
                if (elements.size() < 2 || elements.at(0).bitpos != 0 || elements.at(1).bitpos != 0)
                    continue;
                quint32 position = 0;
                for (const auto &element : std::as_const(elements)) {
                    execQuery(query, QStringLiteral("update DataElements%1 set bitpos = %2 where canid = %3 and "
                                                    "number = %4 and direction = %5")
                                         .arg(line)
                                         .arg(position)
                                         .arg(id)
                                         .arg(element.number)
                                         .arg(direction));
                    position += sizeOf(element.datatype, element.bitsize);
                }
            }
            const auto pgns = getPGNs(line, direction);
            for (const quint32 pgn : pgns) {
                quint32 position = 0;
                for (const quint32 number : getSPNs(line, pgn, direction)) {
                    SPN spn;
                    if (!getSPN(line, pgn, direction, number, spn))
                        continue;
                    execQuery(query, QStringLiteral("update SPNs%1 set bitposition = %2 where pgnnumber = %3 and "
                                                    "spnnumber = %4 and direction = %5")
                                         .arg(line)
                                         .arg(position)
                                         .arg(pgn)
                                         .arg(number)
                                         .arg(direction));
                    position += sizeOf(spn.datatype, spn.bitsize);
                }
            }
        }
    }
}

void ObjectDataBase::updateMappingCounts()
{
    QSqlQuery query(database);
    const auto lines = getLines();
    for (const quint8 line : lines) {
        execQuery(query, QStringLiteral("update PGNs%1 set mappingcount = (select count(*) from SPNs%1 where "
                                        "SPNs%1.pgnnumber = PGNs%1.number and SPNs%1.direction = PGNs%1.direction)")
                             .arg(line));
    }
}

void ObjectDataBase::cutPerLineLists()
{
    int highest = -1;
    const auto lines = getLines();
    for (const quint8 line : lines) {
        if (line < ClipboardLine)
            highest = qMax(highest, int(line));
    }
    if (highest < 0)
        return;
    for (const auto &key : SettingsKeys::lineExtendedGeneralKeys()) {
        const QString value = getGeneralSetting(key);
        if (value.isEmpty())
            continue;
        const QStringList elements = value.split(',');
        if (elements.size() > highest + 1)
            setGeneralSetting(key, elements.mid(0, highest + 1).join(','));
    }
}

bool ObjectDataBase::saveDatabase(const QString &path)
{
    const QString target = path.isEmpty() ? projectPath : path;
    if (target.endsWith(QLatin1String("ktxt")))
        return saveDatabaseAsText(target);
    return saveDatabaseAsSql(target);
}

void ObjectDataBase::stampSave()
{
    setMiscSetting(QStringLiteral("SaveToolType"), QCoreApplication::applicationName());
    setMiscSetting(QStringLiteral("SaveToolVersion"), QCoreApplication::applicationVersion());
    setMiscSetting(QStringLiteral("DatabaseVersion"), QString::number(SchemaVersion));
    setMiscSetting(QStringLiteral("FileHash"), computeFileHash());
}

bool ObjectDataBase::saveDatabaseAsSql(const QString &path)
{
    removeNode(ClipboardLine);
    removeNode(ScratchLine);
    cleanUnusedStrings();
    const QString target = path.isEmpty() ? projectPath : path;
    if (QFileInfo(target).completeSuffix().toLower() == QLatin1String("data")) {
        QSqlQuery query(database);
        execQuery(query, QStringLiteral("update SubObjects0 set changedbyuser=0 where changedbyuser = 1"));
        execQuery(query, QStringLiteral("update SubObjects0 set wizardsource=454 where changedbyuser = 0"));
    }
    stampSave();

    // The new content is written beside the target first, so that a failed write leaves the project intact.
    QFile source(database.databaseName());
    QSaveFile output(target);
    output.setDirectWriteFallback(false);
    const QFileInfo targetInfo(target);
    bool written = (!targetInfo.exists() || FilePermissions::isWritable(target)) &&
                   FilePermissions::isWritable(targetInfo.absolutePath()) && source.open(QIODevice::ReadOnly) &&
                   output.open(QIODevice::WriteOnly);
    if (written) {
        const QByteArray content = source.readAll();
        written = output.write(content) == content.size();
    }
    if (written) {
        const QString backup = target + QStringLiteral(".bak");
        QFile::remove(backup);
        QFile::rename(target, backup);
        written = output.commit();
    } else {
        output.cancelWriting();
    }
    if (!written) {
        qDebug() << "ERROR copy " << source.fileName() << "to " << target;
        return false;
    }
    projectPath = target;
    return true;
}

bool ObjectDataBase::saveDatabaseAsText(const QString &path)
{
    removeNode(ClipboardLine);
    removeNode(ScratchLine);
    stampSave();
    projectPath = path;
    DatabaseTextConverter converter;
    converter.setConnection(database);
    converter.openForWriting(path);
    converter.convertSqlToText();
    return true;
}

bool ObjectDataBase::loadTextDatabase(const QString &path)
{
    projectPath = path;
    createNewDataBase();
    DatabaseTextConverter converter;
    converter.setStore(this);
    converter.setConnection(database);
    converter.openForReading(path);
    const bool read = converter.convertTextToSql();
    if (read) {
        verifyFileHash();
        notify(ChangeSet{ProjectReplaced});
    }
    return read;
}

void ObjectDataBase::closeDatabase()
{
    QElapsedTimer timer;
    timer.start();
    while (statementsInFlight.loadAcquire() > 0 && timer.elapsed() < 5000)
        QThread::yieldCurrentThread();
    preparedQueries.clear();
    if (database.isOpen())
        database.close();
}

QString ObjectDataBase::computeFileHash()
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QSqlQuery names(database);
    if (!execQuery(names, QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name")))
        return QString();
    QStringList tables;
    while (names.next())
        tables << names.value(0).toString();

    QSqlQuery rows(database);
    rows.setForwardOnly(true);
    for (const auto &table : std::as_const(tables)) {
        hash.addData(table.toUtf8());
        hash.addData(QByteArrayView("\n"));
        const QString statement =
            table == QLatin1String("MiscSettings")
                ? QStringLiteral("SELECT * FROM \"%1\" WHERE item NOT IN ('FileHash','TamperLog') ORDER BY rowid")
                : QStringLiteral("SELECT * FROM \"%1\" ORDER BY rowid");
        if (!execQuery(rows, statement.arg(table)))
            continue;
        const int columns = rows.record().count();
        while (rows.next()) {
            for (int column = 0; column < columns; ++column) {
                hash.addData(rows.value(column).toString().toUtf8());
                hash.addData(QByteArrayView("|"));
            }
            hash.addData(QByteArrayView("\n"));
        }
    }
    return QString::fromLatin1(hash.result().toHex());
}

void ObjectDataBase::verifyFileHash()
{
    externallyModified = false;
    const QString stored = getMiscSetting(QStringLiteral("FileHash"));
    if (stored.isEmpty() || computeFileHash() == stored)
        return;
    externallyModified = true;
    const QString now = QDateTime::currentDateTime().toString(Qt::ISODate);
    const QString log = getMiscSetting(QStringLiteral("TamperLog"));
    setMiscSetting(QStringLiteral("TamperLog"), log.isEmpty() ? now : log + ';' + now);
}
