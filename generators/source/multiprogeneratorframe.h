#pragma once

#include "multiprocontext.h"
#include "multiprodialect.h"
#include "multiprowriter.h"

#include "generation/abstractgenerator.h"
#include "store/objectdatabase.h"
#include "texttools/filepermissions.h"

#include <QFileInfo>

// The multi-protocol source of a generation: a dictionary generator of that generation that holds a
// PGN generator of it for the J1939 blocks, and writes gen_mp.c, gen_rawcan.c or gen_uds.c in place of
// gen_objdict.c and gen_pgn.c.
template<class ObjDictFamily, class PgnFamily> class MultiProGeneratorFrame : public ObjDictFamily
{
public:
    QString outputFile() const override { return this->filePath(flags.filePattern()); }
    QString generatorName() const override { return QStringLiteral("gen_mp.c"); }

    // The file's name is known only when the run has read the project, so the dictionary's is checked.
    bool isOutputWritable() override
    {
        const QString file = ObjDictFamily::outputFile();
        return !QFileInfo::exists(file) || FilePermissions::isWritable(file);
    }

    GeneratorStatus start() override
    {
        if (this->running)
            return GeneratorStatus::Busy;
        flags = MultiProFlags();
        if (this->database) {
            this->forcedMultiLine =
                this->database->getMiscSetting(QStringLiteral("generateML")) == QLatin1String("true");
            this->multiLine = MultiProContext::projectLines(*this->database).size() > 1 || this->forcedMultiLine;
            pgnGenerator.setDatabase(this->database);
            pgnGenerator.setLine(0);
            pgnGenerator.setMultiLine(this->multiLine);
            pgnGenerator.declareIdentify(true);
        }
        return AbstractGenerator::start();
    }

protected:
    MultiProGeneratorFrame(const MultiProDialect &dialect, bool compactDescription, QObject *parent)
        : ObjDictFamily(compactDescription, parent)
        , dialect(dialect)
    {}

    void prepare() override
    {
        if (this->database)
            flags = MultiProFlags::read(*this->database, this->multiLine || this->forcedMultiLine,
                                        dialect.bootloader);
    }

    void writeContent(QTextStream &out) override
    {
        if (!this->database)
            return;
        MultiProContext context(*this->database, dialect, flags, this->compact());
        context.objDict.projectName = this->projectName;
        context.objDict.outputPath = this->outputPath;
        context.objDict.toolVersion = this->toolVersion;
        MultiProWriter(context, pgnGenerator).write(out);
        emit this->progress(75);
    }

private:
    const MultiProDialect &dialect;
    MultiProFlags flags;
    PgnFamily pgnGenerator;
};
