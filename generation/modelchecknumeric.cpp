#include "modelchecknumeric.h"

#include "generation/modelchecker.h"
#include "generation/modelcheckoutput.h"
#include "store/objectdatabase.h"

#include <QStringList>

#include <functional>

namespace {

constexpr quint16 Integer32 = 4;
constexpr quint16 Unsigned8 = 5;
constexpr quint16 Unsigned16 = 6;
constexpr quint16 Unsigned32 = 7;

struct NumericSetting
{
    const char *key;
    quint16 dataType;
    const char *label;
};

// Labels as the settings forms show them; translated in the context of the checker.
const NumericSetting generalSettings[] = {
    {"additional_cob_count", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "Additional COB objects")},
    {"user_tx_cob", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "Additional user transmit messages")},
    {"user_rx_cob", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "Additional user receive messages")},
    {"sdo_blocktransfer_block_size", Unsigned8,
     QT_TRANSLATE_NOOP("ModelChecker", "SDO Block Transfer Block Size")},
    {"sdo_blocktransfer_min_data", Unsigned16,
     QT_TRANSLATE_NOOP("ModelChecker", "SDO Block Transfer use for data of [n] bytes or larger")},
    {"sdo_client_queue_size", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Client Queue Length")},
    {"sleep_wait_time", Integer32, QT_TRANSLATE_NOOP("ModelChecker", "Sleep Mode Waiting Time (ms)")},
    {"usdo_server_cnt", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "USDO Server Connection count")},
    {"usdo_client_cnt", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "USDO Client Connection Count")},
    {"usdo_server_domain_write_ind_size", Unsigned16,
     QT_TRANSLATE_NOOP("ModelChecker", "USDO Domain Indication size in multiple of 60 bytes")},
    {"usdo_server_ind_read_cnt", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "USDO Server Read")},
    {"usdo_server_ind_read_finished_cnt", Unsigned16,
     QT_TRANSLATE_NOOP("ModelChecker", "USDO Server Read Finished")},
    {"usdo_server_ind_write_cnt", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "USDO Server Write")},
    {"usdo_server_ind_check_write_cnt", Unsigned16,
     QT_TRANSLATE_NOOP("ModelChecker", "USDO Server Check Write")},
    {"usdo_server_ind_domain_write_cnt", Unsigned16,
     QT_TRANSLATE_NOOP("ModelChecker", "USDO Server Domain Write")},
    {"event_ssdo_domain_counter", Unsigned16,
     QT_TRANSLATE_NOOP("ModelChecker", "SDO Domain Indication Size")},
    {"event_can", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "CAN Event")},
    {"event_sdo_server_read", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Server Read")},
    {"event_sdo_server_write", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Server Write")},
    {"event_sdo_server_check_write", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Server Check Write")},
    {"event_ssdo_domain_write", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Server Domain Write")},
    {"event_ssdo_domain_read", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Server Domain Read")},
    {"event_sdo_client_read", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Client Read")},
    {"event_sdo_client_write", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Client Write")},
    {"event_sdorouter", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Network Client Event")},
    {"event_srd", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Requesting Device (SRD) event")},
    {"event_pdo", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "PDO Event")},
    {"event_pdo_update", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "PDO Update Event")},
    {"event_mpdo", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "MPDO Event")},
    {"event_nmt", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "NMT Event")},
    {"event_errctrl", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "NMT Error Control Event")},
    {"event_store", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "Store/Restore/LOAD Event")},
    {"event_gfc", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "GFC Event")},
    {"event_sync", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SYNC Event")},
    {"event_sync_finished", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SYNC Event finished")},
    {"event_finished", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "SDO Finished Event")},
    {"event_led", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "LED Event")},
    {"event_cfg", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "Configuration Manager Event")},
    {"event_flyma", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "Flying Master Event")},
};

// Not checked in a bootloader project, whose UDS settings are the bootloader's own.
const NumericSetting udsSettings[] = {
    {"uds_seedkey_length", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "Security Seed/Key Length")},
    {"uds_session_timeout", Unsigned32, QT_TRANSLATE_NOOP("ModelChecker", "Session Timeout (ms)")},
    {"uds_physical_request_id", Unsigned32,
     QT_TRANSLATE_NOOP("ModelChecker", "Physical address request CAN-ID")},
    {"uds_physical_response_id", Unsigned32,
     QT_TRANSLATE_NOOP("ModelChecker", "Physical address response CAN-ID")},
    {"uds_functional_request_id", Unsigned32,
     QT_TRANSLATE_NOOP("ModelChecker", "Functional address request CAN-ID")},
    {"uds_physical_request_ext_addr", Unsigned8,
     QT_TRANSLATE_NOOP("ModelChecker", "Physical address request: device address")},
    {"uds_physical_response_ext_addr", Unsigned8,
     QT_TRANSLATE_NOOP("ModelChecker", "Physical address response: tool address")},
    {"uds_functional_request_ext_addr", Unsigned8,
     QT_TRANSLATE_NOOP("ModelChecker", "Functional address request: device address")},
    {"uds_rdbip_canid", Unsigned32,
     QT_TRANSLATE_NOOP("ModelChecker", "Read Data by Periodic Identifier CAN-ID")},
};

const NumericSetting j1939Settings[] = {
    {"startaddress", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "Address (start address)")},
    {"identitynumber", Unsigned32, QT_TRANSLATE_NOOP("ModelChecker", "Identity Number")},
    {"manufacturercode", Unsigned16, QT_TRANSLATE_NOOP("ModelChecker", "Manufacturer Code")},
    {"ecuinstance", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "ECU Instance")},
    {"functioninstance", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "Function Instance")},
    {"function", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "Function")},
    {"vehiclesystem", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "Vehicle System")},
    {"vehicleinstance", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "Vehicle Instance")},
    {"industrygroup", Unsigned8, QT_TRANSLATE_NOOP("ModelChecker", "Industry Group")},
};

bool isUnsignedType(quint16 dataType)
{
    return dataType == 1 || dataType == 5 || dataType == 6 || dataType == 7 || dataType == 22 ||
           dataType == 24 || dataType == 25 || dataType == 27 || (dataType >= 100 && dataType <= 105);
}

bool isSignedType(quint16 dataType)
{
    return dataType == 2 || dataType == 3 || dataType == 4 || dataType == 16;
}

template<std::size_t N>
void checkTable(const NumericSetting (&table)[N], const std::function<QString(const QString &)> &read,
                ModelCheckOutput &output)
{
    for (const auto &row : table) {
        const QString value = read(QLatin1String(row.key));
        if (value.isEmpty())
            continue;
        const QStringList pieces = value.split(QLatin1Char(','));
        for (const auto &piece : pieces) {
            const QString trimmed = piece.trimmed();
            if (trimmed.isEmpty() || ModelCheckNumeric::passes(row.dataType, trimmed))
                continue;
            output.error(ModelChecker::tr("<strong>Error: </strong>\"%1\" has non-numeric value \"%2\".")
                             .arg(ModelChecker::tr(row.label), trimmed));
        }
    }
}

} // namespace

bool ModelCheckNumeric::passes(quint16 dataType, const QString &text)
{
    if (text.isEmpty() || dataType == 0 || dataType >= 106)
        return true;
    bool ok = true;
    if (isUnsignedType(dataType)) {
        if (text.contains(QLatin1String("$NODEID")))
            return true;
        text.toULongLong(&ok, 0);
    } else if (isSignedType(dataType)) {
        text.toInt(&ok, 0);
    } else if (dataType == 8) {
        text.toFloat(&ok);
    }
    return ok;
}

void ModelCheckNumeric::checkSettings(ObjectDataBase *database, ModelCheckOutput &output)
{
    const auto general = [database](const QString &key) { return database->getGeneralSetting(key); };
    checkTable(generalSettings, general, output);
    if (database->getGeneralSetting(QStringLiteral("uds_bl_setting")) != QLatin1String("1"))
        checkTable(udsSettings, general, output);
    checkTable(
        j1939Settings, [database](const QString &key) { return database->getJ1939Setting(key); }, output);
}
