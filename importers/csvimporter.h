#pragma once

#include "importers/basedataimporter.h"
#include "importers/csvobjectref.h"

#include <QChar>
#include <QList>
#include <QStringList>

// Reads a table of objects separated by commas or semicolons: the ICSV files of the ICSV generator, the
// older CSV files and tables written by hand. The head line names the columns, so they may stand in any
// order. Lines starting with "d" or "c" are commands that delete or copy objects in the target
// project after the import; the caller takes them through getCopyList and getDeleteList.
class CsvImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    // The cells of one object row, read.
    struct RowValues
    {
        quint16 index = 0;
        quint8 subIndex = 0;
        quint8 line = 0;
        QString typeText;
        quint16 dataType = 0;
        QString access;
        QString varName;
        QString name;
        QString value;
        QString description;
        QString objectCode;
        QString implementation;
        quint32 size = 0;
        PDOMapping mapping;
        bool hasDefault = true;
        // 0 no, 1 as the default value says, 2 always.
        quint8 defaultInEds = 1;
        bool nvStorage = false;
        QString lowLimit;
        QString upLimit;
        bool hasLimit = false;
    };

    explicit CsvImporter(QObject *parent = nullptr);

    // Fill the list and tell whether it has entries. The copy list holds pairs: target, then source.
    bool getCopyList(QList<CsvObjectRef> &list) const;
    bool getDeleteList(QList<CsvObjectRef> &list) const;

public slots:
    void doImport() override;

private:
    void readHead(const QString &text);
    QStringList split(const QString &text) const;
    void readDeleteCommand(const QStringList &fields);
    void readCopyCommand(const QStringList &fields);
    void readObjectRow(const QStringList &fields);
    // Sub-index 0 creates the object when it is new; an entry creates a counter when the object has none.
    void addFirstEntry(const RowValues &values);
    void addEntry(const RowValues &values);

    QChar separator = ',';
    QStringList columns;
    QList<CsvObjectRef> copyList;
    QList<CsvObjectRef> deleteList;
    quint16 arrayType = 0;
};
