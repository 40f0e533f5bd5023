#pragma once

#include "importers/basedataimporter.h"

#include <QStringList>

// Reads a CODB file, the text database of a CiA profile: one line an object, one line a sub-index.
class CODBImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    explicit CODBImporter(QObject *parent = nullptr);

    // Lines "$tttt=ssss" copy an object only when this is set.
    void setObjectCopies(bool copies) { objectCopies = copies; }

public slots:
    void doImport() override;

private:
    void readLine(const QString &text);
    void copyObject(const QString &text);
    void readObject(const QStringList &fields);
    void readSubIndex(const QStringList &fields);

    bool objectCopies = false;
};
