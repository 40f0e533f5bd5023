#pragma once

#include <QList>
#include <QString>

#include <memory>

class AbstractGenerator;

// Every output file of a run, in the words of the driver.
enum class GeneratorKind {
    Indices,
    TextDoc,
    Html,
    ObjDict,
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
    ExtDecl,
    Sdm,
    Indication,
    Csv,
    Icsv,
    Eds,
    Xdd,
};

// How a generator is built for one step of a run.
struct GeneratorOptions
{
    bool currentFamily = true;
    bool compact = false;
    bool camMode = false;
    bool staticSrdo = false;
    bool specialVirtualObjects = false;
    bool disableDocu = false;
    QString edsVariant;
    bool fd = false;
    bool classical = false;
    // The lines of the run, for generators that walk them all.
    QList<quint8> lines;
};

// Builds the generators of a run. The driver knows only this interface; the one place that knows every
// generator class implements it, so that a new generator is one line there.
class GeneratorFactory
{
public:
    virtual ~GeneratorFactory() = default;
    // Null when no generator of that kind exists.
    virtual std::unique_ptr<AbstractGenerator> create(GeneratorKind kind, const GeneratorOptions &options) const = 0;
};
