#include "edsdescriptionreader.h"

#include "busmodel/inidocument.h"
#include "store/objectdatabase.h"

namespace {

struct SectionKeys
{
    const char *section;
    std::initializer_list<const char *> keys;
};

const SectionKeys descriptionKeys[] = {
    {"FileInfo", {"FileVersion", "FileRevision", "CreatedBy", "ModifiedBy"}},
    {"DummyUsage",
     {"Dummy0001", "Dummy0002", "Dummy0003", "Dummy0004", "Dummy0005", "Dummy0006", "Dummy0007"}},
    {"DeviceInfo",
     {"VendorName", "ProductName", "OrderCode", "LSS_Supported", "BaudRate_10", "BaudRate_20", "BaudRate_50",
      "BaudRate_125", "BaudRate_250", "BaudRate_500", "BaudRate_800", "BaudRate_1000", "NrOfRXPDO",
      "NrOfTXPDO"}},
};

} // namespace

void EdsDescriptionReader::apply(const IniDocument &document, ObjectDataBase &store)
{
    for (const auto &[section, keys] : descriptionKeys) {
        for (const char *key : keys)
            store.setDescriptionSetting(QLatin1String(key),
                                        document.value(QLatin1String(section), QLatin1String(key)));
    }
    const IniDocument::Section *comments = document.section(QStringLiteral("Comments"));
    // A count beyond the keys of the section could only name missing lines.
    const int lines = comments ? qMin(document.value(comments->name, QStringLiteral("Lines")).toInt(),
                                      int(comments->entries.size()))
                               : 0;
    QString comment;
    for (int number = 1; number <= lines; ++number)
        comment += document.value(comments->name, QStringLiteral("Line%1").arg(number)) + '\n';
    store.setDescriptionSetting(QStringLiteral("Comment"), comment);
}
