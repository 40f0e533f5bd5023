#pragma once

#include "generation/generatorfactory.h"

#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QString>

#include <memory>
#include <vector>

class AbstractGenerator;
class ObjectDataBase;
class OutputHandlerBase;
class PostGenProcessor;
class PostGenProgressHandler;

// Runs one generation from start to end: reads the project, checks it, runs the generators in their
// fixed order, each under its own condition, and hands over to the post-generation steps.
class GeneratorMainHandler : public QObject
{
    Q_OBJECT

public:
    enum GeneratorResult {
        Done = 0,
        CheckFailed = 2,
        OutputNotWritable = 3,
        GeneratorFailed = 4,
    };
    Q_ENUM(GeneratorResult)

    // The messages of the driver about one step of a run.
    enum class Step {
        Indices,
        TextDoc,
        Html,
        ObjDict,
        ObjDictCam,
        VObjDict,
        MultiPro,
        J1939TextDoc,
        RawCanTextDoc,
        RawCanDbc,
        J1939Html,
        Dbc,
        Srdo,
        Define,
        Pgn,
        EdsCam,
        ExtDecl,
        Safety,
        Indication,
        Csv,
        Icsv,
        Eds,
        EdsClassical,
        Xdd,
    };

    GeneratorMainHandler(OutputHandlerBase *output, QSharedPointer<PostGenProgressHandler> progress,
                         const GeneratorFactory *factory, QObject *parent = nullptr);
    ~GeneratorMainHandler() override;

    void setProject(ObjectDataBase *store, const QString &outputPath, const QString &projectName);
    void setSkipEdsCheck(bool skip) { skipEdsCheck = skip; }
    void setHiddenRun(bool hidden) { hiddenRun = hidden; }
    void setSpecialVirtualObjects(bool special) { specialVirtualObjects = special; }
    void setGenerateSrdo(bool generate) { generateSrdo = generate; }
    bool isGenerateSrdo() const { return generateSrdo; }
    ObjectDataBase *store() const { return database; }
    QString projectFilePath() const { return projectFile; }

    void generate(bool ignoreCheckErrors);
    void runPostGenProcess();

signals:
    void finished(GeneratorMainHandler::GeneratorResult result);
    void doneCorrection();

public slots:
    bool openProject(const QString &filePath);
    void handleCheckError(const QString &errorString);
    void generatorProgress(quint8 progress);

private:
    struct Run;

    bool prepare(Run &run);
    bool check(Run &run, bool ignoreCheckErrors);
    void generateSources(Run &run);
    bool generateConfiguration(Run &run);
    void generateJ1939Alone(Run &run);
    void generateDeclarations(Run &run);
    void generateDevices(Run &run);
    QStringList edsVariants(quint8 line);

    // A generator of this run; it lives until the next run, for its queued messages read it.
    AbstractGenerator *create(GeneratorKind kind, const GeneratorOptions &options = GeneratorOptions());
    // Configures, checks and runs one generator of the given step; false when it did not run.
    bool runGenerator(AbstractGenerator *generator, Step step, quint8 line, const QString &variant = QString());
    bool runOnLine(GeneratorKind kind, Step step, quint8 line, const GeneratorOptions &options = GeneratorOptions());
    void log(const QString &text);
    QString setting(const QString &key) const;

    ObjectDataBase *database = nullptr;
    std::unique_ptr<ObjectDataBase> ownStore;
    QString outputPath;
    QString projectName;
    QString projectFile;
    bool skipEdsCheck = false;
    bool hiddenRun = false;
    bool specialVirtualObjects = false;
    bool generateSrdo = true;
    OutputHandlerBase *output;
    PostGenProcessor *postGenProcessor = nullptr;
    QSharedPointer<PostGenProgressHandler> postGenProgress;
    const GeneratorFactory *factory;
    std::vector<std::unique_ptr<AbstractGenerator>> runGenerators;
    bool multiLine = false;
    bool currentFamily = true;
};
