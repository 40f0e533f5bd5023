#pragma once

#include "busmodel/canopenindex.h"
#include "busmodel/canopensubindex.h"
#include "busmodel/inidocument.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

#include <optional>

// Reader of CiA 306 device descriptions (EDS and DCF). It reports each object through newIndex and then
// each of its entries through newSubIndex, in ascending order of index and sub-index; a VAR comes as an
// object and its entry at sub-index 0. Names of sections and keys are read without regard to case,
// numbers in decimal, hexadecimal (0x) and octal (leading 0). Compact arrays come as one object with
// their element count; their names are asked for through getCompactSubObjNames. What cannot be used is
// skipped and told in warnings(); a file is never refused as a whole for a bad part.
class EdsParser : public QObject
{
    Q_OBJECT

public:
    explicit EdsParser(QObject *parent = nullptr);

    // False when the file cannot be read or holds no object.
    bool LoadEds(const QString &fileName);
    // The same for the bytes of a file.
    bool loadEdsData(const QByteArray &data);

    // The element names of the [<index>Name] section of a compact array, keyed by the sub-index in decimal.
    QMap<QString, QString> getCompactSubObjNames(ushort index) const;
    // The objects of the [<index>ObjectLinks] section.
    QList<quint16> getObjectLinks(quint16 index) const;
    // The sections of the last file, for the parts of a description that are no objects.
    const IniDocument &document() const { return ini; }
    QStringList warnings() const { return ini.warnings(); }

    // The value of an integer entry: a number, or a sum or difference with $NODEID such as
    // "$NODEID+0x180"; nullopt for any other text.
    static std::optional<qint64> evaluateValue(const QString &text, quint8 nodeId);

signals:
    void newIndex(const CANopen::CANopenIndex &index);
    void newSubIndex(const CANopenSubindex &subIndex);

private:
    struct ObjectSections
    {
        const IniDocument::Section *object = nullptr;
        QMap<quint8, const IniDocument::Section *> entries;
    };

    bool parseDocument();
    QMap<quint16, ObjectSections> collectSections();
    void checkObjectLists(const QMap<quint16, ObjectSections> &objects);
    void reportObject(quint16 index, const ObjectSections &sections);
    void reportComposite(CANopen::CANopenIndex object, const ObjectSections &sections);
    std::optional<CANopenSubindex> readEntry(const IniDocument::Section &section, quint16 index,
                                             quint8 subIndex, quint32 objectCode);
    quint64 readNumber(const IniDocument::Section &section, const QString &key, quint64 fallback);
    QString readAccessType(const IniDocument::Section &section);
    // Tells when a value of a numeric type is no number; the text is kept all the same.
    void checkValue(const IniDocument::Section &section, const IniDocument::Entry *entry, quint16 dataType);

    IniDocument ini;
};
