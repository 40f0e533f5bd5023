#include "definepdoblock.h"

#include "definecobcounter.h"
#include "definecontext.h"
#include "store/objectdatabase.h"

#include <QHash>

namespace {

struct IndexRange
{
    quint16 first;
    quint16 last;
};

constexpr IndexRange transmitMappings{0x1A00, 0x1BFF};
constexpr IndexRange receiveMappings{0x1600, 0x17FF};

// Multiplexed PDOs: a mapping count of 254 is a source address mode PDO, above it a destination
// address mode PDO.
constexpr qint64 samMapping = 254;

// Data types of the objects that a static SRDO maps, and the macros that count them.
struct SrdoEntryType
{
    quint16 dataType;
    const char *macro;
};

const SrdoEntryType srdoEntryTypes[] = {
    {5, "SRDO_OD_ENTRY_U8_CNT"},   {6, "SRDO_OD_ENTRY_U16_CNT"}, {7, "SRDO_OD_ENTRY_U32_CNT"},
    {27, "SRDO_OD_ENTRY_U64_CNT"}, {2, "SRDO_OD_ENTRY_I8_CNT"},  {3, "SRDO_OD_ENTRY_I16_CNT"},
    {4, "SRDO_OD_ENTRY_I32_CNT"},  {8, "SRDO_OD_ENTRY_R32_CNT"},
};

// Services that exist as soon as a line has their object.
struct ObjectService
{
    quint16 index;
    const char *macro;
};

} // namespace

DefinePdoBlock::DefinePdoBlock(DefineContext &context)
    : context(context)
{}

void DefinePdoBlock::write(bool extendedTypes, bool utf8Type)
{
    writePdos();
    writeSrdos();
    writeMpdos();
    writeMasterServices();
    writeEmergency();
    writeSdoOptions();
    writeClosing(extendedTypes, utf8Type);
}

bool DefinePdoBlock::anyLineHas(quint16 index) const
{
    for (const quint8 line : context.project.lineList()) {
        if (context.project.exists(line, index))
            return true;
    }
    return false;
}

qint64 DefinePdoBlock::entriesBehindSubZero(quint16 index) const
{
    qint64 sum = 0;
    for (const quint8 line : context.project.lineList()) {
        const int entries = context.project.subs0(line, index);
        if (entries > 1)
            sum += entries - 1;
    }
    return sum;
}

void DefinePdoBlock::writePdos()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    qint64 transmit = 0;
    qint64 receive = 0;
    bool receiveTimer = false;
    for (const quint8 line : project.lineList()) {
        transmit += project.objects(line, transmitMappings.first, transmitMappings.last);
        receive += project.objects(line, receiveMappings.first, receiveMappings.last);
        const QList<quint16> parameters = project.store().getIndices(line, 0x1400, 0x15FF);
        for (const quint16 index : parameters)
            receiveTimer = receiveTimer || project.store().subIndexExists(line, index, 5);
    }
    if (transmit != 0)
        out.count(QStringLiteral("CO_PDO_TRANSMIT_CNT"), transmit);
    if (receive != 0)
        out.count(QStringLiteral("CO_PDO_RECEIVE_CNT"), receive);
    if (receiveTimer)
        out.flag(QStringLiteral("CO_PDO_REC_TIMER_SUPPORTED"));
}

void DefinePdoBlock::writeSrdos()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    QList<qint64> counts;
    qint64 sum = 0;
    for (const quint8 line : project.lineList()) {
        counts << project.objects(line, 0x1301, 0x137F);
        sum += counts.last();
    }
    if (sum == 0)
        return;
    out.flag(QStringLiteral("CO_SRDO_SUPPORTED"));
    out.define(QStringLiteral("CO_SRDO_COUNTS"), DefineWriter::countList(counts));
    out.count(QStringLiteral("CO_SRDO_CNT"), sum);
    if (project.generalIsOne(QStringLiteral("ignore_srdo_data_validation")))
        out.flag(QStringLiteral("CO_SRDO_IGNORE_DATA_STATE"));
    if (project.generalIsOne(QStringLiteral("static_srdo_data")))
        writeSrdoEntries();
}

void DefinePdoBlock::writeSrdoEntries()
{
    const DefineProject &project = context.project;
    ObjectDataBase &store = project.store();
    QHash<quint16, qint64> perType;
    for (const quint8 line : project.lineList()) {
        if (project.objects(line, 0x1301, 0x137F) == 0)
            continue;
        const QList<quint16> mappings = store.getIndices(line, 0x1381, 0x13C0);
        for (const quint16 index : mappings) {
            const qint64 entries = project.defaultNumber(line, index, 0);
            for (qint64 subIndex = 1; subIndex <= entries && subIndex <= 0xFF; ++subIndex) {
                if (!store.subIndexExists(line, index, quint8(subIndex)))
                    continue;
                const quint32 entry = quint32(project.defaultNumber(line, index, quint8(subIndex)));
                const quint16 mappedIndex = quint16(entry >> 16);
                const quint8 mappedSub = quint8(entry >> 8);
                ++perType[store.getSubIndexDataType(line, mappedIndex, mappedSub)];
            }
        }
    }
    for (const auto &type : srdoEntryTypes) {
        const qint64 count = perType.value(type.dataType);
        if (count != 0)
            context.out.count(QLatin1String(type.macro), count);
    }
}

void DefinePdoBlock::writeMpdos()
{
    const DefineProject &project = context.project;
    ObjectDataBase &store = project.store();
    DefineWriter &out = context.out;
    bool producer = false;
    bool consumer = false;
    bool dam = false;
    int maxEntries = 0;
    qint64 transmitDynamic = 0;
    qint64 receiveDynamic = 0;
    for (const quint8 line : project.lineList()) {
        for (const IndexRange range : {transmitMappings, receiveMappings}) {
            const bool transmit = range.first == transmitMappings.first;
            const QList<quint16> mappings = store.getIndices(line, range.first, range.last);
            for (const quint16 index : mappings) {
                const qint64 mapped = project.defaultNumber(line, index, 0);
                if (mapped >= samMapping)
                    (transmit ? producer : consumer) = true;
                samSeen = samSeen || mapped == samMapping;
                dam = dam || mapped > samMapping;
                maxEntries = qMax(maxEntries, project.subs0(line, index) - 1);
                SUBINDEX_DATA_T count;
                if (store.getSubIndex(line, index, 0, count) && count.accesstype == QLatin1String("rw"))
                    ++(transmit ? transmitDynamic : receiveDynamic);
            }
        }
    }
    if (producer)
        out.define(QStringLiteral("CO_MPDO_PRODUCER"), QStringLiteral("1"));
    if (consumer)
        out.define(QStringLiteral("CO_MPDO_CONSUMER"), QStringLiteral("1"));
    if (samSeen)
        out.flag(QStringLiteral("CO_MPDO_SAM"));
    if (dam)
        out.flag(QStringLiteral("CO_MPDO_DAM"));
    if (maxEntries > 0)
        out.count(QStringLiteral("CO_MAX_MAP_ENTRIES"), maxEntries);
    if (transmitDynamic != 0)
        out.count(QStringLiteral("CO_TR_PDO_DYN_MAP_ENTRIES"), transmitDynamic);
    if (receiveDynamic != 0)
        out.count(QStringLiteral("CO_REC_PDO_DYN_MAP_ENTRIES"), receiveDynamic);
    if (project.generalIsOne(QStringLiteral("bitwise_mapping")) && maxEntries > 0)
        out.flag(QStringLiteral("CO_PDO_BIT_MAPPING"));
}

void DefinePdoBlock::writeMasterServices()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const qint64 heartbeats = entriesBehindSubZero(0x1016);
    if (heartbeats != 0)
        out.define(QStringLiteral("CO_HB_CONSUMER_CNT"), QString::number(heartbeats) + 'u',
                   QStringLiteral(" "));
    if (anyLineHas(0x1005))
        out.flag(QStringLiteral("CO_SYNC_SUPPORTED"));
    if (project.generalOn(QStringLiteral("bootup_manager")))
        out.flag(QStringLiteral("CO_BOOTUP_MANAGER"));
    qint64 slaves = 0;
    qint64 maxSlaves = 0;
    const qint64 maxPerLine = project.generalNumber(QStringLiteral("max_slave_assignment"));
    for (const quint8 line : project.lineList()) {
        slaves += project.subs(line, 0x1F81);
        if (project.exists(line, 0x1F81))
            maxSlaves += maxPerLine;
    }
    if (maxSlaves == 0)
        maxSlaves = slaves;
    out.count(QStringLiteral("CO_SLAVE_ASSIGNMENT_CNT"), slaves);
    out.count(QStringLiteral("CO_MAX_SLAVE_ASSIGNMENT_CNT"), maxSlaves);
    if (maxSlaves != 0)
        out.text(QStringLiteral("#define CO_GUARDING_CNT CO_MAX_SLAVE_ASSIGNMENT_CNT\n"));
    if (project.generalOn(QStringLiteral("config_manager")))
        out.flag(QStringLiteral("CO_CFG_MANAGER"));
}

void DefinePdoBlock::writeEmergency()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    static const ObjectService objectServices[] = {
        {0x1014, "CO_EMCY_PRODUCER"},
        {0x1F10, "CO_SRD_SUPPORTED"},
        {0x100C, "CO_GUARDING_SLAVE"},
    };
    for (const auto &service : objectServices) {
        if (anyLineHas(service.index))
            out.flag(QLatin1String(service.macro));
    }
    if (project.generalIsOne(QStringLiteral("1010autostore_by_application")))
        out.flag(QStringLiteral("CO_AUTO_STORE_HANDLED_BY_APPLICATION"));
    if (anyLineHas(0x1010) || anyLineHas(0x1011)) {
        out.flag(QStringLiteral("CO_STORE_SUPPORTED"));
        writeNvsCounts();
    }
    const qint64 consumers = entriesBehindSubZero(0x1028);
    if (consumers != 0)
        out.define(QStringLiteral("CO_EMCY_CONSUMER_CNT"), QString::number(consumers) + 'u',
                   QStringLiteral(" "));
    const qint64 history = entriesBehindSubZero(0x1003);
    if (history != 0)
        out.define(QStringLiteral("CO_EMCY_ERROR_HISTORY"), QString::number(history) + 'u',
                   QStringLiteral(" "));
    if (context.state.canFd) {
        qint64 activeErrors = 0;
        for (const quint8 line : project.lineList())
            activeErrors += project.subs(line, 0x1032);
        if (activeErrors != 0)
            out.count(QStringLiteral("CO_EMCY_ACTIVE_ERROR_LIST"), activeErrors);
    }
    if (anyLineHas(0x1012))
        out.flag(QStringLiteral("CO_TIME_SUPPORTED"));
}

void DefinePdoBlock::writeNvsCounts()
{
    ObjectDataBase &store = context.project.store();
    QList<qint64> counts;
    for (const quint8 line : context.project.lineList()) {
        qint64 stored = 0;
        const QList<quint16> indices = store.getIndices(line, 0x1000, 0xFFFF);
        for (const quint16 index : indices) {
            const QList<quint8> subIndices = store.getSubIndices(line, index, 0);
            for (const quint8 subIndex : subIndices) {
                SUBINDEX_DATA_T data;
                if (store.getSubIndex(line, index, subIndex, data) && data.nvstorage)
                    ++stored;
            }
        }
        counts << stored;
    }
    context.out.define(QStringLiteral("CO_STORE_NVS_CNT"), DefineWriter::countList(counts));
}

void DefinePdoBlock::writeSdoOptions()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const QString twoTabs = QStringLiteral("\t\t");
    if (project.generalIsOne(QStringLiteral("sdo_blocktransfer_supported"))) {
        out.define(QStringLiteral("CO_SDO_BLOCK"), QStringLiteral("1u"), twoTabs);
        const quint8 blockSize =
            quint8(project.generalNumber(QStringLiteral("sdo_blocktransfer_block_size")));
        out.count(QStringLiteral("CO_SDO_BLOCK_SIZE"), blockSize == 0 ? 32 : blockSize);
        const qint64 minimum = project.generalNumber(QStringLiteral("sdo_blocktransfer_min_data"));
        out.count(QStringLiteral("CO_SDO_BLOCK_MIN_SIZE"), minimum == 0 ? 64 : minimum);
        if (project.generalIsOne(QStringLiteral("sdo_blocktransfer_crc_supported")))
            out.flag(QStringLiteral("CO_SDO_BLOCK_CRC"));
    }
    if (project.generalIsOne(QStringLiteral("sdo_client_queue_supported"))) {
        out.define(QStringLiteral("CO_SDO_QUEUE"), QStringLiteral("1u"), twoTabs);
        out.count(QStringLiteral("CO_SDO_QUEUE_LEN"),
                  project.generalNumber(QStringLiteral("sdo_client_queue_size")));
        if (project.generalIsOne(QStringLiteral("sdo_client_queue_internal_access_supported")))
            out.define(QStringLiteral("CO_SDOQUEUE_INTERNAL_ACCESS"), QStringLiteral("1u"), twoTabs);
    }
    if (project.generalOn(QStringLiteral("limit_check")))
        out.define(QStringLiteral("CO_CONFIG_LIMIT_CHECK"), QStringLiteral("1u"), twoTabs);
    const qint64 domains = project.generalNumber(QStringLiteral("event_ssdo_domain_counter"));
    if (domains != 0)
        out.count(QStringLiteral("CO_SSDO_DOMAIN_CNT"), domains);
    if (project.generalOn(QStringLiteral("sdo_split")))
        out.define(QStringLiteral("CO_SDO_SPLIT_INDICATION"), QStringLiteral("1u"), twoTabs);
}

void DefinePdoBlock::writeClosing(bool extendedTypes, bool utf8Type)
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    DefineState &state = context.state;
    const QString twoTabs = QStringLiteral("\t\t");
    // Also after `config_manager`: a configuration object makes the manager as well.
    if (anyLineHas(0x1F20) || anyLineHas(0x1F22))
        out.flag(QStringLiteral("CO_CFG_MANAGER"));
    if (project.store().getDescriptionSetting(QStringLiteral("SelfStarting")) == QLatin1String("1"))
        out.flag(QStringLiteral("CO_SELF_STARTING_DEVICE"));
    if (extendedTypes || samSeen)
        out.define(QStringLiteral("CO_EXTENDED_DATA_TYPES"), QStringLiteral("1u"), twoTabs);
    if (utf8Type)
        out.define(QStringLiteral("CO_UTF8_DATA_TYPE"), QStringLiteral("1u"), twoTabs);
    bool inhibit = anyLineHas(0x1015) || anyLineHas(0x102A);
    for (const quint8 line : project.lineList()) {
        const QList<quint16> parameters = project.store().getIndices(line, 0x1800, 0x19FF);
        for (const quint16 index : parameters)
            inhibit = inhibit || project.store().subIndexExists(line, index, 3);
    }
    if (inhibit && !state.inhibitWritten) {
        out.flag(QStringLiteral("CORE_INHIBIT_SUPPORTED"));
        state.inhibitWritten = true;
    }
    if (!state.multiProtocol) {
        out.text(QStringLiteral("/* number of used COB objects */\n"));
        out.count(QStringLiteral("CORE_COB_CNT"),
                  DefineCobCounter(context).canopenCount(DefineCobCounter::AllLines));
    }
}
