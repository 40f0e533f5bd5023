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

    bool operator==(const PDOMapping &other) const = default;

private:
    PDOMappingType mapping = Forbidden;
};
