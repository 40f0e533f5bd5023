#include "importerfactory.h"

#include "importers/codbimporter.h"
#include "importers/csvimporter.h"
#include "importers/edsimporter.h"
#include "importers/kprjimporter.h"
#include "importers/xddimporter.h"

namespace {

std::unique_ptr<BaseDataImporter> makeEds()
{
    return std::make_unique<EDSImporter>();
}

std::unique_ptr<BaseDataImporter> makeDcf()
{
    auto importer = std::make_unique<EDSImporter>();
    importer->setDcf(true);
    return importer;
}

std::unique_ptr<BaseDataImporter> makeXdd()
{
    return std::make_unique<XDDImporter>();
}

std::unique_ptr<BaseDataImporter> makeCodb()
{
    return std::make_unique<CODBImporter>();
}

std::unique_ptr<BaseDataImporter> makeProject()
{
    return std::make_unique<KprjImporter>();
}

std::unique_ptr<BaseDataImporter> makeCsv()
{
    return std::make_unique<CsvImporter>();
}

struct Maker
{
    const char *suffix;
    std::unique_ptr<BaseDataImporter> (*make)();
};

const Maker makers[] = {
    {"eds", makeEds},      {"dcf", makeDcf},      {"xdd", makeXdd},      {"csv", makeCsv},
    {"icsv", makeCsv},     {"codb", makeCodb},    {"kprj", makeProject}, {"ktxt", makeProject},
    {"bak", makeProject},
};

} // namespace

std::unique_ptr<BaseDataImporter> ImporterFactory::create(const QString &suffix)
{
    for (const auto &maker : makers) {
        if (suffix == QLatin1String(maker.suffix))
            return maker.make();
    }
    return nullptr;
}
