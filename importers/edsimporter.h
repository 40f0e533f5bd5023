#pragma once

#include "importers/basedataimporter.h"
#include "store/objectrecords.h"

#include <QList>

#include <memory>

class EdsParser;
struct CANopenSubindex;
namespace CANopen {
struct CANopenIndex;
}

// Reads an EDS or DCF file into a line: the objects the parser reports, compact arrays expanded, the
// descriptive sections into the description settings, the PDO objects the file declares but lacks, and
// the ";;" comment lines as descriptions.
class EDSImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    explicit EDSImporter(QObject *parent = nullptr);
    ~EDSImporter() override;

    // A DCF's ParameterValue becomes the default value.
    void setDcf(bool dcf) { isDcf = dcf; }
    // Reads only the descriptive sections, on the calling thread; no object is touched.
    bool importDescriptionSections();

public slots:
    void doImport() override;

private slots:
    void newIndex(const CANopen::CANopenIndex &index);
    void newSubIndex(const CANopenSubindex &subIndex);

private:
    void readObjects();
    void expandCompactArray(const CANopen::CANopenIndex &index);

    std::unique_ptr<EdsParser> parser;
    bool isDcf = false;
    QList<SubEntry> pending;
};
