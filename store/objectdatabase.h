#pragma once

#include "store/objectrecords.h"
#include "store/protocolrecords.h"

#include <QAtomicInt>
#include <QHash>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QPair>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

#include <functional>
#include <memory>


// The project store: the only code that speaks SQL. One instance works on a private working copy of
// one project file. The implementation is split by concern: the gate and string interning
// (objectdatabase.cpp), the lifecycle of the working file (_lifecycle), objects and sub-indices
// (_objects, _copies), protocols (_protocols), settings (_settings) and lines (_lines).
class ObjectDataBase : public QObject
{
    Q_OBJECT

public:
    enum ChangeKind : quint32 {
        IndexChanged = 1,
        SubIndexChanged = 2,
        IndexRemoved = 3,
        SubIndexRemoved = 4,
        NodeAdded = 6,
        NodeRemoved = 7,
        GeneralSettingChanged = 9,
        DescriptionSettingChanged = 10,
        EnergyBusSettingChanged = 11,
        MiscSettingChanged = 12,
        J1939SettingChanged = 13,
        ProjectReplaced = 14,
        PGNAdded = 15,
        PGNRemoved = 16,
        CANIDAdded = 17,
        CANIDRemoved = 18,
        SPNAdded = 19,
        SignalRemoved = 20,
        DataElementAdded = 21,
    };
    Q_ENUM(ChangeKind)

    struct ChangeSet
    {
        ChangeKind kind = ProjectReplaced;
        quint16 index = 0;
        quint8 subindex = 0;
        quint8 line = 0;
        quint32 pgn = 0;
        quint32 spn = 0;
        quint32 canId = 0;
        quint32 element = 0;
        quint8 direction = 0;

        bool operator==(const ChangeSet &) const = default;
    };

    using IndexSubIndex = QPair<quint16, quint8>;

    static constexpr quint8 ClipboardLine = 254;
    static constexpr quint8 ScratchLine = 255;
    static constexpr quint16 ClipboardIndex = 0xF000;
    static constexpr int SchemaVersion = 107;

    explicit ObjectDataBase(QObject *parent = nullptr);
    ~ObjectDataBase() override;

    // Lifecycle of the working file.
    bool createNewDataBase();
    bool openDataBase(const QString &path);
    bool saveDatabase(const QString &path = QString());
    bool loadTextDatabase(const QString &path);
    void closeDatabase();
    QString computeFileHash();
    void verifyFileHash();
    bool isExternallyModified() const { return externallyModified; }
    QString lastError() const { return lastErrorText; }
    QString getProjectPath() const { return projectPath; }
    void setProjectPath(const QString &path) { projectPath = path; }
    QString workingFile() const;

    // The statement gate and free SQL.
    bool execQuery(QSqlQuery &query, const QString &statement);
    bool executeSql(const QString &statement);
    QStringList getSqlResults() const { return sqlResults; }
    void setBlockUpdates(bool block);
    bool isBlocked() const { return updatesBlocked; }
    void setWriteBlock(bool block);
    void setWriteNotification(bool notify) { notifyWrites = notify; }

    // Column-by-name writers of the text project form; the index and sub-index are the text of its groups.
    void setNodeSqlValue(quint8 line, const QString &column, const QString &value);
    void setObjectIndexSqlValue(const QString &table, const QString &index, const QString &column,
                                const QVariant &value);
    void setSubindexSqlValue(const QString &table, const QString &index, const QString &subindex,
                             const QString &column, const QVariant &value);

    // Interned texts.
    qint32 getStringId(const QString &text);
    QString getString(qint32 id);
    void cacheStrings();
    void cleanUnusedStrings();

    // Objects.
    bool addIndex(quint8 line, quint16 index, const INDEX_DATA_T &data);
    bool removeIndex(quint8 line, quint16 index, bool keepConnections = false);
    bool getIndex(quint8 line, quint16 index, INDEX_DATA_T &data);
    bool indexExists(quint8 line, quint16 index);
    QList<quint16> getIndices(quint8 line, quint16 from = 0, quint16 to = 0xFFFF);
    QString getIndexName(quint8 line, quint16 index);
    bool setIndexName(quint8 line, quint16 index, const QString &name);
    QList<quint16> findIndices(quint8 line, const QString &column, const QString &value);
    quint16 firstFreeIndex(quint8 line, quint16 from);

    // Sub-indices.
    bool addSubIndex(quint8 line, quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data);
    bool addSubIndices(const QList<SubEntry> &entries);
    bool removeSubIndex(quint8 line, quint16 index, quint8 subindex, bool keepConnections = false);
    bool getSubIndex(quint8 line, quint16 index, quint8 subindex, SUBINDEX_DATA_T &data);
    bool subIndexExists(quint8 line, quint16 index, quint8 subindex);
    QList<quint8> getSubIndices(quint8 line, quint16 index, quint8 from = 0);
    quint8 firstFreeSubIndex(quint8 line, quint16 index, quint8 from = 0);
    QString getSubIndexName(quint8 line, quint16 index, quint8 subindex, bool preferDenotation = false);
    bool setSubIndexName(quint8 line, quint16 index, quint8 subindex, const QString &name);
    QString getSubIndexDefaultValue(quint8 line, quint16 index, quint8 subindex);
    bool setSubIndexDefaultValue(quint8 line, quint16 index, quint8 subindex, const QString &value);
    quint16 getSubIndexDataType(quint8 line, quint16 index, quint8 subindex);
    QList<IndexSubIndex> findSubIndices(quint8 line, const QString &column, const QString &value);
    bool isMappedInPdo(quint8 line, quint16 index, quint8 subindex);
    QList<IndexSubIndex> getMappableSubIndices(quint8 line, quint16 from = 0);
    bool removeConsumerConnection(quint8 line, quint16 index, quint8 subindex);

    // Copies inside and between stores, and the clipboard line.
    bool copyIndex(quint8 fromLine, quint16 fromIndex, quint8 toLine, quint16 toIndex);
    bool copyIndexFrom(ObjectDataBase &other, quint8 fromLine, quint16 fromIndex, quint8 toLine, quint16 toIndex,
                       bool withSubIndices = true);
    bool mergeIndexFrom(ObjectDataBase &other, quint8 fromLine, quint16 fromIndex, quint8 toLine, quint16 toIndex);
    bool applyWizardObjects(ObjectDataBase &other, quint8 line);
    bool copySubIndex(quint8 line, quint16 index, quint8 fromSub, quint8 toSub);
    bool copySubIndexFrom(ObjectDataBase &other, quint8 fromLine, quint16 fromIndex, quint8 fromSub, quint8 toLine,
                          quint16 toIndex, quint8 toSub);
    bool copyToClipboard(quint8 line, quint16 index);
    bool pasteFromClipboard(quint8 line, quint16 index);
    bool getClipboardIndex(INDEX_DATA_T &data);

    // Accelerators of bulk readers.
    void cacheAllSubs(quint8 line, quint16 index = 0);
    void cacheSubObjectNames(quint8 line, quint16 index = 0);
    void cacheAllSPNs(quint8 line);
    void clearSubCache();
    void clearSPNCache();
    void clearNameCache();

    // Parameter groups and SPNs.
    bool addPGN(quint8 line, quint32 number, const PGN &pgn);
    bool removePGN(quint8 line, quint32 number, quint8 direction);
    bool getPGN(quint8 line, quint32 number, quint8 direction, PGN &pgn);
    QString getPGNName(quint8 line, quint32 number, quint8 direction);
    bool pgnExists(quint8 line, quint32 number, quint8 direction);
    QList<quint32> getPGNs(quint8 line, quint8 direction = Direction::Both, bool withoutSafe = false);
    bool addSPN(quint8 line, quint32 pgn, quint8 direction, quint32 spn, const SPN &data);
    bool removeSPN(quint8 line, quint32 pgn, quint32 spn, quint8 direction);
    bool getSPN(quint8 line, quint32 pgn, quint8 direction, quint32 spn, SPN &data);
    QList<quint32> getSPNs(quint8 line, quint32 pgn, quint8 direction);
    QString getSPNName(quint8 line, quint32 pgn, quint8 direction, quint32 spn);
    quint16 getSPNDataType(quint8 line, quint32 pgn, quint8 direction, quint32 spn);
    bool spnExists(quint8 line, quint32 pgn, quint32 spn, quint8 direction);

    // Raw CAN identifiers and their data elements.
    bool addCANID(quint8 line, quint32 id, const CANID &canId);
    bool removeCANID(quint8 line, quint32 id, quint8 direction);
    bool getCANID(quint8 line, quint32 id, quint8 direction, CANID &canId);
    QString getCANIDName(quint8 line, quint32 id, quint8 direction);
    bool canIdExists(quint8 line, quint32 id, quint8 direction);
    QList<quint32> getCANIDs(quint8 line, quint8 direction = Direction::Both);
    bool addDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number, const DataElement &data);
    bool removeDataElement(quint8 line, quint32 canid, quint32 number, quint8 direction);
    bool getDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number, DataElement &data);
    QList<quint32> getDataElements(quint8 line, quint32 canid, quint8 direction);
    QString getDataElementName(quint8 line, quint32 canid, quint8 direction, quint32 number);

    // The UDS service table of a line.
    bool createUDSSettingsTable(quint8 line, QSqlQuery &query);
    bool setUDSServiceActive(quint8 line, quint8 sid, bool active);
    bool setUDSServiceSessions(quint8 line, quint8 sid, const QString &sessions);
    bool setUDSServiceUserLevels(quint8 line, quint8 sid, const QString &levels);
    bool setUDSAuthentication(quint8 line, quint8 sid, const QString &authentication);
    bool getUDSServiceActive(quint8 line, quint8 sid);
    QString getUDSServiceSessions(quint8 line, quint8 sid);
    QString getUDSServiceUserLevels(quint8 line, quint8 sid);
    QString getUDSAuthentication(quint8 line, quint8 sid);
    int countActiveUDSServices(quint8 line);

    // Settings tables.
    QString getGeneralSetting(const QString &key);
    bool setGeneralSetting(const QString &key, const QString &value);
    bool generalSettingExists(const QString &key);
    QStringList getGeneralSettingKeys();
    QString getLineGeneralSetting(const QString &key, quint8 line);
    bool setLineGeneralSetting(const QString &key, const QString &value, quint8 line);
    QString getJ1939Setting(const QString &key);
    bool setJ1939Setting(const QString &key, const QString &value);
    QStringList getJ1939SettingKeys();
    QString getLineJ1939Setting(const QString &key, quint8 line);
    bool setLineJ1939Setting(const QString &key, const QString &value, quint8 line);
    QString getDescriptionSetting(const QString &key);
    bool setDescriptionSetting(const QString &key, const QString &value);
    QStringList getDescriptionSettingKeys();
    void setDescriptionLine(quint8 line) { descriptionLine = line; }
    quint8 getDescriptionLine() const { return descriptionLine; }
    QString getEnergyBusSetting(const QString &key);
    bool setEnergyBusSetting(const QString &key, const QString &value);
    bool removeEnergyBusSetting(const QString &key);
    QStringList getEnergyBusKeys();
    QString getMiscSetting(const QString &key);
    bool setMiscSetting(const QString &key, const QString &value);
    QStringList getMiscSettingKeys();
    bool copySettingsFrom(ObjectDataBase &other);

    // Lines.
    QList<quint8> getLines();
    bool lineExists(quint8 line);
    bool addNode(quint8 line, const NODE_DATA_T &data);
    bool getNode(quint8 line, NODE_DATA_T &data);
    bool removeNode(quint8 line);
    bool copyLine(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint16 indexFrom, quint16 indexTo);
    bool copyPGNs(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint32 numberFrom, quint32 numberTo,
                  quint8 direction);
    bool importPGN(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint32 number, quint8 direction);
    bool importCANID(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint32 id, quint8 direction);

    // Corrections of parameter groups of older projects, each in one transaction over all lines.
    void updatePGNMappingCounts();
    void mergeDataPageIntoPGNs();
    void markSafePGNs();

    // Whole-line readers (objectdatabase_dictionary.cpp): every object of a line by index, and every
    // sub-index of a line keyed by index shifted left 8 plus sub-index, in ascending key order. The
    // sub-indices of a line that is not in the sub-index cache are read with one query.
    QMap<quint16, INDEX_DATA_T> getLineObjects(quint8 line);
    QMap<quint32, SUBINDEX_DATA_T> getLineSubIndices(quint8 line);

signals:
    void updateNotify(ObjectDataBase::ChangeSet modification);
    void wrongTool();
    void blockStateChanged(bool blockupdates);
    void databaseWriteExecuted();

private:
    // Lifecycle.
    QString makeWorkingFileName();
    bool openConnection(const QString &file);
    void executePragmas(bool newDatabase);
    bool createGlobalTables();
    void migrateSchema();
    void migrationExec(QSqlQuery &query, const QString &statement);
    bool addUniqueColumnsToSubDatabase(quint8 line);
    bool toolCheckPasses();
    void inferLineTypes();
    void activateDefaultUDSServices();
    void repairSPNDirections();
    void makeEdsPathsAbsolute();
    void addMissingDescriptionDefaults();
    void recomputeBitPositions();
    void updateMappingCounts();
    void cutPerLineLists();
    bool saveDatabaseAsSql(const QString &path);
    bool saveDatabaseAsText(const QString &path);
    void stampSave();
    int storedDatabaseVersion();

    // Helpers of the object operations.
    bool writeMetadata(quint8 line, quint16 index, int subindex, const MetadataMap &metadata);
    MetadataMap readMetadata(const QVariant &value) const;
    QString sqlTextValue(const QString &column, const QVariant &value, const QStringList &stringColumns);
    bool insertSubIndexRow(quint8 line, quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data);
    SUBINDEX_DATA_T subIndexFromQuery(const QSqlQuery &query, int firstColumn = 0);
    void deleteConnections(quint8 line, quint16 index, int subindex);
    void notify(const ChangeSet &change);
    QList<quint32> numberList(const QString &statement);
    // Rows of a table picked by a condition: whether one exists, the first one's columns, an update of the
    // existing row or an insert; writeRows stops at the first statement that fails.
    bool rowExists(const QString &table, const QString &condition);
    bool readRow(QSqlQuery &query, const char *columns, const QString &table, const QString &condition);
    bool upsertRow(const QString &table, const char *columns, const QStringList &values,
                   const QString &condition);
    bool writeRows(const QStringList &statements);
    // Runs a statement with positional '?' values through a prepared query that is kept per thread,
    // hands each result row to the reader and releases the statement; false when it fails.
    bool readPrepared(const QString &statement, const QVariantList &values,
                      const std::function<void(const QSqlQuery &row)> &reader);
    // Runs the work for every PGN of every line, receive before transmit, in one transaction.
    void forEachPGN(const std::function<void(quint8 line, quint8 direction, quint32 number)> &work);

    // Helpers of the settings tables.
    QString readSetting(const QString &table, const QString &key);
    bool writeSetting(const QString &table, const QString &key, const QString &value, ChangeKind kind);
    QStringList settingKeys(const QString &table);
    QString descriptionKey(const QString &key) const;
    void writeDescriptionDefaults(quint8 line);
    void removeLineFromLists(const QString &table, quint8 line);
    void removeDescriptionRows(quint8 line);
    SPN spnFromQuery(const QSqlQuery &query);
    DataElement dataElementFromQuery(const QSqlQuery &query);
    PGN pgnFromQuery(const QSqlQuery &query);
    CANID canIdFromQuery(const QSqlQuery &query);
    QVariant readUDSColumn(quint8 line, quint8 sid, const char *column);
    bool writeUDSRow(quint8 line, quint8 sid, bool active, const QString &sessions, const QString &levels,
                     const QString &authentication);

    QString lastErrorText;
    QSqlDatabase database;
    QString connectionName;
    QString projectPath;
    QStringList tempFiles;
    bool externallyModified = false;

    QList<Qt::HANDLE> allowedThreads;
    bool updatesBlocked = false;
    volatile bool writeBlock = false;
    bool notifyWrites = true;
    QAtomicInt statementsInFlight;
    quint8 descriptionLine = 0;
    QStringList sqlResults;

    QHash<quint8, QHash<quint32, SUBINDEX_DATA_T>> subCache;
    QHash<quint32, QString> nameCache;
    struct SpnCache
    {
        QHash<quint8, QMap<quint32, QList<quint32>>> spnsByPgn;
        QHash<quint8, QHash<QPair<quint32, quint32>, SPN>> records;
        quint8 line = 0;
        bool valid = false;
    } spnCache;
    QHash<QPair<Qt::HANDLE, QString>, QSqlQuery> preparedQueries;
    QHash<qint32, QString> stringsById;
    QHash<QString, qint32> idsByString;
    QMutex metadataMutex;
};

Q_DECLARE_METATYPE(ObjectDataBase::ChangeSet)
