#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

class ObjectDataBase;

// The words in which the two stack generations spell the shared blocks. Each helper class holds one
// of these; everything else about the blocks is the same for both.
struct CommonHelperDialect
{
    // Init structure versions of the common, raw CAN, CANopen and J1939 modules (module types 0 to 3).
    quint8 structVersions[4];
    const char *commonInitHead;
    const char *bufferCountRows;
    // Protocol text of a line type from 0 to 7; null for a type without a text.
    const char *protocolTexts[8];
    const char *unknownProtocol;
    const char *udsProtocolSuffix;
    // What a single raw CAN line of a bootloader project is; null where the generation has no such type.
    const char *udsOnlyProtocol;
    const char *isotpServerRow;
    // Extra indent of the UDS declarations and tables, which the older generation writes inside a function.
    const char *declarationIndent;
    const char *serviceInitHead;
    const char *lineInitHead;
    // Indent of the init calls inside the stack's init function.
    const char *callIndent;
    bool tableComments;
    // The older generation knows neither the periodic identifier CAN-ID nor authentication; its active
    // flag closes the per-line structure.
    bool periodicIdRow;
    bool authentication;
    bool activeFlagEndsStructure;
    // Bootloader projects fill the per-line structure at run time, so it must not be constant.
    bool bootloaderStructures;
};

// Text blocks that several source generators share: the common init structure, the UDS service and
// per-line structures with their tables, and the calls that hand them to the stack. The twins of the
// two stack generations derive from this and give it their dialect.
class CommonGeneratorHelperBase : public QObject
{
    Q_OBJECT

public:
    // Module types of initStructVersion.
    enum ModuleType : quint8
    {
        CommonModule = 0,
        RawCanModule = 1,
        CANopenModule = 2,
        J1939Module = 3,
        UdsModule = 5
    };

    quint8 initStructVersion(quint8 moduleType) const;
    QString commonInitText() const;
    QString udsDeclarations() const;
    QString udsSessionTable(quint8 line) const;
    QString udsSecurityTable(quint8 line) const;
    static QString sessionText(quint32 session);
    static QString sessionTableName(quint8 line);
    QString securityTableName(quint8 line) const;
    QString securityRowCount(quint8 line) const;
    QString udsCommonInit() const;
    QString udsLineInit(quint8 line, bool multiLine) const;
    // The constants through which the stack calls the application's UDS functions; the older
    // generation binds them at run time only.
    virtual QString udsStaticIndications() const { return QString(); }

protected:
    CommonGeneratorHelperBase(ObjectDataBase *store, const CommonHelperDialect &dialect, QObject *parent);

    QList<quint8> authenticationServices(quint8 line) const;
    QString authenticationTable(quint8 line) const;

    // The lines below 32, in the store's order.
    QList<quint8> lineList() const;
    bool udsIsOn() const;
    QString setting(const QString &key) const;

    ObjectDataBase *database;

private:
    QString protocolText(int lineType) const;
    QString protocolList() const;
    int udsVersion() const;
    int sessionRowCount(quint8 line) const;
    QString lineStructure(quint8 line, int version, const QList<QStringList> &lists) const;
    // The service rows of a session or security table, one block per service, every row with its comma.
    QString serviceRows(quint8 line, bool security) const;
    QString closeTable(QString text) const;

    const CommonHelperDialect &dialect;
    QMap<quint8, QString> serviceNames;
};
