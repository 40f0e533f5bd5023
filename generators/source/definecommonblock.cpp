#include "definecommonblock.h"

#include "definecontext.h"

DefineCommonBlock::DefineCommonBlock(DefineContext &context)
    : context(context)
{}

void DefineCommonBlock::write()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const qint64 userTransmit = project.generalNumber(QStringLiteral("user_tx_cob"));
    const qint64 userReceive = project.generalNumber(QStringLiteral("user_rx_cob"));
    if (userTransmit > 0)
        out.count(QStringLiteral("USER_TRANSMIT_MSG_CNT"), userTransmit);
    if (userReceive > 0)
        out.count(QStringLiteral("USER_RECEIVE_MSG_CNT"), userReceive);
    if (userTransmit > 0 || userReceive > 0)
        out.flag(QStringLiteral("CORE_USER_EXTENSION_SUPPORTED"));
    if (project.generalOn(QStringLiteral("sorted_coblist"))) {
        out.text(QStringLiteral("/* Use of sorted COB list*/\n"));
        out.flag(QStringLiteral("CORE_COB_SORTED_LIST"));
        out.text(QStringLiteral("\n"));
    }
    if (project.generalOn(QStringLiteral("only_one_hb_buffer")))
        out.flag(QStringLiteral("CO_ONE_HB_CONSUMER_COB"));
    out.text(QStringLiteral("/* Definition of CAN queue sizes */\n"));
    out.count(QStringLiteral("CORE_CONFIG_REC_BUFFER_CNT"),
              project.bufferSum(QStringLiteral("receivebuffersize"), QStringLiteral("10")));
    out.count(QStringLiteral("CORE_CONFIG_TRANS_BUFFER_CNT"),
              project.bufferSum(QStringLiteral("transmitbuffersize"), QStringLiteral("5")));
    if (context.state.canFd)
        out.flag(QStringLiteral("CORE_CANFD_SUPPORTED"));
    out.text(QStringLiteral("\n"));
}
