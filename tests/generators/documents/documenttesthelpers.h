#pragma once

#include <QString>
#include <QStringList>

class AbstractGenerator;
class ObjectDataBase;

// What the tests of the document generators share: a run as the driver makes it, golden files, masks.
namespace DocumentTests {

// Names the application as the J1939 edition does, so that heads and user settings read as in the program.
void setUpApplication();
// The user setting that adds implementation details to the documents.
void setImplInfo(bool on);

struct RunOptions
{
    quint8 line = 0;
    bool multiLine = false;
    QString fileSuffix;
    QString projectName = QStringLiteral("demo");
};

// Configures the generator as the driver does, starts it and waits until its thread has ended.
bool run(AbstractGenerator &generator, ObjectDataBase &store, const QString &folder,
         const RunOptions &options = RunOptions());
QString readText(const QString &path);
// The content of a file of the golden folder beside the tests.
QString golden(const QString &name);
// Replaces each date and time in the text form of the generators ("Mon Jan 5 10:11:12 2024") by "DATE".
QString maskTextDates(const QString &text);
// Lines of a text, so that a comparison names the first line that differs.
QStringList lines(const QString &text);

} // namespace DocumentTests
