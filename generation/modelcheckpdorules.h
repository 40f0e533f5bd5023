#pragma once

#include <QHash>
#include <QString>

struct ModelCheckCANopenContext;

// The rules of the PDOs and SRDOs of a CANopen line: mapping tables, communication parameters, timers,
// the use of bitwise and dynamic mapping, and the COB-IDs of the pre-defined connection set; with the
// correction that disables an empty dynamic transmit PDO.
class ModelCheckPdoRules
{
public:
    explicit ModelCheckPdoRules(ModelCheckCANopenContext &context);

    // Receive mapping objects, then transmit mapping objects.
    void checkMapping();
    // Receive communication objects, then transmit ones; COB-IDs are compared across both.
    void checkCommunication();
    void checkTimers();
    void checkSrdo();
    // What the mapping tables of the line use against what the line's settings allow.
    void checkMappingUse();
    void checkPredefinedConnectionSet();

    // The COB-ID expression with bit 31 set: "$nodeid+0x180" gives "$nodeid+0x80000180".
    static QString disabledCobId(const QString &expression);

private:
    void checkMappingObject(quint16 index);
    // Adds the entry's length to pdoBits when the entry is active.
    void checkMappingEntry(quint16 index, quint8 entry, quint64 entryCount, quint32 &pdoBits);
    void disableEmptyTransmitPdo(quint16 mappingIndex);
    void checkCommunicationObject(quint16 index);
    void checkSrdoMappingObject(quint16 index);

    ModelCheckCANopenContext &context;
    bool bitwiseMappingUsed = false;
    bool dynamicMappingUsed = false;
    // The COB-IDs of enabled PDOs, as node-relative flag and identifier, with the object that holds each.
    QHash<QString, quint16> cobIds;
};
