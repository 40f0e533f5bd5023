#pragma once

#include "generation/generatorfactory.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class AbstractGenerator;
class ObjectDataBase;
class OutputHandlerBase;

// Runs one generation from start to end: checks, then the generators in their fixed order.
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

    GeneratorMainHandler(OutputHandlerBase *output, const GeneratorFactory *factory, QObject *parent = nullptr);
    ~GeneratorMainHandler() override;

    void setProject(ObjectDataBase *store, const QString &outputPath, const QString &projectName);
    void setSkipEdsCheck(bool skip) { skipEdsCheck = skip; }
    void setHiddenRun(bool hidden) { hiddenRun = hidden; }
    void setSpecialVirtualObjects(bool special) { specialVirtualObjects = special; }
    void setGenerateSrdo(bool generate) { generateSrdo = generate; }
    bool isGenerateSrdo() const { return generateSrdo; }

    void generate(bool ignoreCheckErrors);

signals:
    void finished(GeneratorMainHandler::GeneratorResult result);
    void doneCorrection();

public slots:
    void handleCheckError(const QString &errorString);
    void generatorProgress(quint8 progress);

private:
    // Runs one generator: configure, check the file, start, wait. False when the file is not writable.
    bool run(AbstractGenerator &generator, quint8 line, const QString &startedMessage,
             const QString &notWritableMessage);
    void log(const QString &text);
    // A generator of this run; it lives until the next run, for its queued messages read it.
    AbstractGenerator *create(GeneratorKind kind, const GeneratorOptions &options);

    ObjectDataBase *database = nullptr;
    std::unique_ptr<ObjectDataBase> ownStore;
    QString outputPath;
    QString projectName;
    bool skipEdsCheck = false;
    bool hiddenRun = false;
    bool specialVirtualObjects = false;
    bool generateSrdo = true;
    OutputHandlerBase *output;
    const GeneratorFactory *factory;
    std::vector<std::unique_ptr<AbstractGenerator>> runGenerators;
};
