#pragma once

#include <QList>
#include <QObject>
#include <QString>

class ModelCheckOutput;
class ObjectDataBase;
struct ModelCheckCANopenContext;

// The consistency check before a generation: one message per finding, and the count of errors. The rules
// live in small classes by protocol; this class keeps what lasts for a whole run and calls them in order.
class ModelChecker : public QObject
{
    Q_OBJECT

public:
    explicit ModelChecker(QObject *parent = nullptr);

    // The project-wide rules; the directory is where a relative stack path is taken from.
    int checkCommon(ObjectDataBase *database, const QString &projectDirectory);
    // Sets `corrected` when it changed the project, and never clears it.
    int checkCANopenLine(quint8 line, ObjectDataBase *database, bool &corrected);
    int checkJ1939Line(quint8 line, ObjectDataBase *database, QList<quint32> &specialPgns);
    int checkRawCANLine(quint8 line, ObjectDataBase *database);
    // Whether the settings that hold numbers hold numbers; the last step of checkCommon.
    int checkNumericSettings();

signals:
    void newError(QString errorText);

private:
    struct LineCounts
    {
        int lines = 0;
        int canopen = 0;
        int j1939 = 0;
        int rawCan = 0;
        int canopenJ1939 = 0;
    };

    LineCounts countLines();
    void checkUpdateHints(ModelCheckOutput &output);
    void checkCommonSettings(const LineCounts &counts, ModelCheckOutput &output);
    void readLineSettings(ModelCheckCANopenContext &context);
    // Messages of this checker, counted in `count`.
    ModelCheckOutput output(int &count);

    ObjectDataBase *database = nullptr;
    quint8 line = 0;
    int errorCount = 0;
    // The EMCY routing rule looks at all lines; it speaks once per run.
    bool emcyRoutingReported = false;
    QString projectDirectory;
};
