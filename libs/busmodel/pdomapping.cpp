#include "pdomapping.h"

#include <utility>

namespace {

// One text per value, in the order of the enumeration.
const char *const xddTexts[] = {"no", "tr", "tr", "r", "t"};
const char *const csvTexts[] = {"no", "yes", "default", "rpdo", "tpdo"};

const std::pair<const char *, PDOMappingType> csvSpellings[] = {
    {"no", Forbidden},    {"n", Forbidden}, {"0", Forbidden},     {"forbidden", Forbidden}, {"yes", Allowed},
    {"y", Allowed},       {"1", Allowed},   {"allowed", Allowed}, {"optional", Allowed},    {"tr", Allowed},
    {"default", Default}, {"rpdo", RPDO},   {"r", RPDO},          {"tpdo", TPDO},           {"t", TPDO},
};

} // namespace

QString PDOMapping::getXDDStringValue() const
{
    return QString::fromLatin1(xddTexts[mapping]);
}

QString PDOMapping::getCSVStringValue() const
{
    return QString::fromLatin1(csvTexts[mapping]);
}

PDOMapping PDOMapping::fromCSVString(const QString &text)
{
    const QString spelling = text.trimmed().toLower();
    for (const auto &[name, value] : csvSpellings) {
        if (spelling == QLatin1String(name))
            return PDOMapping(value);
    }
    return PDOMapping();
}
