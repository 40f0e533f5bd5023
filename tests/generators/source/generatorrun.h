#pragma once

#include <QString>

class AbstractGenerator;
class ObjectDataBase;

namespace GeneratorRun {

// Configures the generator as the driver does, starts it and waits until its thread has ended; false
// when it could not be started or left the store blocked. A generator that walks all lines itself, as
// the indices generator does, gets no line; every other one line 0.
bool run(AbstractGenerator &generator, ObjectDataBase &store, const QString &outputPath,
         const QString &projectName, bool lineless = false);

} // namespace GeneratorRun
