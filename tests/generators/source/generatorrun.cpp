#include "generatorrun.h"

#include "generation/abstractgenerator.h"
#include "store/objectdatabase.h"

namespace GeneratorRun {

bool run(AbstractGenerator &generator, ObjectDataBase &store, const QString &outputPath,
         const QString &projectName, bool lineless)
{
    generator.setOutputPath(outputPath);
    generator.setDatabase(&store);
    generator.setProjectName(projectName);
    if (!lineless && generator.setLine(0) != GeneratorStatus::Ok)
        return false;
    if (!generator.isOutputWritable() || generator.start() != GeneratorStatus::Ok)
        return false;
    generator.waitForFinished();
    generator.waitForThread();
    return !store.isBlocked();
}

} // namespace GeneratorRun
