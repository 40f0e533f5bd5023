#include "generatorcatalog.h"

#include "generators/documents/dbcgenerator.h"
#include "generators/documents/htmlgenerator.h"
#include "generators/documents/j1939htmlgenerator.h"
#include "generators/documents/j1939textdocgenerator.h"
#include "generators/documents/rawcandbcgenerator.h"
#include "generators/documents/rawcantextdocgenerator.h"
#include "generators/documents/textdocgenerator.h"
#include "generators/source/codefinegenerator.h"
#include "generators/source/gendefinegenerator.h"
#include "generators/source/extdeclgenerator.h"
#include "generators/source/extdeclgeneratorv4.h"
#include "generators/source/indicationgenerator.h"
#include "generators/source/indicationgeneratorv4.h"
#include "generators/source/indicesgenerator.h"
#include "generators/source/multiprogenerator.h"
#include "generators/source/multiprogeneratorv4.h"
#include "generators/source/objdictgenerator.h"
#include "generators/source/objdictgeneratorv4.h"
#include "generators/source/pgngenerator.h"
#include "generators/source/pgngeneratorv4.h"
#include "generators/source/vobjdictgenerator.h"
#include "generators/source/vobjdictgeneratorv4.h"

std::unique_ptr<AbstractGenerator> GeneratorCatalog::create(GeneratorKind kind, const GeneratorOptions &options) const
{
    switch (kind) {
    case GeneratorKind::Define:
        if (options.currentFamily)
            return std::make_unique<GenDefineGenerator>();
        return std::make_unique<CoDefineGenerator>();
    case GeneratorKind::Indices: {
        auto indices = std::make_unique<IndicesGenerator>();
        indices->setLines(options.lines);
        return indices;
    }
    case GeneratorKind::ExtDecl:
        if (options.currentFamily)
            return std::make_unique<ExtDeclGeneratorV4>();
        return std::make_unique<ExtDeclGenerator>();
    case GeneratorKind::Indication:
        if (options.currentFamily)
            return std::make_unique<indicationgeneratorv4>();
        return std::make_unique<indicationgenerator>();
    case GeneratorKind::Pgn:
        if (options.currentFamily)
            return std::make_unique<PGNGeneratorV4>();
        return std::make_unique<PGNGenerator>();
    case GeneratorKind::ObjDict: {
        std::unique_ptr<ObjDictGeneratorBase> objDict;
        if (options.currentFamily)
            objDict = std::make_unique<ObjDictGeneratorV4>(options.compact);
        else
            objDict = std::make_unique<ObjDictGenerator>(options.compact);
        objDict->setCamMode(options.camMode);
        return objDict;
    }
    case GeneratorKind::MultiPro:
        if (options.currentFamily)
            return std::make_unique<MultiProGeneratorV4>(options.compact);
        return std::make_unique<MultiProGenerator>(options.compact);
    case GeneratorKind::VObjDict: {
        std::unique_ptr<VobjDictGeneratorBase> virtualObjects;
        if (options.currentFamily)
            virtualObjects = std::make_unique<VobjDictGeneratorV4>(options.compact);
        else
            virtualObjects = std::make_unique<VobjDictGenerator>(options.compact);
        virtualObjects->setSpecialVirtualObjects(options.specialVirtualObjects);
        return virtualObjects;
    }
    case GeneratorKind::Dbc:
        return std::make_unique<DBCGenerator>();
    case GeneratorKind::RawCanDbc:
        return std::make_unique<RawCANDBCGenerator>();
    case GeneratorKind::Html:
        return std::make_unique<HTMLGenerator>();
    case GeneratorKind::J1939Html:
        return std::make_unique<J1939HTMLGenerator>();
    case GeneratorKind::TextDoc:
        return std::make_unique<TextDocGenerator>();
    case GeneratorKind::J1939TextDoc:
        return std::make_unique<J1939TextDocGenerator>();
    case GeneratorKind::RawCanTextDoc:
        return std::make_unique<RawCANTextDocGenerator>();
    default:
        return nullptr;
    }
}
