#pragma once

#include "generation/abstractgenerator.h"
#include "store/objectrecords.h"

#include <QList>
#include <QStringList>

class QTextStream;

// Writes the electronic data sheet (CiA 306) of one CANopen line. One file per variant: the plain one,
// one for each value of the meta data key eds_define, and on a CANopen FD line a classical file beside
// the FD file, in which 0x1000 is a VAR and 0x1030 and 0x1032 are missing.
class EDSGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    explicit EDSGenerator(const QString &edsDefine = QString(), bool fdEds = false, bool classicalEds = false,
                          QObject *parent = nullptr);

    // Asks for the plain file name, whatever variant this generator writes.
    bool isOutputWritable() override;
    QString outputFile() const override;
    QString generatorName() const override;

    // The variants of a line: the empty name, then each value of eds_define on its objects and
    // sub-indices, in the order of the objects.
    static QStringList edsVariants(ObjectDataBase &store, quint8 line);
    // Whether a default value belongs into a device description: writedefaulttoeds 2 always, 1 when
    // defaultineds is set, 0 never; and only when there is a value.
    static bool writesDefault(const SUBINDEX_DATA_T &sub);

protected:
    void writeContent(QTextStream &out) override;

private:
    void writeFileInfo(QTextStream &out);
    void writeComments(QTextStream &out);
    void writeDeviceInfo(QTextStream &out);
    void writeDummyUsage(QTextStream &out);
    void writeObjectLists(QTextStream &out);
    void writeObject(QTextStream &out, quint16 index);
    void writeEntries(QTextStream &out, quint16 index, const INDEX_DATA_T &object);
    void writeAttributes(QTextStream &out, const SUBINDEX_DATA_T &sub);
    static void writeList(QTextStream &out, const char *section, const QList<quint16> &indices);
    static void writeComment(QTextStream &out, const QString &description);

    QList<quint16> variantIndices(quint16 from, quint16 to);
    QList<quint16> withoutFdObjects(QList<quint16> indices) const;
    bool inVariant(const MetadataMap &metadata) const;
    bool groupMessaging();
    QString setting(const QString &key);

    QString edsDefine;
    bool fdEds;
    bool classicalEds;
};
