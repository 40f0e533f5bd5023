#include "objdictgeneratorbase.h"

#include "objdictconstantwriter.h"
#include "objdictcontext.h"
#include "objdictdialect.h"
#include "objdictheadwriter.h"
#include "objdictinitwriter.h"
#include "objdictmodel.h"
#include "objdictpdotables.h"
#include "objdictpredefwriter.h"
#include "objdictservicecalls.h"
#include "objdictstringdefaults.h"
#include "objdicttablewriter.h"
#include "objdictvariablewriter.h"

#include "store/objectdatabase.h"

#include <QTextStream>

ObjDictGeneratorBase::ObjDictGeneratorBase(const ObjDictDialect &dialect, bool compactDescription,
                                           QObject *parent)
    : AbstractGenerator(parent)
    , dialect(dialect)
    , compactDescription(compactDescription)
{}

QString ObjDictGeneratorBase::outputFile() const
{
    return filePath(QStringLiteral("%1/gen_objdict.c"));
}

QString ObjDictGeneratorBase::generatorName() const
{
    return QStringLiteral("gen_objdict.c");
}

void ObjDictGeneratorBase::prepare()
{
    // The file decides its form by the dictionary alone: a second line with objects makes it multi-line,
    // whatever the driver said.
    multiLine = database && !database->getIndices(1).isEmpty();
}

void ObjDictGeneratorBase::writeContent(QTextStream &file)
{
    const ObjDictModel model(database);
    ObjDictContext context(model, dialect);
    context.compactDescription = compactDescription;
    context.camMode = camMode;
    context.multiLine = multiLine;
    context.forcedMultiLine = forcedMultiLine;
    context.projectName = projectName;
    context.outputPath = outputPath;
    context.toolVersion = toolVersion;
    if (multiLine) {
        for (const quint8 objectLine : model.lines()) {
            if (model.objectCount(objectLine) > 1)
                context.objectLines << objectLine;
        }
    } else if (forcedMultiLine) {
        context.objectLines << 0;
    }
    context.staticSrdo = model.number(QStringLiteral("static_srdo_data")) == 1;
    context.collectStaticSrdoEntries();
    context.canFd = model.number(QStringLiteral("canfd_supported")) > 0;
    const bool stringDefaults = model.number(QStringLiteral("generate_string_defaults")) > 0;

    // The sections are gathered first, so that the older generation's spelling is applied in one place.
    QString text;
    QTextStream out(&text);
    const ObjDictHeadWriter head(context);
    head.write(out);
    head.updateUserHeader();
    ObjDictVariableWriter variables(context);
    variables.writeManaged(out);
    ObjDictConstantWriter(context).write(out);
    ObjDictStringDefaults strings(context);
    if (stringDefaults)
        strings.writeTable(out);
    variables.writeApplication(out);
    emit progress(25);
    ObjDictTableWriter tables(context);
    tables.writeDescription(out);
    emit progress(50);
    tables.writeAssignment(out);
    emit progress(75);
    ObjDictPdoTables pdoTables(context);
    if (!camMode)
        pdoTables.write(out);
    tables.writeDataVariables(out);
    const ObjDictServiceCalls calls(context, pdoTables);
    const ObjDictInitWriter init(context, calls);
    if (camMode)
        init.writeJ1939OdInit(out);
    else if (!context.multiLineForm())
        init.writeSingleLine(out);
    else
        init.writeMultiLine(out);
    if (!camMode)
        ObjDictPredefWriter(context).write(out);
    if (stringDefaults && !camMode)
        strings.writeFunction(out);
    out.flush();
    file << dialect.spell(text);
}
