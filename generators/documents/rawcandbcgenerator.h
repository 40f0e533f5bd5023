#pragma once

#include "generation/abstractgenerator.h"
#include "store/protocolrecords.h"

#include <QList>

// The DBC file of a raw CAN line, written as text: messages, the two send attributes, comments and values.
class RawCANDBCGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    QString outputFile() const override { return filePath(QStringLiteral("%1/%2.dbc")); }
    QString generatorName() const override { return projectName + QStringLiteral(".dbc"); }

protected:
    void writeContent(QTextStream &out) override;

private:
    struct Message
    {
        CANID canId;
        QList<DataElement> elements;
    };

    QList<Message> readMessages(quint8 direction);
    void writeMessages(QTextStream &out, const QList<Message> &messages);
    static void writeComments(QTextStream &out, const QList<Message> &messages);
    static void writeAttributeValues(QTextStream &out, const QList<Message> &messages);
};
