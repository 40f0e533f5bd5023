#include "settingskeys.h"

const QStringList &SettingsKeys::perLineGeneralKeys()
{
    static const QStringList keys{
        QStringLiteral("nmtmaster"),
        QStringLiteral("co_node_id"),
        QStringLiteral("co_node_id_fct"),
        QStringLiteral("overwrite_predef"),
        QStringLiteral("receivebuffersize"),
        QStringLiteral("transmitbuffersize"),
        QStringLiteral("isotp_client_con"),
        QStringLiteral("isotp_server_con"),
        QStringLiteral("uds_physical_request_id"),
        QStringLiteral("uds_physical_response_id"),
        QStringLiteral("uds_functional_request_id"),
        QStringLiteral("uds_physical_request_ext_addr"),
        QStringLiteral("uds_physical_response_ext_addr"),
        QStringLiteral("uds_functional_request_ext_addr"),
        QStringLiteral("uds_ext_addressing"),
        QStringLiteral("uds_rdbip_canid"),
        QStringLiteral("uds_server_active"),
        QStringLiteral("uds_client_cnt"),
        QStringLiteral("usdo_server_cnt"),
        QStringLiteral("usdo_client_cnt"),
        QStringLiteral("usdo_server_enabled"),
        QStringLiteral("usdo_client_enabled"),
    };
    return keys;
}

const QStringList &SettingsKeys::lineExtendedGeneralKeys()
{
    static const QStringList keys = perLineGeneralKeys().mid(0, 11);
    return keys;
}

const QStringList &SettingsKeys::perLineJ1939Keys()
{
    static const QStringList keys{
        QStringLiteral("identitynumber"), QStringLiteral("manufacturercode"), QStringLiteral("ecuinstance"),
        QStringLiteral("functioninstance"), QStringLiteral("function"), QStringLiteral("vehiclesystem"),
        QStringLiteral("vehicleinstance"), QStringLiteral("industrygroup"), QStringLiteral("startaddress"),
    };
    return keys;
}

const QList<QPair<QString, QString>> &SettingsKeys::descriptionDefaults()
{
    static const QList<QPair<QString, QString>> defaults{
        {QStringLiteral("BaudRate_10"), QStringLiteral("0")},
        {QStringLiteral("BaudRate_20"), QStringLiteral("0")},
        {QStringLiteral("BaudRate_50"), QStringLiteral("0")},
        {QStringLiteral("BaudRate_125"), QStringLiteral("1")},
        {QStringLiteral("BaudRate_250"), QStringLiteral("1")},
        {QStringLiteral("BaudRate_500"), QStringLiteral("0")},
        {QStringLiteral("BaudRate_800"), QStringLiteral("0")},
        {QStringLiteral("BaudRate_1000"), QStringLiteral("0")},
        {QStringLiteral("Dummy0001"), QStringLiteral("0")},
        {QStringLiteral("Dummy0002"), QStringLiteral("0")},
        {QStringLiteral("Dummy0003"), QStringLiteral("0")},
        {QStringLiteral("Dummy0004"), QStringLiteral("0")},
        {QStringLiteral("Dummy0005"), QStringLiteral("0")},
        {QStringLiteral("Dummy0006"), QStringLiteral("0")},
        {QStringLiteral("Dummy0007"), QStringLiteral("0")},
        {QStringLiteral("LSS_Supported"), QStringLiteral("0")},
        {QStringLiteral("SelfStarting"), QStringLiteral("0")},
        {QStringLiteral("VendorName"), QString()},
        {QStringLiteral("ProductName"), QString()},
        {QStringLiteral("CreatedBy"), QString()},
        {QStringLiteral("ModifiedBy"), QString()},
        {QStringLiteral("FileVersion"), QStringLiteral("1")},
        {QStringLiteral("FileRevision"), QStringLiteral("1")},
        {QStringLiteral("OrderCode"), QStringLiteral("0815-BUY-ME")},
        {QStringLiteral("Granularity"), QStringLiteral("0")},
        {QStringLiteral("Comment"), QString()},
        {QStringLiteral("AdditionalSections"), QString()},
    };
    return defaults;
}
