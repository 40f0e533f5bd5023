#include "projectbuilder.h"

ProjectBuilder::ProjectBuilder()
    : database(std::make_unique<ObjectDataBase>())
{
    database->createNewDataBase();
}

ProjectBuilder::~ProjectBuilder() = default;

ProjectBuilder &ProjectBuilder::line(quint8 line, int type)
{
    if (!database->lineExists(line))
        database->addNode(line, NODE_DATA_T());
    database->setGeneralSetting(QStringLiteral("line%1type").arg(line), QString::number(type));
    return *this;
}

ProjectBuilder &ProjectBuilder::general(const QString &key, const QString &value)
{
    database->setGeneralSetting(key, value);
    return *this;
}

ProjectBuilder &ProjectBuilder::j1939(const QString &key, const QString &value)
{
    database->setJ1939Setting(key, value);
    return *this;
}

ProjectBuilder &ProjectBuilder::misc(const QString &key, const QString &value)
{
    database->setMiscSetting(key, value);
    return *this;
}

ProjectBuilder &ProjectBuilder::description(quint8 line, const QString &key, const QString &value)
{
    const quint8 previous = database->getDescriptionLine();
    database->setDescriptionLine(line);
    database->setDescriptionSetting(key, value);
    database->setDescriptionLine(previous);
    return *this;
}

ProjectBuilder &ProjectBuilder::object(quint8 line, quint16 index, const QString &name, quint32 objectType,
                                       quint16 dataType)
{
    INDEX_DATA_T data;
    data.name = name;
    data.objecttype = objectType;
    data.datatype = dataType;
    return object(line, index, data);
}

ProjectBuilder &ProjectBuilder::object(quint8 line, quint16 index, const INDEX_DATA_T &data)
{
    database->addIndex(line, index, data);
    return *this;
}

ProjectBuilder &ProjectBuilder::sub(quint8 line, quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &data)
{
    database->addSubIndex(line, index, subIndex, data);
    return *this;
}

ProjectBuilder &ProjectBuilder::sub(quint8 line, quint16 index, quint8 subIndex, const QString &name,
                                    quint16 dataType, const QString &access, const QString &defaultValue)
{
    return sub(line, index, subIndex, subRecord(name, dataType, access, defaultValue));
}

ProjectBuilder &ProjectBuilder::var(quint8 line, quint16 index, const QString &name, quint16 dataType,
                                    const QString &access, const QString &defaultValue)
{
    object(line, index, name, 7, dataType);
    return sub(line, index, 0, name, dataType, access, defaultValue);
}

ProjectBuilder &ProjectBuilder::pgn(quint8 line, const PGN &data)
{
    database->addPGN(line, data.number, data);
    return *this;
}

ProjectBuilder &ProjectBuilder::pgn(quint8 line, quint32 number, quint8 direction, const QString &name,
                                    quint8 priority, quint16 cycleTime)
{
    PGN data;
    data.number = number;
    data.direction = direction;
    data.name = name;
    data.priority = priority;
    data.cycletime_ms = cycleTime;
    return pgn(line, data);
}

ProjectBuilder &ProjectBuilder::spn(quint8 line, const SPN &data)
{
    database->addSPN(line, data.pgnnumber, data.direction, data.spnnumber, data);
    return *this;
}

ProjectBuilder &ProjectBuilder::spn(quint8 line, quint32 pgn, quint8 direction, quint32 number, const QString &name,
                                    quint16 dataType, quint8 pos, quint16 bitPosition, quint8 implementation,
                                    const QString &varName)
{
    SPN data;
    data.pgnnumber = pgn;
    data.direction = direction;
    data.spnnumber = number;
    data.name = name;
    data.datatype = dataType;
    data.pos = pos;
    data.bitposition = bitPosition;
    data.implementation = implementation;
    data.varname = varName;
    return spn(line, data);
}

ProjectBuilder &ProjectBuilder::canId(quint8 line, quint32 id, quint8 direction, const QString &name,
                                      quint16 cycleTime)
{
    CANID data;
    data.id = id;
    data.direction = direction;
    data.name = name;
    data.cycletime_ms = cycleTime;
    database->addCANID(line, id, data);
    return *this;
}

ProjectBuilder &ProjectBuilder::dataElement(quint8 line, const DataElement &data)
{
    database->addDataElement(line, data.canid, data.direction, data.number, data);
    return *this;
}

SUBINDEX_DATA_T ProjectBuilder::subRecord(const QString &name, quint16 dataType, const QString &access,
                                          const QString &defaultValue)
{
    SUBINDEX_DATA_T data;
    data.name = name;
    data.datatype = dataType;
    data.accesstype = access;
    data.defaultvalue = defaultValue;
    data.defaultineds = true;
    data.allowedaccesstypes = QStringLiteral("const,ro,rw,wo,rww,rwr");
    return data;
}

bool ProjectBuilder::save(const QString &path)
{
    return database->saveDatabase(path);
}
