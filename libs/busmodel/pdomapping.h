#pragma once

#include <QString>

enum PDOMappingType : quint8 {
    Forbidden = 0,
    Allowed = 1,
    Default = 2,
    RPDO = 3,
    TPDO = 4,
};

// Whether and how a sub-index may be mapped into a PDO.
class PDOMapping
{
public:
    PDOMapping() = default;
    explicit PDOMapping(unsigned int value) { setValue(value); }

    // Values outside the enumeration count as not mappable.
    void setValue(unsigned int value) { mapping = value <= TPDO ? PDOMappingType(value) : Forbidden; }
    PDOMappingType value() const { return mapping; }
    unsigned int toUInt() const { return mapping; }
    bool isMappable() const { return mapping != Forbidden; }

    // The PDOMapping key of an EDS: 0 or 1.
    unsigned int toBinary() const { return isMappable() ? 1 : 0; }
    // The accessPDO attribute of an XDD: "no", "t", "r" or "tr". Default mapping has no text of its own
    // there and reads back as Allowed.
    QString getXDDStringValue() const;
    // The mapable cell of a CSV table: "no", "yes", "default", "rpdo" or "tpdo".
    QString getCSVStringValue() const;
    // Reads the texts of getCSVStringValue in any case, and the usual short forms ("y", "n", "1", "0",
    // "t", "r", "tr"); anything else is not mappable.
    static PDOMapping fromCSVString(const QString &text);

    bool operator==(const PDOMapping &other) const = default;

private:
    PDOMappingType mapping = Forbidden;
};
