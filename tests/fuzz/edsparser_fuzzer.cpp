// Feeds arbitrary bytes to the EDS reader: it must neither crash nor hang, and what it reports must
// keep the limits of the object dictionary.
#include "busmodel/edsparser.h"

#include <QByteArray>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, unsigned long size)
{
    EdsParser parser;
    QObject::connect(&parser, &EdsParser::newIndex, [](const CANopen::CANopenIndex &index) {
        if (index.compactSubObj > 254)
            std::abort();
    });
    QObject::connect(&parser, &EdsParser::newSubIndex, [](const CANopenSubindex &entry) {
        if (entry.hasLimits != (!entry.lowLimit.isEmpty() || !entry.highLimit.isEmpty()))
            std::abort();
    });
    parser.loadEdsData(QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size)));
    for (const auto &section : parser.document().sections()) {
        bool ok = false;
        const uint index = section.name.left(4).toUInt(&ok, 16);
        if (ok) {
            parser.getCompactSubObjNames(ushort(index));
            parser.getObjectLinks(quint16(index));
        }
        for (const auto &entry : section.entries)
            EdsParser::evaluateValue(entry.value, 1);
    }
    if (parser.warnings().size() > 101)
        std::abort();
    return 0;
}
