#include "pdocompletion.h"

#include "importers/basedataimporter.h"
#include "store/objectdatabase.h"

#include <QList>

namespace {

struct EntryTemplate
{
    quint8 subIndex;
    const char *name;
    quint16 dataType;
    const char *access;
    const char *defaultValue;
};

enum class Kind
{
    Receive,
    Transmit,
    Mapping
};

const EntryTemplate receiveEntries[] = {
    {0, "Number of Entries", 5, "ro", "2"},
    {1, "COB-ID", 7, "rw", "0x80000000"},
    {2, "Transmission Type", 5, "rw", "0xFF"},
};

// Sub-index 4 of a transmit parameter is reserved and stays away.
const EntryTemplate transmitEntries[] = {
    {0, "Number of Entries", 5, "ro", "5"},    {1, "COB-ID", 7, "rw", "0x80000000"},
    {2, "Transmission Type", 5, "rw", "0xFF"}, {3, "Inhibit Time", 6, "rw", "0"},
    {5, "Event Timer", 6, "rw", "0"},
};

constexpr int mappingEntries = 8;

struct Pass
{
    quint16 countFrom;
    quint16 countTo;
    bool receive;
    // Kind of the object at the walked index; a communication parameter brings its mapping 0x200 higher.
    Kind kind;
};

const Pass passes[] = {
    {0x1400, 0x15FF, true, Kind::Receive},
    {0x1800, 0x19FF, false, Kind::Transmit},
    {0x1600, 0x17FF, true, Kind::Mapping},
    {0x1A00, 0x1BFF, false, Kind::Mapping},
};

SUBINDEX_DATA_T entry(const EntryTemplate &shape)
{
    SUBINDEX_DATA_T data = BaseDataImporter::newSubIndexRecord();
    data.name = QLatin1String(shape.name);
    data.datatype = shape.dataType;
    data.accesstype = QLatin1String(shape.access);
    data.defaultvalue = QLatin1String(shape.defaultValue);
    data.writedefaulttoeds = false;
    return data;
}

QList<SubEntry> entries(quint8 line, quint16 index, Kind kind)
{
    QList<SubEntry> list;
    auto add = [&](quint8 subIndex, const SUBINDEX_DATA_T &data) {
        list.append(SubEntry{line, index, subIndex, data});
    };
    switch (kind) {
    case Kind::Receive:
        for (const auto &shape : receiveEntries)
            add(shape.subIndex, entry(shape));
        break;
    case Kind::Transmit:
        for (const auto &shape : transmitEntries)
            add(shape.subIndex, entry(shape));
        break;
    case Kind::Mapping: {
        SUBINDEX_DATA_T count = entry({0, "Number of Entries", 5, "rw", "8"});
        count.currentvalue = QStringLiteral("8");
        count.lowlimit = QStringLiteral("0");
        count.uplimit = QStringLiteral("8");
        count.limitineds = true;
        add(0, count);
        for (int subIndex = 1; subIndex <= mappingEntries; ++subIndex) {
            SUBINDEX_DATA_T mapped = entry({quint8(subIndex), "", 7, "rw", "0x00000000"});
            mapped.name = QStringLiteral("Mappping Entry %1").arg(subIndex);
            add(quint8(subIndex), mapped);
        }
        break;
    }
    }
    return list;
}

QString objectName(quint16 index, Kind kind)
{
    switch (kind) {
    case Kind::Receive:
        return QStringLiteral("Receive PDO parameter %1").arg(index - 0x13FF);
    case Kind::Transmit:
        return QStringLiteral("Transmit PDO parameter %1").arg(index - 0x17FF);
    case Kind::Mapping:
        break;
    }
    return QStringLiteral("Mapping Parameter");
}

} // namespace

void PdoCompletion::complete(ObjectDataBase &store, quint8 line, quint32 receiveCount, quint32 transmitCount,
                             quint32 lowIndex, quint32 highIndex)
{
    auto create = [&](quint16 index, Kind kind) {
        if (index < lowIndex || index > highIndex || store.indexExists(line, index))
            return;
        INDEX_DATA_T object;
        object.name = objectName(index, kind);
        object.objecttype = 9;
        store.addIndex(line, index, object);
        store.addSubIndices(entries(line, index, kind));
    };
    for (const Pass &pass : passes) {
        const quint32 declared =
            qMin(pass.receive ? receiveCount : transmitCount, quint32(pass.countTo - pass.countFrom + 1));
        if (quint32(store.getIndices(line, pass.countFrom, pass.countTo).size()) >= declared)
            continue;
        for (quint32 index = pass.countFrom; index < pass.countFrom + declared; ++index) {
            create(quint16(index), pass.kind);
            if (pass.kind != Kind::Mapping)
                create(quint16(index + 0x200), Kind::Mapping);
        }
    }
}
