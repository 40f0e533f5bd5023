#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

class ObjectDataBase;

// The reading of an EDS by tests/importers/eds_reference.py, a reader built on Python's own INI parser,
// and its comparison with what an import left in a store.
namespace EdsReference {

// The device descriptions of other people's tools in the shared test data, as full paths.
QStringList testFiles();

// The objects of the file keyed by the index in decimal; empty, with the reason in error, on failure.
QJsonObject read(const QString &file, QString &error);
// Where the objects of the line differ from the reading: object name and type, the sub-indices, and of
// each its name, data type, access, default value, mappability and limits. Besides the objects of the
// file the line may hold the PDO objects that the import completes. Empty when everything agrees.
QStringList differences(ObjectDataBase &store, quint8 line, const QJsonObject &reading);

} // namespace EdsReference
