#pragma once

#include "generation/abstractgenerator.h"

struct ObjDictDialect;

// gen_objdict.c: the compiled object dictionary of all CANopen lines of the project, with the
// functions that start the stack on it. The twins of the two stack generations derive from this and
// give it their dialect.
class ObjDictGeneratorBase : public AbstractGenerator
{
    Q_OBJECT

public:
    QString outputFile() const override;
    QString generatorName() const override;

    // The file is written for the CiA 510 SDO server of a J1939 project.
    void setCamMode(bool value) { camMode = value; }

protected:
    ObjDictGeneratorBase(const ObjDictDialect &dialect, bool compactDescription, QObject *parent);

    void prepare() override;
    void writeContent(QTextStream &out) override;
    bool compact() const { return compactDescription; }

private:
    const ObjDictDialect &dialect;
    bool compactDescription;
    bool camMode = false;
};
