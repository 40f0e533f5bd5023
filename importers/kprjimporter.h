#pragma once

#include "importers/basedataimporter.h"
#include "store/protocolrecords.h"

// Takes the objects and parameter groups of one line of another project into the scratch line.
class KprjImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    explicit KprjImporter(QObject *parent = nullptr);

    // Direction of the parameter groups taken in the importer's number range.
    void setDirection(quint8 pgnDirection) { direction = pgnDirection; }

public slots:
    void doImport() override;

private:
    quint8 direction = Direction::Transmit;
};
