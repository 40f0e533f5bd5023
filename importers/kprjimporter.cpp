#include "kprjimporter.h"

#include "store/objectdatabase.h"

KprjImporter::KprjImporter(QObject *parent)
    : BaseDataImporter(parent)
{}

void KprjImporter::doImport()
{
    beginImport();
    if (database) {
        // A file that doesn't open leaves the source empty, and nothing is taken.
        ObjectDataBase source;
        source.openDataBase(fileName);
        const auto from = quint8(sourceLine);
        const auto low = quint16(qMin<quint32>(lowIndex, 0xFFFF));
        const auto high = quint16(qMin<quint32>(highIndex, 0xFFFF));
        database->copyLine(source, from, ObjectDataBase::ScratchLine, low, high);
        database->copyPGNs(source, from, ObjectDataBase::ScratchLine, lowIndex, highIndex, direction);
    }
    endImport();
}
