#include "commandlineimport.h"

#include "importers/basedataimporter.h"
#include "importers/importerfactory.h"

#include <QFileInfo>
#include <QStringList>

bool CommandLineImport::run(ObjectDataBase &store, const QString &path)
{
    static const QStringList batchSuffixes{QStringLiteral("csv"), QStringLiteral("icsv"),
                                           QStringLiteral("eds"), QStringLiteral("dcf")};
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (!batchSuffixes.contains(suffix))
        return false;
    const auto importer = ImporterFactory::create(suffix);
    importer->setLine(0);
    importer->setDatabase(&store);
    importer->setIndexRange(0x1000, 0xBFFF);
    if (!importer->setFileName(path))
        return false;
    importer->start();
    importer->wait();
    return true;
}
