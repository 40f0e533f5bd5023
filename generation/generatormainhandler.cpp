#include "generatormainhandler.h"

#include "generation/abstractgenerator.h"
#include "generation/cppoutputcopy.h"
#include "generation/csharppropswriter.h"
#include "generation/modelchecker.h"
#include "generation/outputhandlerbase.h"
#include "generation/postgenprocessor.h"
#include "generation/postgenprogresshandler.h"
#include "generation/usersection.h"
#include "store/objectdatabase.h"
#include "store/projectconverter.h"
#include "texttools/filepermissions.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

struct StepMessages
{
    GeneratorMainHandler::Step step;
    const char *started;
    const char *notWritable;
};

// %1 is the output folder; %2 the project name in the not-writable texts and the EDS variant in the
// started texts of EDS files.
const StepMessages stepMessages[] = {
    {GeneratorMainHandler::Step::Indices, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_indices.h in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file in gen_indices.h in %1 is not writable")},
    {GeneratorMainHandler::Step::TextDoc,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of textual object dictionary documentation in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file in %2_doc.txt in %1 is not writable")},
    {GeneratorMainHandler::Step::Html,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of HTML object dictionary documentation in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file in %2.html in %1 is not writable")},
    {GeneratorMainHandler::Step::ObjDict, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_objdict.c in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_objdict.c in %1 is not writable")},
    {GeneratorMainHandler::Step::ObjDictCam,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_objdict.c for CAM11/CAM21 SDO server in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_objdict.c in %1 is not writable")},
    {GeneratorMainHandler::Step::VObjDict, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_vobjdict.c in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_vobjdict.c in %1 is not writable")},
    {GeneratorMainHandler::Step::MultiPro, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_mp.c in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_mp.c in %1 is not writable")},
    {GeneratorMainHandler::Step::J1939TextDoc,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of textual PGN documentation in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file in %2_doc.txt in %1 is not writable")},
    {GeneratorMainHandler::Step::RawCanTextDoc,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of raw CAN text documentation in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file %2_doc.txt in %1 is not writable")},
    {GeneratorMainHandler::Step::RawCanDbc, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of raw CAN DBC file in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file %2.dbc in %1 is not writable")},
    {GeneratorMainHandler::Step::J1939Html,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of HTML pgn documentation in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file in %2.html in %1 is not writable")},
    {GeneratorMainHandler::Step::Dbc, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of DBC_file in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file %2.dbc in %1 is not writable")},
    {GeneratorMainHandler::Step::Srdo, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_srdo.c in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_srdo.c in %1 is not writable")},
    {GeneratorMainHandler::Step::Define, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_define.h in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_define.h in %1 is not writable")},
    {GeneratorMainHandler::Step::Pgn, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_pgn.c in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_pgn.c in %1 is not writable")},
    {GeneratorMainHandler::Step::EdsCam,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of %2 EDS file in %1 started (for CAM11/CAM21 SDO Server)"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The EDS file %2.eds in %1 is not writable")},
    {GeneratorMainHandler::Step::ExtDecl, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_extern_decl.h in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_extern_decl.h in %1 is not writable")},
    {GeneratorMainHandler::Step::Safety, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of file in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file in %1 is not writable")},
    {GeneratorMainHandler::Step::Indication, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of gen_indication in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file gen_indication.h in %1 is not writable")},
    {GeneratorMainHandler::Step::Csv, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of CSV file (deprecated) in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file %2.csv in %1 is not writable")},
    {GeneratorMainHandler::Step::Icsv, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of ICSV file in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The file %2.icsv in %1 is not writable")},
    {GeneratorMainHandler::Step::Eds, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of %2 EDS file in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The EDS file %2.eds in %1 is not writable")},
    {GeneratorMainHandler::Step::EdsClassical,
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of %2 classical EDS file in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The EDS file %2_classical.eds in %1 is not writable")},
    {GeneratorMainHandler::Step::Xdd, QT_TRANSLATE_NOOP("GeneratorMainHandler", "Generation of XDD file in %1 started"),
     QT_TRANSLATE_NOOP("GeneratorMainHandler", "The XDD file %2.xdd in %1 is not writable")},
};

const StepMessages &messagesOf(GeneratorMainHandler::Step step)
{
    for (const auto &messages : stepMessages) {
        if (messages.step == step)
            return messages;
    }
    Q_UNREACHABLE();
}

bool isStepWithVariant(GeneratorMainHandler::Step step)
{
    return step == GeneratorMainHandler::Step::Eds || step == GeneratorMainHandler::Step::EdsClassical ||
           step == GeneratorMainHandler::Step::EdsCam;
}

bool hasCANopenType(int type)
{
    return type == 1 || type == 5 || type == 6;
}

bool hasJ1939Type(int type)
{
    return type == 2 || type == 5 || type == 7;
}

bool hasRawCanType(int type)
{
    return type == 4 || type == 6 || type == 7;
}

// J1939 parameter groups that the check treats on their own.
const QList<quint32> specialPgns{59904, 60928, 60416, 60160, 59392, 3584, 65240, 9472};

} // namespace

struct GeneratorMainHandler::Run
{
    QList<quint8> lines;
    QMap<quint8, int> types;
    bool hasCANopen = false;
    bool hasJ1939 = false;
    bool hasRawCAN = false;
    bool bootloaderMode = false;
    bool compact = false;

    QList<quint8> linesWith(bool (*test)(int)) const
    {
        QList<quint8> result;
        for (const quint8 line : lines) {
            if (test(types.value(line)))
                result << line;
        }
        return result;
    }
};

GeneratorMainHandler::GeneratorMainHandler(OutputHandlerBase *sink, QSharedPointer<PostGenProgressHandler> progress,
                                           const GeneratorFactory *generatorFactory, QObject *parent)
    : QObject(parent)
    , ownStore(std::make_unique<ObjectDataBase>())
    , output(sink)
    , postGenProgress(std::move(progress))
    , factory(generatorFactory)
{
    ownStore->createNewDataBase();
    ownStore->addNode(0, NODE_DATA_T());
    database = ownStore.get();
}

GeneratorMainHandler::~GeneratorMainHandler() = default;

void GeneratorMainHandler::setProject(ObjectDataBase *store, const QString &path, const QString &name)
{
    database = store;
    outputPath = path;
    projectName = name;
}

bool GeneratorMainHandler::openProject(const QString &filePath)
{
    qDebug() << Q_FUNC_INFO << filePath;
    const QFileInfo info(filePath);
    if (!info.exists())
        return false;
    const QString path = info.absoluteFilePath();
    if (path.endsWith(QLatin1String("ktxt"))) {
        database->loadTextDatabase(path);
    } else if (!database->openDataBase(path)) {
        return false;
    }
    ProjectConverter::convert(database, QCoreApplication::applicationName());
    outputPath = info.absolutePath();
    projectName = info.completeBaseName();
    projectFile = path;
    database->setGeneralSetting(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    database->setGeneralSetting(QStringLiteral("use_core_headers"), QStringLiteral("V4"));
    return true;
}

void GeneratorMainHandler::log(const QString &text)
{
    output->output(text);
}

QString GeneratorMainHandler::setting(const QString &key) const
{
    return database->getGeneralSetting(key);
}

void GeneratorMainHandler::handleCheckError(const QString &errorString)
{
    output->output(errorString);
}

AbstractGenerator *GeneratorMainHandler::create(GeneratorKind kind, const GeneratorOptions &options)
{
    GeneratorOptions chosen = options;
    chosen.currentFamily = currentFamily;
    auto generator = factory->create(kind, chosen);
    if (!generator) {
        qDebug() << Q_FUNC_INFO << "no generator of kind" << int(kind) << "yet; step skipped";
        return nullptr;
    }
    runGenerators.push_back(std::move(generator));
    return runGenerators.back().get();
}

bool GeneratorMainHandler::runGenerator(AbstractGenerator *generator, Step step, quint8 line, const QString &variant)
{
    if (!generator)
        return false;
    const StepMessages &messages = messagesOf(step);
    generator->setOutputPath(outputPath);
    generator->setDatabase(database);
    generator->setProjectName(projectName);
    if (step != Step::Indices)
        generator->setLine(line);
    if (!generator->isOutputWritable()) {
        log(tr(messages.notWritable).arg(outputPath, projectName));
        return false;
    }
    connect(generator, &AbstractGenerator::progress, this, &GeneratorMainHandler::generatorProgress);
    generator->start();
    log(isStepWithVariant(step) ? tr(messages.started).arg(outputPath, variant) : tr(messages.started).arg(outputPath));
    generator->waitForFinished();
    // The completion message of this generator belongs before the next one's start.
    generator->waitForThread();
    QCoreApplication::processEvents();
    return true;
}

bool GeneratorMainHandler::runOnLine(GeneratorKind kind, Step step, quint8 line, const GeneratorOptions &options)
{
    AbstractGenerator *generator = create(kind, options);
    if (!generator)
        return false;
    generator->setMultiLine(multiLine);
    return runGenerator(generator, step, line);
}

void GeneratorMainHandler::generatorProgress(quint8 progress)
{
    if (progress != 100)
        return;
    auto *generator = qobject_cast<AbstractGenerator *>(sender());
    const QString name = generator && !generator->objectName().isEmpty() ? generator->objectName()
                                                                         : QStringLiteral("output");
    if (generator && generator->hasFailed()) {
        log(tr("<b>ERROR - Generation of %1 failed.").arg(name) + ' ' + generator->errorText() +
            QStringLiteral("</b>"));
        return;
    }
    const QString extra = generator && name.startsWith(QLatin1String("gen_sdg.c"))
                              ? QStringLiteral("(%1)").arg(generator->resultInfo())
                              : QString();
    log(tr("Generation of %1 completed. %2").arg(name, extra));
}

bool GeneratorMainHandler::prepare(Run &run)
{
    const auto lines = database->getLines();
    for (const quint8 line : lines) {
        if (line >= 240)
            continue;
        const int type = setting(QStringLiteral("line%1type").arg(line)).toInt();
        run.types.insert(line, type);
        run.hasCANopen = run.hasCANopen || hasCANopenType(type);
        run.hasJ1939 = run.hasJ1939 || hasJ1939Type(type);
        run.hasRawCAN = run.hasRawCAN || hasRawCanType(type);
        if (hasJ1939Type(type))
            database->removePGN(line, 60928, Direction::Transmit);
    }
    for (const quint8 line : lines) {
        if (line < 254)
            run.lines << line;
    }
    multiLine = run.lines.size() > 1;
    for (const quint8 line : std::as_const(run.lines)) {
        database->cacheAllSubs(line, 0);
        database->cacheSubObjectNames(line);
    }
    database->cacheStrings();
    return true;
}

bool GeneratorMainHandler::check(Run &run, bool ignoreCheckErrors)
{
    ModelChecker checker;
    log(tr("\nCheck of model consistency started"));
    connect(&checker, &ModelChecker::newError, this, &GeneratorMainHandler::handleCheckError);
    bool corrected = false;
    int errors = checker.checkCommon(database, outputPath);
    for (const quint8 line : std::as_const(run.lines)) {
        QList<quint32> special = specialPgns;
        if (multiLine) {
            output->outputPlain(QString());
            output->outputPlain(QStringLiteral("<strong>________________________________________ Checking line %1 "
                                               "________________________________________</strong>")
                                    .arg(line));
        }
        const int type = setting(QStringLiteral("line%1type").arg(line)).toInt();
        switch (type) {
        case 1:
            errors += checker.checkCANopenLine(line, database, corrected);
            break;
        case 2:
            errors += checker.checkJ1939Line(line, database, special);
            break;
        case 4:
            errors += checker.checkRawCANLine(line, database);
            break;
        case 5:
            errors += checker.checkCANopenLine(line, database, corrected);
            errors += checker.checkJ1939Line(line, database, special);
            break;
        case 6:
            errors += checker.checkCANopenLine(line, database, corrected);
            errors += checker.checkRawCANLine(line, database);
            break;
        case 7:
            errors += checker.checkJ1939Line(line, database, special);
            errors += checker.checkRawCANLine(line, database);
            break;
        default:
            log(tr("Warning line type not set for line %1.").arg(line));
            break;
        }
    }
    if (corrected)
        emit doneCorrection();

    const QString errorLog = outputPath + QStringLiteral("/__kesterrorlog.txt");
    QFile logFile(errorLog);
    if (logFile.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        logFile.write(output->logText().toUtf8());
        logFile.close();
    }
    if (errors > 0 && !ignoreCheckErrors) {
        log(tr("ABORT - Check of model consistency finished: failed (%1 errors)").arg(errors));
        emit finished(CheckFailed);
        return false;
    }
    QFile::copy(errorLog, errorLog + QStringLiteral(".bak"));
    QFile::remove(errorLog);
    log(tr("\nCheck of model consistency finished.\n"));
    if (!FilePermissions::isWritable(outputPath)) {
        log(tr("ABORT - The output folder %1 is not writeable.").arg(outputPath));
        emit finished(OutputNotWritable);
        return false;
    }
    return true;
}

void GeneratorMainHandler::generateSources(Run &run)
{
    if (!run.bootloaderMode) {
        GeneratorOptions options;
        options.lines = run.lines;
        if (AbstractGenerator *indices = create(GeneratorKind::Indices, options)) {
            indices->setMultiLine(true);
            runGenerator(indices, Step::Indices, 0);
        }
    }
    if (run.hasCANopen) {
        const QList<quint8> canopenLines = run.linesWith(hasCANopenType);
        for (const quint8 line : canopenLines)
            runOnLine(GeneratorKind::TextDoc, Step::TextDoc, line);
        for (const quint8 line : canopenLines) {
            AbstractGenerator *html = create(GeneratorKind::Html);
            if (!html)
                continue;
            html->setMultiLine(multiLine);
            const int type = run.types.value(line);
            if (type == 5 || type == 6)
                html->setFileSuffix(QStringLiteral("_co"));
            runGenerator(html, Step::Html, line);
        }
    }
    if (run.hasCANopen && !run.hasJ1939 && !run.hasRawCAN) {
        GeneratorOptions options;
        options.compact = run.compact;
        runGenerator(create(GeneratorKind::ObjDict, options), Step::ObjDict, 0);
        options.specialVirtualObjects = specialVirtualObjects;
        if (AbstractGenerator *virtualObjects = create(GeneratorKind::VObjDict, options)) {
            virtualObjects->setOutputPath(outputPath);
            virtualObjects->setDatabase(database);
            if (virtualObjects->hasContent())
                runGenerator(virtualObjects, Step::VObjDict, 0);
            else
                QFile::remove(outputPath + QStringLiteral("/gen_vobjdict.c"));
        }
        return;
    }
    if (!run.hasRawCAN && !(run.hasCANopen && run.hasJ1939))
        return;
    GeneratorOptions multiProOptions;
    multiProOptions.compact = run.compact;
    runGenerator(create(GeneratorKind::MultiPro, multiProOptions), Step::MultiPro, 0);
    for (const quint8 line : std::as_const(run.lines)) {
        const int type = run.types.value(line);
        if (hasJ1939Type(type))
            runOnLine(GeneratorKind::J1939TextDoc, Step::J1939TextDoc, line);
        if (hasRawCanType(type)) {
            runOnLine(GeneratorKind::RawCanTextDoc, Step::RawCanTextDoc, line);
            runOnLine(GeneratorKind::RawCanDbc, Step::RawCanDbc, line);
        }
    }
    const QList<quint8> j1939Lines = run.linesWith(hasJ1939Type);
    for (const quint8 line : j1939Lines) {
        AbstractGenerator *html = create(GeneratorKind::J1939Html);
        if (!html)
            continue;
        html->setMultiLine(multiLine);
        const int type = run.types.value(line);
        if (type == 5 || type == 7)
            html->setFileSuffix(QStringLiteral("_j1939"));
        runGenerator(html, Step::J1939Html, line);
    }
    for (const quint8 line : j1939Lines)
        runOnLine(GeneratorKind::Dbc, Step::Dbc, line);
}

bool GeneratorMainHandler::generateConfiguration(Run &run)
{
    int safetyObjects = 0;
    for (const quint8 line : std::as_const(run.lines))
        safetyObjects += database->getIndices(line, 0x1301, 0x137F).size();
    if (safetyObjects > 0 && generateSrdo) {
        GeneratorOptions options;
        options.staticSrdo = setting(QStringLiteral("static_srdo_data")).toInt() == 1;
        if (AbstractGenerator *srdo = create(GeneratorKind::Srdo, options)) {
            runGenerator(srdo, Step::Srdo, 0);
            if (srdo->hasFailed()) {
                log(srdo->errorText());
                emit finished(GeneratorFailed);
                return false;
            }
        }
    }
    if (AbstractGenerator *define = create(GeneratorKind::Define)) {
        define->setHasJ1939(run.hasJ1939);
        define->setMultiProtocol(run.hasJ1939 ? (run.hasCANopen || run.hasRawCAN) : run.hasRawCAN);
        if (runGenerator(define, Step::Define, 0)) {
            const QString section = UserSection::read(define->outputFile()).trimmed();
            if (!section.isEmpty())
                log(tr("gen_define.h contains user section:\n%1").arg(section));
        }
    }
    if (setting(QStringLiteral("gen_csharp_props")).toInt() == 1) {
        if (CSharpPropsWriter::write(outputPath))
            log(tr("Generation of gen_define.props and Directory.Build.props in %1 finished").arg(outputPath));
        else
            log(tr("The files gen_define.props and Directory.Build.props in %1 are not writable").arg(outputPath));
    }
    return true;
}

void GeneratorMainHandler::generateJ1939Alone(Run &run)
{
    if (!run.hasJ1939 || run.hasCANopen || run.hasRawCAN)
        return;
    runGenerator(create(GeneratorKind::Pgn), Step::Pgn, 0);
    if (database->getJ1939Setting(QStringLiteral("cia510serversupport")).toUInt(nullptr, 0) == 1) {
        GeneratorOptions options;
        options.camMode = true;
        runGenerator(create(GeneratorKind::ObjDict, options), Step::ObjDictCam, 0);
        runGenerator(create(GeneratorKind::Eds, GeneratorOptions()), Step::EdsCam, 0);
    }
    for (const quint8 line : std::as_const(run.lines))
        runOnLine(GeneratorKind::J1939TextDoc, Step::J1939TextDoc, line);
    for (const quint8 line : std::as_const(run.lines))
        runOnLine(GeneratorKind::J1939Html, Step::J1939Html, line);
    const QList<quint8> j1939Lines = run.linesWith(hasJ1939Type);
    for (const quint8 line : j1939Lines)
        runOnLine(GeneratorKind::Dbc, Step::Dbc, line);
    if (database->getJ1939Setting(QStringLiteral("j1939adapter")).toInt() != 1) {
        for (const char *file : {"/gen_j1939_adapter.c", "/gen_j1939_adapter.cs", "/j1939_adapter.cs", "/j1939_adapter.c"})
            QFile::remove(outputPath + QLatin1String(file));
    }
    QFile::remove(outputPath + QStringLiteral("/gen_indication.h"));
}

void GeneratorMainHandler::generateDeclarations(Run &run)
{
    if (!(run.hasJ1939 || run.hasRawCAN) || run.bootloaderMode)
        return;
    runGenerator(create(GeneratorKind::ExtDecl), Step::ExtDecl, 0);
    if (database->getJ1939Setting(QStringLiteral("safetysupport")).toInt() > 0)
        runGenerator(create(GeneratorKind::Sdm), Step::Safety, 0);
}

QStringList GeneratorMainHandler::edsVariants(quint8 line)
{
    QStringList variants{QString()};
    auto take = [&](const MetadataMap &metadata) {
        const auto value = metadata.constFind(QStringLiteral("eds_define"));
        if (value != metadata.constEnd() && !variants.contains(value.value()))
            variants << value.value();
    };
    const auto indices = database->getIndices(line, 0x1000);
    for (const quint16 index : indices) {
        INDEX_DATA_T object;
        if (database->getIndex(line, index, object))
            take(object.metadata);
        const auto subIndices = database->getSubIndices(line, index);
        for (const quint8 subindex : subIndices) {
            SUBINDEX_DATA_T sub;
            if (database->getSubIndex(line, index, subindex, sub))
                take(sub.metadata);
        }
    }
    return variants;
}

void GeneratorMainHandler::generateDevices(Run &run)
{
    if (!run.hasCANopen && setting(QStringLiteral("uds_static_indication")).toInt() != 1)
        return;
    runGenerator(create(GeneratorKind::Indication), Step::Indication, 0);
    const QList<quint8> canopenLines = run.linesWith(hasCANopenType);
    for (const quint8 line : canopenLines)
        runOnLine(GeneratorKind::Csv, Step::Csv, line);
    for (const quint8 line : canopenLines) {
        GeneratorOptions options;
        options.disableDocu = database->getMiscSetting(QStringLiteral("disableDocu")) == QLatin1String("true");
        runOnLine(GeneratorKind::Icsv, Step::Icsv, line, options);
    }
    const bool canFd = setting(QStringLiteral("canfd_supported")).toInt() >= 1;
    for (const quint8 line : canopenLines) {
        const QStringList variants = edsVariants(line);
        for (const auto &variant : variants) {
            GeneratorOptions options;
            options.edsVariant = variant;
            options.fd = canFd;
            if (AbstractGenerator *eds = create(GeneratorKind::Eds, options)) {
                eds->setMultiLine(multiLine);
                runGenerator(eds, Step::Eds, line, variant);
            }
            if (!canFd)
                continue;
            options.fd = false;
            options.classical = true;
            if (AbstractGenerator *classical = create(GeneratorKind::Eds, options)) {
                classical->setMultiLine(multiLine);
                runGenerator(classical, Step::EdsClassical, line, variant);
            }
        }
        if (variants.size() > 1)
            log(tr("Warning: multiple different EDS files to be generated.\n"));
    }
    if (canFd) {
        for (const quint8 line : canopenLines)
            runOnLine(GeneratorKind::Xdd, Step::Xdd, line);
    }
    if (setting(QStringLiteral("generate_cpp_output")).toInt() == 1)
        CppOutputCopy::run(outputPath);
}

void GeneratorMainHandler::generate(bool ignoreCheckErrors)
{
    runGenerators.clear();
    currentFamily = setting(QStringLiteral("use_core_headers")) == QLatin1String("V4");
    Run state;
    prepare(state);
    if (!check(state, ignoreCheckErrors))
        return;

    state.bootloaderMode = setting(QStringLiteral("uds_bl_setting")) == QLatin1String("1") && !multiLine;
    state.compact = setting(QStringLiteral("compact_array_description")).toInt() == 1;
    if (state.hasCANopen || state.hasJ1939 || state.hasRawCAN)
        generateSources(state);
    if (!generateConfiguration(state))
        return;
    generateJ1939Alone(state);
    generateDeclarations(state);
    generateDevices(state);

    database->clearSubCache();
    database->clearNameCache();
    database->clearSPNCache();
    log(tr("Generation finished."));
    runPostGenProcess();
    emit finished(Done);
}

void GeneratorMainHandler::runPostGenProcess()
{
    if (!postGenProcessor)
        postGenProcessor = new PostGenProcessor(output, postGenProgress, this);
    qDebug() << Q_FUNC_INFO << QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
    postGenProcessor->setData(database, outputPath, projectName);
    postGenProcessor->setSkipEdsCheck(skipEdsCheck);
    postGenProcessor->setHiddenRun(hiddenRun);
    qDebug() << Q_FUNC_INFO << QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
    postGenProcessor->start();
}
