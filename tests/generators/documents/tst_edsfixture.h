#pragma once

#include "store/objectrecords.h"

#include <QList>
#include <QString>
#include <QStringList>

class AbstractGenerator;
class ObjectDataBase;
class ProjectBuilder;

// Projects and helpers that the tests of the CANopen device description writers share.
namespace EdsFixture {

// A sub-index with a default value that goes into the device description unless writeDefault is false.
SUBINDEX_DATA_T entry(const QString &name, quint16 type, const QString &access, const QString &value,
                      bool writeDefault = true);
// A CANopen line with its description settings and the objects 0x1000, 0x1001 and 0x1018 of every device;
// the vendor-ID is 0x000007F3.
void device(ProjectBuilder &project, quint8 line = 0);
// A RECORD whose entries take the sub-indices from 0 upward.
void record(ProjectBuilder &project, quint16 index, const QString &name,
            const QList<SUBINDEX_DATA_T> &entries);
// Runs the generator for project "board" into the folder and returns what it wrote. The file is kept for
// readers that are not ours: an EDS by Python's INI parser (tst_eds_cia306.py checks it as a
// CiA 306 file), an XDD by an XML parser, a CSV table by Python's csv module (18 cells in each row).
QString run(AbstractGenerator &generator, ObjectDataBase &store, const QString &folder, quint8 line = 0);
// What those readers found wrong in the files that run() wrote since the last call, each named after the
// test that wrote it; cleanupTestCase compares it with an empty list.
QStringList takeFileProblems();
// An expected file of tests/generators/documents/golden/cia.
QString golden(const QString &name);
// A file of the test sources.
QString sourceFile(const QString &relativePath);

} // namespace EdsFixture
