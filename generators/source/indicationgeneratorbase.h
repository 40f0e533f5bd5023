#pragma once

#include "generation/abstractgenerator.h"

#include <QList>

// One application function that a project can bind statically to a stack event: the setting that
// holds the function's name, and the prototype around it.
struct IndicationFunction
{
    const char *key;
    const char *returnType;
    // The parameters behind the line parameter, with the closing parenthesis and the line end.
    const char *parameters;
};

// What the two stack generations write differently into gen_indication.h.
struct IndicationDialect
{
    const char *title;
    const char *lineParameter;
    QList<IndicationFunction> functions;
    bool udsIndications;
};

// gen_indication.h: the prototypes of the application functions that the project binds statically, so
// that the constants pointing at them compile without the application's headers. The twins of the two
// stack generations derive from this and give it their dialect.
class IndicationGeneratorBase : public AbstractGenerator
{
    Q_OBJECT

public:
    QString outputFile() const override;
    QString generatorName() const override;

protected:
    IndicationGeneratorBase(const IndicationDialect &dialect, QObject *parent);

    void writeContent(QTextStream &out) override;

private:
    void writeFunctions(QTextStream &out, const QString &lineParameter);
    void writeUdsIndications(QTextStream &out, const QString &lineParameter);
    QString functionName(const char *key) const;

    const IndicationDialect &dialect;
};
