#pragma once

#include "generators/documents/csvgenerator.h"

// Writes the importable table of a CANopen line: a row per object that has sub-indices, a row per
// sub-index, and a line with one blank behind each object. Descriptions go into one cell, their line
// breaks replaced by Helper::csvDescLinebreak, unless the documentation columns are switched off.
class ICSVGenerator : public CSVGenerator
{
    Q_OBJECT

public:
    explicit ICSVGenerator(QObject *parent = nullptr);

    void setDocumentation(bool enabled) { documentation = enabled; }
    QString generatorName() const override;

protected:
    QString suffix() const override;
    void writeHead(QTextStream &out) override;
    void writeObject(QTextStream &out, quint16 index, const INDEX_DATA_T &object) override;

private:
    static QString descriptionCell(const QString &description);

    bool documentation = true;
};
