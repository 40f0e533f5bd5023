#include "multiprodialect.h"

#include "objdictdialect.h"

#include <QRegularExpression>

const MultiProDialect &MultiProDialect::current()
{
    static const MultiProDialect dialect{ObjDictDialect::current(), true, false, {}};
    return dialect;
}

const MultiProDialect &MultiProDialect::older()
{
    static const MultiProDialect dialect{
        ObjDictDialect::older(),
        false,
        true,
        {
            {"\\bCORE_PROT_TYPE_", "MP_PROT_TYPE_"},
            {"\\bCORE_PROTOCOL_TYPE_T\\b", "MP_PROTOCOL_TYPE_T"},
            {"\\bCAN_LINE\\b", "CO_LINE"},
            {"\\bCAN_LINE_TYPE\\b", "CO_LINE_TYPE"},
            {"\\bCAN_MULTI_LINE_CNT\\b", "CO_MULTI_LINE_CNT"},
            {"\\bcoreStackInit\\b", "commonStackInit"},
            {"\\bRET_PARAMETER_INVALID\\b", "RET_INVALID_PARAMETER"},
            {"\\bRET_NOT_INITIALIZED\\b", "RET_SERVICE_NOT_INITIALIZED"},
            {"<icore_", "<ico_"},
            {"<core_isotp\\.h>", "<iso_tp.h>"},
        },
    };
    return dialect;
}

QString MultiProDialect::spell(const QString &text) const
{
    QString spelled = objDict.spell(text);
    for (const Spelling &spelling : spellings)
        spelled.replace(QRegularExpression(QLatin1String(spelling.pattern)), QLatin1String(spelling.replacement));
    return spelled;
}
