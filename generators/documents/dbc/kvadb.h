#pragma once

#include <string>

// The flat interface through which a program builds, reads and writes a DBC database. Every function
// checks its handle against the handles that it gave out and answers with a status code.

struct CANdbDatabaseSet;
struct CANdbMessage;
struct CANdbSignal;
struct CANdbAttributeDefinition;
struct CANdbAttribute;

using KvaDbHnd = CANdbDatabaseSet *;
using KvaDbMessageHnd = CANdbMessage *;
using KvaDbSignalHnd = CANdbSignal *;
using KvaDbAttributeDefHnd = CANdbAttributeDefinition *;
using KvaDbAttributeHnd = CANdbAttribute *;

enum KvaDbStatus : int
{
    KvaDbOk = 0,
    KvaDbFail = -1,
    KvaDbNoDatabase = -2,
    KvaDbBadArgument = -3,
    KvaDbNoHandle = -6,
    KvaDbFileError = -7,
    KvaDbNoOwner = -10,
    KvaDbNameInUse = -11,
    KvaDbWrongOwner = -12,
    KvaDbParseError = -15,
};

// The meaning of a status code, for logs.
const char *kvaDbStatusText(int status);
// The error text of the last read that failed, up to 511 characters; empty after a successful one.
std::string kvaDbLastParseError();

int kvaDbOpen(KvaDbHnd *set);
// Without a file a new empty database named `name`; with one, the database read from it.
int kvaDbCreate(KvaDbHnd set, const char *name, const char *file);
int kvaDbClose(KvaDbHnd set);
int kvaDbWriteFile(KvaDbHnd set, const char *path);

int kvaDbAddMsg(KvaDbHnd set, KvaDbMessageHnd *message);
int kvaDbSetMsgName(KvaDbMessageHnd message, const char *name);
// Bit 31 of `id` marks an extended identifier; `flags` are not used.
int kvaDbSetMsgId(KvaDbMessageHnd message, unsigned int id, unsigned int flags);
int kvaDbSetMsgDlc(KvaDbMessageHnd message, int dlc);
int kvaDbSetMsgComment(KvaDbMessageHnd message, const char *comment);

int kvaDbAddSignal(KvaDbMessageHnd message, KvaDbSignalHnd *signal);
int kvaDbSetSignalName(KvaDbSignalHnd signal, const char *name);
int kvaDbSetSignalComment(KvaDbSignalHnd signal, const char *comment);
int kvaDbSetSignalValueSize(KvaDbSignalHnd signal, int startBit, int length);
// 1 signed, 2 unsigned, 3 float, 4 double.
int kvaDbSetSignalValueType(KvaDbSignalHnd signal, int type);

int kvaDbAddAttributeDefinition(KvaDbHnd set, KvaDbAttributeDefHnd *definition);
int kvaDbSetAttributeDefinitionName(KvaDbAttributeDefHnd definition, const char *name);
// 1 network, 2 message, 3 node, 4 signal, 5 environment variable.
int kvaDbSetAttributeDefinitionOwner(KvaDbAttributeDefHnd definition, int owner);
// 1 INT, 2 HEX, 3 FLOAT, 4 ENUM, 5 STRING.
int kvaDbSetAttributeDefinitionType(KvaDbAttributeDefHnd definition, int type);
int kvaDbSetAttributeDefinitionInt(KvaDbAttributeDefHnd definition, int defaultValue, int min, int max);
int kvaDbSetAttributeDefinitionString(KvaDbAttributeDefHnd definition, const char *defaultValue);
// Gives the ENUM value `index` its name; missing values below it are named "reserved".
int kvaDbAddAttributeDefinitionEnum(KvaDbAttributeDefHnd definition, const char *name, int index);
// The default value of an ENUM definition.
int kvaDbSetAttributeValueEnumeration(KvaDbAttributeDefHnd definition, int index);

int kvaDbAddNetworkAttribute(KvaDbHnd set, KvaDbAttributeDefHnd definition, KvaDbAttributeHnd *attribute);
int kvaDbAddMsgAttribute(KvaDbMessageHnd message, KvaDbAttributeDefHnd definition,
                         KvaDbAttributeHnd *attribute);
int kvaDbAddSignalAttribute(KvaDbSignalHnd signal, KvaDbAttributeDefHnd definition,
                            KvaDbAttributeHnd *attribute);
int kvaDbSetAttributeValueInt(KvaDbAttributeHnd attribute, int value);
// The text ends at its zero byte; `length` is not used.
int kvaDbSetAttributeValueString(KvaDbAttributeHnd attribute, const char *text, int length);
