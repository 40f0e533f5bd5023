#pragma once

#include <QList>
#include <QString>

class CommonGeneratorHelperBase;
class ObjectDataBase;

// A static indication: the setting that names the application's function and the constant's text.
struct ObjDictIndication
{
    const char *key;
    const char *text;
};

// What the two stack generations write differently into gen_objdict.c and gen_vobjdict.c. Everything
// that is not here is the same for both.
struct ObjDictDialect
{
    const char *objDictTitle;
    const char *vobjDictTitle;
    // The older generation spells the storage macros CO_... instead of CORE_...
    bool olderMacros;
    const char *isotpInclude;
    // One column of type and service class ("CO_DTYPE_U8_VAR   ") instead of two.
    bool combinedTypeColumn;
    const char *mappingFiller;
    // The third column of a mapping row is CO_TRUE/CO_FALSE (numeric or not) instead of the type.
    bool mappingNumericFlag;
    const char *lineVariable;
    const char *lineCount;
    const char *lineType;
    const char *stackEntry;
    const char *invalidParameter;
    // serviceInitVars is a local of the init function and has no USDO rows.
    bool localServiceInitVars;
    // userOverwriteCobIdSettings instead of genLoadIndication.
    bool userCobIdFunction;
    // Prototypes of coCanOpenStackInit_common and coCanOpenStackInit_line in the head.
    bool commonPrototypes;
    QList<ObjDictIndication> indications;
    QList<ObjDictIndication> usdoServerIndications;
    QList<ObjDictIndication> usdoClientIndications;
    CommonGeneratorHelperBase *(*createHelper)(ObjectDataBase *store);

    static const ObjDictDialect &current();
    static const ObjDictDialect &older();

    // The text in this generation's spelling of the storage macros.
    QString spell(const QString &text) const;
};
