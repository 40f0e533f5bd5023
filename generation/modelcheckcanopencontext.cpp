#include "modelcheckcanopencontext.h"

#include "store/objectdatabase.h"

ModelCheckCANopenContext::ModelCheckCANopenContext(ObjectDataBase *store, quint8 lineInWork,
                                                   ModelCheckOutput &sink, bool &correctedFlag)
    : database(store)
    , line(lineInWork)
    , output(sink)
    , corrected(correctedFlag)
{}

SUBINDEX_DATA_T ModelCheckCANopenContext::subIndex(quint16 index, quint8 subIndex) const
{
    SUBINDEX_DATA_T data;
    if (database->getSubIndex(line, index, subIndex, data))
        return data;
    SUBINDEX_DATA_T missing;
    missing.accesstype = QStringLiteral("ro");
    missing.datatype = 5;
    missing.defaultineds = true;
    missing.writedefaulttoeds = true;
    missing.pdomapping = PDOMapping(Allowed);
    return missing;
}

QString ModelCheckCANopenContext::text(quint16 index, quint8 subIndex) const
{
    SUBINDEX_DATA_T data;
    if (database->getSubIndex(line, index, subIndex, data))
        return data.defaultvalue;
    return QString();
}

quint64 ModelCheckCANopenContext::value(quint16 index, quint8 subIndex) const
{
    return number(text(index, subIndex));
}

bool ModelCheckCANopenContext::exists(quint16 index) const
{
    return database->indexExists(line, index);
}

bool ModelCheckCANopenContext::exists(quint16 index, quint8 subIndex) const
{
    return database->subIndexExists(line, index, subIndex);
}

QList<quint8> ModelCheckCANopenContext::subIndices(quint16 index, quint8 from) const
{
    return database->getSubIndices(line, index, from);
}

QList<quint16> ModelCheckCANopenContext::indices(quint16 from, quint16 to) const
{
    return database->getIndices(line, from, to);
}

void ModelCheckCANopenContext::correctDefaultValue(quint16 index, quint8 subIndex, const QString &value)
{
    SUBINDEX_DATA_T data;
    if (!database->getSubIndex(line, index, subIndex, data))
        return;
    data.defaultvalue = value;
    database->addSubIndex(line, index, subIndex, data);
}

void ModelCheckCANopenContext::correctSubIndex(quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &data)
{
    database->addSubIndex(line, index, subIndex, data);
}

quint64 ModelCheckCANopenContext::number(const QString &text)
{
    bool ok = false;
    const quint64 unsignedValue = text.toULongLong(&ok, 0);
    if (ok)
        return unsignedValue;
    const qint64 signedValue = text.toLongLong(&ok, 0);
    return ok ? quint64(signedValue) : 0;
}

bool ModelCheckCANopenContext::defaultGoesToEds(const SUBINDEX_DATA_T &data)
{
    // The store gives the three-valued column as a flag, so "always" (2) reads as "as the default flag
    // says" (1) here, as it does for the EDS writer.
    return data.writedefaulttoeds && data.defaultineds;
}
