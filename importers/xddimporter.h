#pragma once

#include "importers/basedataimporter.h"

class QXmlStreamReader;

// Reads a CiA 1311 XDD file (CANopen FD) into a line: the product name and every object of the
// object list, whatever the index range says.
class XDDImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    explicit XDDImporter(QObject *parent = nullptr);

public slots:
    void doImport() override;

private:
    void readFile();
    // The index of the object, or 0 when the element names none.
    quint16 addObject(const QXmlStreamReader &xml);
    void addEntry(const QXmlStreamReader &xml, quint16 index);
};
