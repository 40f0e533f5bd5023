#pragma once

#include "generation/abstractgenerator.h"
#include "generators/documents/dbc/kvadb.h"

#include <QMap>

struct PGN;
struct SPN;

// The DBC file of a J1939 line, built through the DBC library: the parameter groups of the line with
// the J1939 attribute set, and the acknowledgement and, if configured, DM1, which the project doesn't hold.
class DBCGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    explicit DBCGenerator(QObject *parent = nullptr);

    GeneratorStatus start() override;
    QString outputFile() const override;
    QString generatorName() const override { return QStringLiteral("DBC File"); }

public slots:
    void doJob() override;

protected:
    // The library writes the file; doJob copies it into place.
    void writeContent(QTextStream &) override {}

private:
    struct FixedSignal
    {
        const char *name;
        int startBit;
        int length;
    };

    void addAddressClaim();
    bool prepareOutput(const QString &tempName);
    void defineAttributes();
    KvaDbAttributeDefHnd define(const char *name, int owner, int type);
    KvaDbAttributeDefHnd defineInt(const char *name, int owner, int defaultValue, int min, int max);
    KvaDbAttributeDefHnd defineEnum(const char *name, int owner, const QMap<int, QString> &names,
                                    int defaultIndex);
    void addParameterGroups(quint8 direction, quint8 configuredAddress, quint8 &ownAddress);
    void addParameterGroup(const PGN &pgn, quint8 ownAddress);
    quint32 addSignal(KvaDbMessageHnd message, const SPN &spn, quint32 position);
    void addFixedMessage(const QString &name, quint32 id, const FixedSignal *fixedSignals, size_t count);
    KvaDbMessageHnd addMessage(const QString &name, quint32 id);
    void setMessageAttribute(KvaDbMessageHnd message, KvaDbAttributeDefHnd definition, int value,
                             const char *errorText = "Error kvaDbAddMsgAttribute");
    void setSignalAttribute(KvaDbSignalHnd signal, KvaDbAttributeDefHnd definition, int value);
    quint8 configuredAddress();
    // Puts the file the library wrote in its place beside the project.
    void copyToTarget(const QString &tempName);

    QMap<int, QString> sigTypeNames;
    KvaDbHnd dbc = nullptr;
    KvaDbAttributeDefHnd cycleTimeDef = nullptr;
    KvaDbAttributeDefHnd sendTypeDef = nullptr;
    KvaDbAttributeDefHnd sigTypeDef = nullptr;
    KvaDbAttributeDefHnd frameFormatDef = nullptr;
    KvaDbAttributeDefHnd spnDef = nullptr;
    KvaDbAttributeDefHnd implTypeDef = nullptr;
    KvaDbAttributeDefHnd varNameDef = nullptr;
    KvaDbAttributeDefHnd bitSizeDef = nullptr;
    bool implInfo = false;
    bool canFd = false;
};
