#pragma once

#include "generation/commongeneratorhelperbase.h"

// One static UDS indication: the setting that names the application's function, the macro of the UDS
// module that switches the indication on, the pointer the stack calls through, and the prototype.
struct UdsStaticIndication
{
    const char *key;
    const char *guard;
    const char *pointerType;
    const char *pointerName;
    const char *returnType;
    const char *parameters;
};

// The shared blocks of the current stack generation, with the authentication table, the bootloader's
// run-time CAN-IDs and the static UDS indications that only it knows.
class CommonGeneratorHelperV4 : public CommonGeneratorHelperBase
{
    Q_OBJECT

public:
    explicit CommonGeneratorHelperV4(ObjectDataBase *store, QObject *parent = nullptr);

    QList<quint8> udsAuthenticationServices(quint8 line) const { return authenticationServices(line); }
    QString udsAuthenticationTable(quint8 line) const { return authenticationTable(line); }
    static QString udsBootloaderInit();
    QString udsStaticIndications() const override;

    // The indications a project can bind statically, in the order the stack lists them.
    static const QList<UdsStaticIndication> &udsIndicationTable();
};
