#pragma once

#include "generation/abstractgenerator.h"

struct INDEX_DATA_T;
struct SUBINDEX_DATA_T;

// Writes the object dictionary of a CANopen line as a comma-separated table, one row per sub-index.
// The table is the older one; ICSVGenerator writes the one that the CSV importer reads back.
class CSVGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    explicit CSVGenerator(QObject *parent = nullptr);

    // Asks for the file name without the line number.
    bool isOutputWritable() override;
    QString outputFile() const override;
    QString generatorName() const override;

protected:
    void writeContent(QTextStream &out) override;
    // "csv" or "icsv".
    virtual QString suffix() const;
    virtual void writeHead(QTextStream &out);
    virtual void writeObject(QTextStream &out, quint16 index, const INDEX_DATA_T &object);

    // The value cell: the default value as a decimal number where the data type reads it as one, the
    // text as it stands otherwise.
    static QString valueText(quint16 dataType, const QString &value);
    static QString implementationText(quint8 implementation);
    static QString yesNo(bool value);
    static QString indexText(quint16 index);
    static QString subIndexText(quint8 subIndex);

private:
    static QString quoted(const QString &text);

    bool beforeManufacturerObjects = true;
    bool beforeProfileObjects = true;
};
