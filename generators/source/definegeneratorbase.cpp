#include "definegeneratorbase.h"

#include "generation/usersection.h"

#include <QTextStream>

QString DefineGeneratorBase::outputFile() const
{
    return filePath(QStringLiteral("%1/gen_define.h"));
}

QString DefineGeneratorBase::generatorName() const
{
    return QStringLiteral("gen_define.h");
}

void DefineGeneratorBase::prepare()
{
    userSectionText = UserSection::read(outputFile());
}

void DefineGeneratorBase::writeTail(QTextStream &out) const
{
    UserSection::write(out, userSectionText);
    out << "\n#endif /* GEN_DEFINE_H */\n";
}
