#include "modelcheckuds.h"

#include "generation/modelchecker.h"
#include "generation/modelcheckoutput.h"
#include "store/objectdatabase.h"

#include <QStringList>

namespace {

// The callback of each service that the static indication wires up, in the order of the services.
const char *const staticIndicationFunctions[] = {
    "uds_fct_check_req_session", "uds_fct_clear_dtc_info",    "uds_fct_dtc_info",
    "uds_fct_id_data_transmit",  "uds_fct_mem_data_transmit", "uds_fct_sec_access_req_key",
    "uds_fct_req_commgt",        "uds_fct_authent_req",       "uds_fct_ioctrl",
    "uds_fct_routine_ctrl",      "uds_fct_data_transfer",     "uds_fct_generic",
};

constexpr quint8 firstLineBeyondProject = 32;

QString serverAndClientMessage()
{
    return ModelChecker::tr("<strong><font color='red'>Error: </font></strong>UDS server and UDS client "
                            "together on one line is not "
                            "possible.");
}

} // namespace

void ModelCheckUds::check(ObjectDataBase *database, int lineCount, ModelCheckOutput &output)
{
    checkServerAndClient(database, lineCount, output);
    checkStaticIndication(database, output);
}

void ModelCheckUds::checkServerAndClient(ObjectDataBase *database, int lineCount, ModelCheckOutput &output)
{
    if (database->getGeneralSetting(QStringLiteral("udsserver_supported")).toInt() == 0 ||
        database->getGeneralSetting(QStringLiteral("udsclient_supported")).toInt() == 0)
        return;
    if (lineCount == 1) {
        output.error(serverAndClientMessage());
        return;
    }
    const auto lines = database->getLines();
    for (const quint8 line : lines) {
        if (line >= firstLineBeyondProject)
            continue;
        if (database->getLineGeneralSetting(QStringLiteral("uds_server_active"), line).toInt() != 0 &&
            database->getLineGeneralSetting(QStringLiteral("uds_client_cnt"), line).toInt() != 0) {
            output.error(serverAndClientMessage());
            return;
        }
    }
}

void ModelCheckUds::checkStaticIndication(ObjectDataBase *database, ModelCheckOutput &output)
{
    if (database->getGeneralSetting(QStringLiteral("uds_static_indication")).toInt() != 1)
        return;
    QStringList seen;
    QStringList duplicates;
    for (const char *key : staticIndicationFunctions) {
        const QString name = database->getGeneralSetting(QLatin1String(key)).trimmed();
        if (name.isEmpty())
            continue;
        if (seen.contains(name)) {
            if (!duplicates.contains(name))
                duplicates << name;
        } else {
            seen << name;
        }
    }
    if (seen.isEmpty())
        output.message(
            ModelChecker::tr("<strong>Warning: </strong>Static UDS indication is enabled but no service has "
                             "a function name; no callback will be wired up."));
    for (const auto &name : std::as_const(duplicates))
        output.error(ModelChecker::tr(
                         "<strong><font color='red'>Error: </font></strong>The function name '%1' is used "
                         "for more than one UDS static indication service; each service needs its own "
                         "callback (different signature).")
                         .arg(name));
}
