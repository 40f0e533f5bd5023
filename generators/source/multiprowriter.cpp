#include "multiprowriter.h"

#include "multiprocontext.h"
#include "multiprodialect.h"
#include "multiproheadwriter.h"
#include "multiproinitwriter.h"
#include "multiprolinewriter.h"
#include "objdictconstantwriter.h"
#include "objdictpdotables.h"
#include "objdictpredefwriter.h"
#include "objdictservicecalls.h"
#include "objdicttablewriter.h"
#include "objdictvariablewriter.h"
#include "pgngeneratorbase.h"
#include "rawcanconfigwriter.h"

#include <QTextStream>

MultiProWriter::MultiProWriter(MultiProContext &context, PGNGeneratorBase &pgn)
    : context(context)
    , pgn(pgn)
{}

void MultiProWriter::write(QTextStream &file)
{
    MultiProFlags &flags = context.flags;
    QString text;
    QTextStream out(&text);
    MultiProHeadWriter(context).write(out);

    pgn.openBlocks(flags.multiLine);
    bool configured = false;
    if (!flags.bootloaderMode)
        out << pgn.managedVariableDefinitions() << pgn.mappingTables() << pgn.addressClaimConfigurations()
            << pgn.transmitTables() << pgn.receiveTables() << pgn.lineConfigurations(&configured);
    // The J1939 init structures are only written for lines whose configuration stands in the file.
    flags.hasJ1939 = configured;

    ObjDictPdoTables pdoTables(context.objDict);
    if (flags.hasCANopen) {
        ObjDictVariableWriter variables(context.objDict);
        variables.writeManaged(out);
        ObjDictConstantWriter(context.objDict).write(out);
        variables.writeApplication(out);
        ObjDictTableWriter tables(context.objDict);
        tables.writeDescription(out);
        tables.writeAssignment(out);
        pdoTables.write(out);
        tables.writeDataVariables(out);
    }
    if (flags.hasRawCAN && !flags.bootloaderMode)
        out << RawCanConfigWriter(context).tables();

    const ObjDictServiceCalls calls(context.objDict, pdoTables);
    const MultiProInitWriter init(context, calls, pgn);
    out << init.structures() << init.mainFunction();
    if (flags.multiLine) {
        const MultiProLineWriter lines(context, calls);
        out << lines.lineFunctions() << lines.finishFunction();
    }
    ObjDictPredefWriter(context.objDict).write(out);
    out.flush();
    file << context.dialect.spell(text);
}
