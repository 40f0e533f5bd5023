#pragma once

#include "generation/abstractgenerator.h"

#include <memory>

class CommonGeneratorHelperBase;
class PgnContext;
class PgnManagedVariables;
struct PgnDialect;

// gen_pgn.c: the J1939 configuration of a project that is J1939 alone. The multi-protocol source
// writes the same blocks into its own file through the block operations below. The twins of the two
// stack generations derive from this and give it their dialect and shared-block helper.
class PGNGeneratorBase : public AbstractGenerator
{
    Q_OBJECT

public:
    ~PGNGeneratorBase() override;

    QString outputFile() const override;
    QString generatorName() const override;
    // Writes the address claiming group into the store before the worker thread starts.
    GeneratorStatus start() override;
    // Adds PGN 60928 with the NAME fields to every line that claims an address. The argument has no
    // effect.
    void declareIdentify(bool force);

    // The blocks. openBlocks reads the project and places the managed signals; the blocks after it
    // read what it found, in any order.
    void openBlocks(bool multiLineForm);
    QString managedVariableDefinitions() const;
    QString mappingTables() const;
    QString transmitTables() const;
    QString receiveTables() const;
    QString addressClaimConfigurations() const;
    // Sets `written` when at least one line configuration was written.
    QString lineConfigurations(bool *written = nullptr) const;
    // The run-time assignments of the NAME fields under their comment.
    QString addressClaimInitialisation() const;
    // Whether the managed arrays are initialised where they are defined.
    bool staticInit() const;
    QString serviceInitRows() const;

protected:
    PGNGeneratorBase(const PgnDialect &dialect, QObject *parent);

    virtual std::unique_ptr<CommonGeneratorHelperBase> createHelper() const = 0;
    void writeContent(QTextStream &out) override;

private:
    void writeHead(QTextStream &out) const;
    QList<quint8> projectLines() const;

    const PgnDialect &dialect;
    std::unique_ptr<PgnContext> context;
    std::unique_ptr<PgnManagedVariables> variables;
};
