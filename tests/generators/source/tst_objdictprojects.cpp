#include "tst_objdictprojects.h"
#include "support/testprojects.h"
#include "generatorrun.h"

#include "generators/source/objdictgenerator.h"
#include "generators/source/objdictgeneratorv4.h"
#include "generators/source/vobjdictgenerator.h"
#include "generators/source/vobjdictgeneratorv4.h"
#include "headerprojects.h"
#include "support/projectbuilder.h"

#include <QDir>
#include <QFile>

#include <memory>

namespace ObjDictProjects {

namespace {

SUBINDEX_DATA_T record(const QString &name, quint16 type, const QString &access, const QString &value,
                       quint8 implementation = 0, const QString &varName = QString())
{
    SUBINDEX_DATA_T data = ProjectBuilder::subRecord(name, type, access, value);
    data.implementation = implementation;
    data.varname = varName;
    return data;
}

SUBINDEX_DATA_T mappable(SUBINDEX_DATA_T data)
{
    data.pdomapping = PDOMapping(PDOMappingType::Allowed);
    return data;
}

SUBINDEX_DATA_T limited(SUBINDEX_DATA_T data, const QString &low, const QString &high)
{
    data.limitineds = true;
    data.lowlimit = low;
    data.uplimit = high;
    return data;
}

// An object of the given code with its sub-indices from 0.
void object(ProjectBuilder &p, quint8 line, quint16 index, quint32 code, const QList<SUBINDEX_DATA_T> &subs)
{
    INDEX_DATA_T data;
    data.name = subs.value(0).name;
    data.objecttype = code;
    data.datatype = subs.value(0).datatype;
    p.object(line, index, data);
    for (int sub = 0; sub < subs.size(); ++sub)
        p.sub(line, index, quint8(sub), subs.at(sub));
}

// An ARRAY with the count in sub-index 0 and the entries from 1.
void array(ProjectBuilder &p, quint8 line, quint16 index, const QList<SUBINDEX_DATA_T> &entries)
{
    QList<SUBINDEX_DATA_T> subs{record(QStringLiteral("Highest sub-index"), 5, QStringLiteral("ro"),
                                       QString::number(entries.size()))};
    subs << entries;
    object(p, line, index, 8, subs);
}

// The objects every device has: device type, error register, identity.
void mandatory(ProjectBuilder &p, quint8 line)
{
    p.general(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    p.var(line, 0x1000, QStringLiteral("Device type"), 7, QStringLiteral("ro"), QStringLiteral("0x00000191"));
    p.var(line, 0x1001, QStringLiteral("Error register"), 5, QStringLiteral("ro"), QStringLiteral("0"));
    object(p, line, 0x1018, 9,
           {record(QStringLiteral("Highest sub-index"), 5, QStringLiteral("const"), QStringLiteral("1")),
            record(QStringLiteral("Vendor-ID"), 7, QStringLiteral("ro"), QStringLiteral("0x319"))});
}

void sdoServer(ProjectBuilder &p, quint8 line, quint16 index, const QString &rx, const QString &tx)
{
    object(p, line, index, 9,
           {record(QStringLiteral("Highest sub-index"), 5, QStringLiteral("const"), QStringLiteral("2")),
            record(QStringLiteral("COB-ID client to server"), 7, QStringLiteral("ro"), rx),
            record(QStringLiteral("COB-ID server to client"), 7, QStringLiteral("ro"), tx)});
}

// A PDO: communication object with COB-ID, transmission type and inhibit time, mapping object whose
// sub-index 0 has the access that decides static or dynamic mapping.
void pdo(ProjectBuilder &p, quint8 line, quint16 commIndex, const QString &cobId, const QString &mapAccess,
         const QStringList &entries)
{
    object(p, line, commIndex, 9,
           {record(QStringLiteral("Highest sub-index"), 5, QStringLiteral("const"), QStringLiteral("5")),
            record(QStringLiteral("COB-ID"), 7, QStringLiteral("rw"), cobId),
            record(QStringLiteral("Transmission type"), 5, QStringLiteral("rw"), QStringLiteral("255")),
            record(QStringLiteral("Inhibit time"), 6, QStringLiteral("rw"), QStringLiteral("0"))});
    p.sub(line, commIndex, 5,
          record(QStringLiteral("Event timer"), 6, QStringLiteral("rw"), QStringLiteral("0")));
    QList<SUBINDEX_DATA_T> subs{
        record(QStringLiteral("Number of mapped objects"), 5, mapAccess, QString::number(entries.size()))};
    for (const QString &entry : entries)
        subs << record(QStringLiteral("Mapping entry"), 7, mapAccess, entry);
    object(p, line, quint16(commIndex + 0x200), 9, subs);
}

void allTypes(ProjectBuilder &p)
{
    p.line(0, 1)
        .general(QStringLiteral("limit_check"), QStringLiteral("1"))
        .general(QStringLiteral("init_static_variables"), QStringLiteral("1"))
        .general(QStringLiteral("applicationheader"), QStringLiteral("app_vars.h"));
    mandatory(p, 0);
    const struct
    {
        quint16 index;
        const char *name;
        quint16 type;
        const char *value;
    } variables[] = {
        {0x2000, "Boolean", 1, "1"},
        {0x2001, "Integer8", 2, "-5"},
        {0x2002, "Integer16", 3, "-300"},
        {0x2003, "Integer32", 4, "-70000"},
        {0x2004, "Unsigned8", 5, "0x12"},
        {0x2005, "Unsigned16", 6, "4660"},
        {0x2006, "Unsigned32", 7, "0x12345678"},
        {0x2007, "Real32", 8, "1.5"},
        {0x2008, "Integer24", 16, "-2"},
        {0x2009, "Unsigned24", 22, "0x123456"},
        {0x200A, "Unsigned40", 24, "0x123456789A"},
        {0x200B, "Unsigned48", 25, "0x123456789ABC"},
        {0x200C, "Time of day", 12, "0"},
        {0x200D, "Unsigned64", 27, "0x123456789ABCDEF0"},
        {0x200E, "Unsigned3", 101, "5"},
    };
    for (const auto &variable : variables)
        object(p, 0, variable.index, 7,
               {record(QString::fromLatin1(variable.name), variable.type, QStringLiteral("rw"),
                       QString::fromLatin1(variable.value))});
    object(p, 0, 0x2010, 7,
           {limited(record(QStringLiteral("Limited speed"), 6, QStringLiteral("rw"), QStringLiteral("100")),
                    QStringLiteral("10"), QStringLiteral("0x3E8"))});
    object(p, 0, 0x2011, 7,
           {limited(record(QStringLiteral("Limited offset"), 3, QStringLiteral("rw"), QStringLiteral("0")),
                    QStringLiteral("-100"), QStringLiteral("100"))});
    object(
        p, 0, 0x2012, 7,
        {limited(record(QStringLiteral("Read-only limit"), 6, QStringLiteral("ro"), QStringLiteral("4660")),
                 QStringLiteral("1"), QStringLiteral("2"))});
    SUBINDEX_DATA_T name =
        record(QStringLiteral("Device name"), 9, QStringLiteral("const"), QStringLiteral("Kestrel"), 1);
    name.size = 7;
    object(p, 0, 0x2020, 7, {name});
    SUBINDEX_DATA_T octets =
        record(QStringLiteral("Key"), 10, QStringLiteral("const"), QStringLiteral("|x0A1b"), 1);
    octets.size = 2;
    object(p, 0, 0x2021, 7, {octets});
    SUBINDEX_DATA_T text =
        record(QStringLiteral("Label"), 124, QStringLiteral("const"), QStringLiteral("Gr\u00fc\u00dfe"), 1);
    text.size = 7;
    object(p, 0, 0x2022, 7, {text});
    object(p, 0, 0x2030, 7,
           {record(QStringLiteral("Constant u16"), 6, QStringLiteral("const"), QStringLiteral("4660"), 1)});
    object(p, 0, 0x2040, 7,
           {mappable(record(QStringLiteral("App u8"), 5, QStringLiteral("rw"), QStringLiteral("1"), 2,
                            QStringLiteral("appU8")))});
    object(p, 0, 0x2041, 7,
           {record(QStringLiteral("App u16 element"), 6, QStringLiteral("ro"), QStringLiteral("2"), 2,
                   QStringLiteral("appTable[{$i-0x2041}]"))});
    object(p, 0, 0x2042, 7,
           {record(QStringLiteral("App u24"), 22, QStringLiteral("ro"), QStringLiteral("0"), 2,
                   QStringLiteral("appU24"))});
    object(p, 0, 0x2043, 7,
           {record(QStringLiteral("App expression"), 7, QStringLiteral("ro"), QStringLiteral("0"), 2,
                   QStringLiteral("(&appStruct.value)"))});
    SUBINDEX_DATA_T appName = record(QStringLiteral("App name"), 9, QStringLiteral("rw"),
                                     QStringLiteral("abc"), 2, QStringLiteral("appName"));
    appName.size = 8;
    object(p, 0, 0x2044, 7, {appName});
    SUBINDEX_DATA_T appOctets = record(QStringLiteral("App octets"), 10, QStringLiteral("rw"), QString(), 2,
                                       QStringLiteral("appOctets"));
    appOctets.size = 4;
    object(p, 0, 0x2045, 7, {appOctets});
    object(p, 0, 0x2046, 7,
           {record(QStringLiteral("App domain"), 15, QStringLiteral("rw"), QString(), 2,
                   QStringLiteral("appDomain"))});
    SUBINDEX_DATA_T appText = record(QStringLiteral("App text"), 124, QStringLiteral("rw"), QString(), 2,
                                     QStringLiteral("appText"));
    appText.size = 6;
    object(p, 0, 0x2047, 7, {appText});
    SUBINDEX_DATA_T stored =
        record(QStringLiteral("Stored value"), 7, QStringLiteral("rw"), QStringLiteral("0x12345678"));
    stored.nvstorage = true;
    stored.defaultineds = false;
    object(p, 0, 0x2050, 7, {stored});
}

void compactArrays(ProjectBuilder &p)
{
    p.line(0, 1);
    mandatory(p, 0);
    const SUBINDEX_DATA_T entry =
        record(QStringLiteral("Entry"), 6, QStringLiteral("rw"), QStringLiteral("7"));
    array(p, 0, 0x11FF, QList<SUBINDEX_DATA_T>(3, entry));
    array(p, 0, 0x2100, QList<SUBINDEX_DATA_T>(10, entry));
    QList<SUBINDEX_DATA_T> differing(6, entry);
    differing[2].defaultvalue = QStringLiteral("8");
    array(p, 0, 0x2101, differing);
    array(p, 0, 0x2102, {entry});
    array(p, 0, 0x2103, QList<SUBINDEX_DATA_T>(6, entry));
    p.store().removeSubIndex(0, 0x2103, 3);
}

void services(ProjectBuilder &p)
{
    p.line(0, 1)
        .general(QStringLiteral("overwrite_predef"), QStringLiteral("1"))
        .general(QStringLiteral("nmtmaster"), QStringLiteral("0"))
        .general(QStringLiteral("lss_supported"), QStringLiteral("1"))
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"))
        .general(QStringLiteral("init_static_variables"), QStringLiteral("1"));
    mandatory(p, 0);
    p.var(0, 0x1005, QStringLiteral("COB-ID SYNC"), 7, QStringLiteral("rw"), QStringLiteral("0x80"));
    p.var(0, 0x1014, QStringLiteral("COB-ID EMCY"), 7, QStringLiteral("ro"), QStringLiteral("$NODEID+0x80"));
    array(p, 0, 0x1016,
          {record(QStringLiteral("Consumer heartbeat time"), 7, QStringLiteral("rw"),
                  QStringLiteral("0x00050064")),
           record(QStringLiteral("Consumer heartbeat time"), 7, QStringLiteral("rw"), QStringLiteral("0"))});
    p.var(0, 0x1017, QStringLiteral("Producer heartbeat time"), 6, QStringLiteral("rw"),
          QStringLiteral("1000"));
    sdoServer(p, 0, 0x1200, QStringLiteral("$NODEID+0x600"), QStringLiteral("$NODEID+0x580"));
    sdoServer(p, 0, 0x1201, QStringLiteral("0x80000000"), QStringLiteral("0x80000000"));
    object(
        p, 0, 0x1280, 9,
        {record(QStringLiteral("Highest sub-index"), 5, QStringLiteral("const"), QStringLiteral("3")),
         record(QStringLiteral("COB-ID client to server"), 7, QStringLiteral("rw"),
                QStringLiteral("0x80000000")),
         record(QStringLiteral("COB-ID server to client"), 7, QStringLiteral("rw"),
                QStringLiteral("0x80000000")),
         record(QStringLiteral("Node-ID of the SDO server"), 5, QStringLiteral("rw"), QStringLiteral("1"))});
    pdo(p, 0, 0x1400, QStringLiteral("$NODEID+0x200"), QStringLiteral("ro"),
        {QStringLiteral("0x20000010"), QStringLiteral("0x20010010")});
    pdo(p, 0, 0x1401, QStringLiteral("$NODEID+0x300"), QStringLiteral("ro"),
        {QStringLiteral("0x20000010"), QStringLiteral("0x20010010")});
    pdo(p, 0, 0x1402, QStringLiteral("0x80000000"), QStringLiteral("ro"),
        {QStringLiteral("0x20000008"), QStringLiteral("0x20010010")});
    pdo(p, 0, 0x1403, QStringLiteral("0x80000000"), QStringLiteral("rw"), {QStringLiteral("0x20000010")});
    pdo(p, 0, 0x1800, QStringLiteral("$NODEID+0x180"), QStringLiteral("ro"),
        {QStringLiteral("0x20020020"), QStringLiteral("0x20030008")});
    pdo(p, 0, 0x1801, QStringLiteral("0x281"), QStringLiteral("rw"), {QStringLiteral("0x20020020")});
    object(p, 0, 0x2000, 7,
           {mappable(record(QStringLiteral("Output"), 6, QStringLiteral("rww"), QStringLiteral("0")))});
    object(p, 0, 0x2001, 7,
           {mappable(record(QStringLiteral("Setpoint"), 6, QStringLiteral("rww"), QStringLiteral("0")))});
    object(p, 0, 0x2002, 7,
           {mappable(record(QStringLiteral("Counter"), 7, QStringLiteral("rwr"), QStringLiteral("0")))});
    object(p, 0, 0x2003, 7,
           {mappable(record(QStringLiteral("Status"), 5, QStringLiteral("ro"), QStringLiteral("0")))});
}

void twoLines(ProjectBuilder &p)
{
    p.line(0, 1)
        .line(1, 1)
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"))
        .general(QStringLiteral("init_static_variables"), QStringLiteral("1"))
        .general(QStringLiteral("nmtmaster"), QStringLiteral("1,0"))
        .general(QStringLiteral("overwrite_predef"), QStringLiteral("0,1"));
    for (const quint8 line : {quint8(0), quint8(1)}) {
        mandatory(p, line);
        p.var(line, 0x1017, QStringLiteral("Producer heartbeat time"), 6, QStringLiteral("rw"),
              QStringLiteral("500"));
        sdoServer(p, line, 0x1200, QStringLiteral("$NODEID+0x600"), QStringLiteral("$NODEID+0x580"));
        object(p, line, 0x2000, 7,
               {mappable(record(QStringLiteral("Output"), 6, QStringLiteral("rw"), QStringLiteral("0")))});
        pdo(p, line, 0x1400, QStringLiteral("$NODEID+0x200"), QStringLiteral("ro"),
            {QStringLiteral("0x20000010")});
        pdo(p, line, 0x1800, QStringLiteral("$NODEID+0x180"), QStringLiteral("ro"),
            {QStringLiteral("0x20000010")});
    }
    SUBINDEX_DATA_T shared =
        record(QStringLiteral("Shared value"), 7, QStringLiteral("rw"), QStringLiteral("3"));
    object(p, 0, 0x2100, 7, {shared});
    shared.sharedlines = true;
    object(p, 1, 0x2100, 7, {shared});
}

void forcedMultiLine(ProjectBuilder &p)
{
    p.line(0, 1)
        .misc(QStringLiteral("generateML"), QStringLiteral("true"))
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    mandatory(p, 0);
    p.var(0, 0x1017, QStringLiteral("Producer heartbeat time"), 6, QStringLiteral("rw"),
          QStringLiteral("500"));
}

void virtualObjects(ProjectBuilder &p)
{
    p.line(0, 1).general(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    mandatory(p, 0);
    object(
        p, 0, 0x3000, 7,
        {mappable(record(QStringLiteral("External flag"), 1, QStringLiteral("rw"), QStringLiteral("0"), 3))});
    array(p, 0, 0x3001,
          {record(QStringLiteral("External flag"), 1, QStringLiteral("ro"), QStringLiteral("0"), 3),
           record(QStringLiteral("External byte"), 5, QStringLiteral("ro"), QStringLiteral("0"), 3),
           record(QStringLiteral("External text"), 9, QStringLiteral("ro"), QStringLiteral("0"), 3)});
    object(p, 0, 0x3002, 8,
           {record(QStringLiteral("Highest sub-index"), 5, QStringLiteral("ro"), QStringLiteral("1"), 3),
            record(QStringLiteral("Stored word"), 6, QStringLiteral("rw"), QStringLiteral("0"))});
}

void stringDefaults(ProjectBuilder &p)
{
    p.line(0, 1)
        .general(QStringLiteral("generate_string_defaults"), QStringLiteral("1"))
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"))
        .general(QStringLiteral("static_memory_specifier"), QStringLiteral("far"))
        .general(QStringLiteral("applicationheader"), QStringLiteral("app_vars.h"));
    mandatory(p, 0);
    SUBINDEX_DATA_T name = record(QStringLiteral("Name"), 9, QStringLiteral("rw"),
                                  QStringLiteral("A fifteen-byte name"), 2, QStringLiteral("appName"));
    name.size = 15;
    object(p, 0, 0x2044, 7, {name});
    SUBINDEX_DATA_T octets = record(QStringLiteral("Octets"), 10, QStringLiteral("rw"),
                                    QStringLiteral("|x0102"), 2, QStringLiteral("appOctets"));
    octets.size = 4;
    object(p, 0, 0x2045, 7, {octets});
}

void camServer(ProjectBuilder &p)
{
    p.line(0, 2).j1939(QStringLiteral("cia510serversupport"), QStringLiteral("1"));
    mandatory(p, 0);
}

const QList<Project> all = {
    {"all_types", allTypes, false, false},
    {"compact", compactArrays, true, false},
    {"services", services, false, false},
    {"two_lines", twoLines, false, false},
    {"forced_multi_line", forcedMultiLine, false, false},
    {"virtual", virtualObjects, true, false},
    {"string_defaults", stringDefaults, false, false},
    {"cam_server", camServer, false, true},
};

} // namespace

const QList<Project> &projects()
{
    return all;
}

const Project *find(const QString &name)
{
    for (const Project &project : all) {
        if (QLatin1String(project.name) == name)
            return &project;
    }
    return nullptr;
}

QString goldenPath(const QString &folder, const QString &file)
{
    return QStringLiteral(KESTREL_OBJDICT_GOLDEN_DIR "/%1/%2").arg(folder, file);
}

bool generate(ObjectDataBase &store, const Project &project, bool older, const QString &folder)
{
    std::unique_ptr<ObjDictGeneratorBase> objDict;
    if (older)
        objDict = std::make_unique<ObjDictGenerator>(project.compact);
    else
        objDict = std::make_unique<ObjDictGeneratorV4>(project.compact);
    objDict->setCamMode(project.camMode);
    if (!GeneratorRun::run(*objDict, store, folder, QString::fromLatin1(project.name)))
        return false;
    if (project.camMode)
        return true;
    std::unique_ptr<VobjDictGeneratorBase> virtualObjects;
    if (older)
        virtualObjects = std::make_unique<VobjDictGenerator>(project.compact);
    else
        virtualObjects = std::make_unique<VobjDictGeneratorV4>(project.compact);
    virtualObjects->setOutputPath(folder);
    virtualObjects->setDatabase(&store);
    if (!virtualObjects->hasContent()) {
        QFile::remove(QDir(folder).filePath(QStringLiteral("gen_vobjdict.c")));
        return true;
    }
    return GeneratorRun::run(*virtualObjects, store, folder, QString::fromLatin1(project.name));
}

QStringList writtenFiles(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral("gen_*")}, QDir::Files, QDir::Name);
}

} // namespace ObjDictProjects
