#pragma once

#include "store/objectrecords.h"

#include <QList>
#include <QMetaType>
#include <QSettings>
#include <QString>
#include <QStringList>

#include <functional>

class ProjectBuilder;

// Projects and runs that the tests of the model check share.
namespace ModelCheckFixture {

// What a row of a table does to the clean project before the check.
using Setup = std::function<void(ProjectBuilder &)>;

// The setups in the order given.
Setup steps(const QList<Setup> &list);
// One GeneralSettings value.
Setup general(const QString &key, const QString &value);

// A message as the check writes it.
QString error(const QString &text);
QString warning(const QString &text);

struct CheckResult
{
    QStringList messages;
    int errors = 0;
    bool corrected = false;
};

// Organisation, edition, version 4.3.2 and the settings scope of the application.
void setApplication(const QString &edition = QStringLiteral("CAN Kestrel"));
QSettings userSettings();

// A folder with a feature information file that asks for the given tool version; the caller removes it.
QString stackFolder(const QString &requiredVersion = QStringLiteral("4.3"));

// The settings every CANopen line needs, and lines of the given types with the objects every CANopen device
// has; nothing in it gives a message. The stack folder fits the tool.
void cleanProject(ProjectBuilder &project, const QString &stackPath, const QList<int> &lineTypes = {1});
// A J1939 line whose NAME is complete, with the parameter group 65280 "Status" received and one SPN.
void cleanJ1939(ProjectBuilder &project, quint8 line = 0);
// A raw CAN line with the CAN-ID 0x100 received and one signal "sigA" of 8 bits in variable "a".
void cleanRawCan(ProjectBuilder &project, quint8 line = 0);

// A sub-index whose default value goes into the device description unless writeDefault is false.
SUBINDEX_DATA_T entry(const QString &name, quint16 type, const QString &access, const QString &value,
                      bool writeDefault = true);
// An object of the type whose entries take the sub-indices from 0 upward.
void object(ProjectBuilder &project, quint16 index, const QString &name, quint32 objectType,
            const QList<SUBINDEX_DATA_T> &entries, quint8 line = 0);
// RECORD 0x2000 with two mappable entries: 1 UNSIGNED8 and 2 UNSIGNED32.
void mappableObject(ProjectBuilder &project, quint8 line = 0);
// A PDO: its communication object with the COB-ID, and the mapping object 0x200 above it with the entries,
// all of the given access; the count in sub-index 0 is the number of entries unless given.
void pdo(ProjectBuilder &project, quint16 communication, const QString &cobId, const QString &mappingAccess,
         const QStringList &entries, const QString &count = QString(), quint8 line = 0);

CheckResult checkCommon(ProjectBuilder &project, const QString &projectDirectory = QString());
// The messages of the line alone; the project-wide rules run before, as in a generation run.
CheckResult checkCANopen(ProjectBuilder &project, quint8 line = 0,
                         const QString &projectDirectory = QString());
// The lines one after the other with one checker, as in a generation run.
CheckResult checkCANopenLines(ProjectBuilder &project, const QList<quint8> &lines);
CheckResult checkJ1939(ProjectBuilder &project, quint8 line = 0);
CheckResult checkRawCan(ProjectBuilder &project, quint8 line = 0);

} // namespace ModelCheckFixture

Q_DECLARE_METATYPE(ModelCheckFixture::Setup)
