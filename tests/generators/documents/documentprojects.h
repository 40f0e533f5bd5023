#pragma once

#include "store/protocolrecords.h"

#include <QString>

class ProjectBuilder;

// The small projects that the document tests generate from.
namespace DocumentProjects {

SPN spn(quint32 pgn, quint8 direction, quint32 number, const QString &name, quint16 dataType, quint8 pos,
        quint8 implementation = 0, const QString &varName = QString());
PGN pgn(quint32 number, quint8 direction, const QString &name, const QString &desc = QString(),
        quint16 cycleTime = 0, quint8 priority = 6);
DataElement element(quint32 canId, quint8 direction, quint32 number, const QString &name, quint16 dataType,
                    quint16 bitPos, quint16 bitSize = 0, const QString &desc = QString());

// J1939 line 0 for the DBC file: a received PDU 1 group with a gap, a sent PDU 2 group with a string, the
// address claim settings and DM1; `separator` goes into one signal name.
void j1939Dbc(ProjectBuilder &project, const QString &separator = QStringLiteral("*"));
// J1939 line 0 for the documents: a sent group with a description and two SPNs, a received one.
void j1939Documents(ProjectBuilder &project);
// Raw CAN line 0: a sent standard message with four signals, a flagged extended one without signals, and
// a received one whose identifier `receivedId` is stored as it stands.
void rawCan(ProjectBuilder &project, quint32 receivedId = 0x18FF0001);
// CANopen line 0: description settings, a VAR, a RECORD with a description, an ARRAY with limits and
// implementation details.
void canopen(ProjectBuilder &project);

} // namespace DocumentProjects
