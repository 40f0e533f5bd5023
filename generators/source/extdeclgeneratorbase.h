#pragma once

#include "generation/abstractgenerator.h"

#include <QStringList>

// What the two stack generations write differently into gen_extern_decl.h and gen_var_decl.c.
struct ExtDeclDialect
{
    // Behind the title lines.
    const char *titleMark;
    // The current generation always includes core_datatype.h; the older one only with core headers.
    bool coreHeadersAlways;
    // Whether UNSIGNED11, UNSIGNED13 and UNSIGNED15 are declared as UNSIGNED16.
    bool oddWidthsAsUnsigned16;
};

// gen_extern_decl.h and gen_var_decl.c: the declarations, and optional definitions, of the application
// variables that J1939 and raw CAN signals refer to. The twins of the two stack generations derive from
// this and give it their dialect.
class ExtDeclGeneratorBase : public AbstractGenerator
{
    Q_OBJECT

public:
    QString outputFile() const override;
    QString generatorName() const override;
    QString definitionsFile() const;

protected:
    ExtDeclGeneratorBase(const ExtDeclDialect &dialect, QObject *parent);

    void writeContent(QTextStream &out) override;

private:
    // What a J1939 SPN and a raw CAN data element have in common for a declaration.
    struct Signal
    {
        quint16 datatype = 0;
        quint8 implementation = 0;
        QString varname;
        quint16 bitsize = 0;
        quint32 number = 0;
        QString name;
    };

    void writeHeads(QTextStream &header, QTextStream &definitions) const;
    void writeDeclarations(QTextStream &header, QTextStream &definitions);
    void writePgns(QTextStream &header, QTextStream &definitions, quint8 line, quint8 direction);
    void writeCanIds(QTextStream &header, QTextStream &definitions, quint8 line, quint8 direction);
    void declare(QTextStream &header, QTextStream &definitions, const Signal &signal, const QString &suffix,
                 bool toDefinitions);
    // The C type of a signal, and the array part that a string needs behind the name.
    void cType(const Signal &signal, QString &type, QString &arrayPart) const;

    const ExtDeclDialect &dialect;
    QStringList declaredNames;
};
