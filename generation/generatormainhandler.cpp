#include "generatormainhandler.h"

#include "generation/abstractgenerator.h"
#include "generation/outputhandlerbase.h"
#include "generation/usersection.h"
#include "store/objectdatabase.h"
#include "texttools/filepermissions.h"

#include <QCoreApplication>
#include <QFileInfo>

GeneratorMainHandler::GeneratorMainHandler(OutputHandlerBase *output, const GeneratorFactory *factory,
                                           QObject *parent)
    : QObject(parent)
    , ownStore(std::make_unique<ObjectDataBase>())
    , output(output)
    , factory(factory)
{
    ownStore->createNewDataBase();
    database = ownStore.get();
}

GeneratorMainHandler::~GeneratorMainHandler() = default;

void GeneratorMainHandler::setProject(ObjectDataBase *store, const QString &path, const QString &name)
{
    database = store;
    outputPath = path;
    projectName = name;
}

void GeneratorMainHandler::log(const QString &text)
{
    output->output(text);
}

void GeneratorMainHandler::handleCheckError(const QString &errorString)
{
    output->output(errorString);
}

bool GeneratorMainHandler::run(AbstractGenerator &generator, quint8 line, const QString &startedMessage,
                               const QString &notWritableMessage)
{
    generator.setOutputPath(outputPath);
    generator.setDatabase(database);
    generator.setProjectName(projectName);
    generator.setLine(line);
    if (!generator.isOutputWritable()) {
        log(notWritableMessage.arg(outputPath, projectName));
        return false;
    }
    connect(&generator, &AbstractGenerator::progress, this, &GeneratorMainHandler::generatorProgress);
    generator.start();
    log(startedMessage.arg(outputPath));
    generator.waitForFinished();
    // The completion message of this generator belongs before the next one's start.
    generator.waitForThread();
    QCoreApplication::processEvents();
    return true;
}

AbstractGenerator *GeneratorMainHandler::create(GeneratorKind kind, const GeneratorOptions &options)
{
    auto generator = factory->create(kind, options);
    if (!generator)
        return nullptr;
    runGenerators.push_back(std::move(generator));
    return runGenerators.back().get();
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

void GeneratorMainHandler::generate(bool ignoreCheckErrors)
{
    Q_UNUSED(ignoreCheckErrors)
    if (!FilePermissions::isWritable(outputPath)) {
        log(tr("ABORT - The output folder %1 is not writeable.").arg(outputPath));
        emit finished(OutputNotWritable);
        return;
    }
    runGenerators.clear();
    GeneratorOptions options;
    options.currentFamily = database->getGeneralSetting(QStringLiteral("use_core_headers")) == QLatin1String("V4");
    if (auto *generator = create(GeneratorKind::Define, options)) {
        run(*generator, 0, tr("Generation of gen_define.h in %1 started"),
            tr("The file gen_define.h in %1 is not writable"));
        const QString section = UserSection::read(generator->outputFile()).trimmed();
        if (!section.isEmpty())
            log(tr("gen_define.h contains user section:\n%1").arg(section));
    }
    log(tr("Generation finished."));
    emit finished(Done);
}
