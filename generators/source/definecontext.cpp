#include "definecontext.h"

#include <QCoreApplication>

namespace {

// The CAN state call-backs that a CiA profile device registers itself.
constexpr qint64 profileCanIndications = 4;

} // namespace

bool DefineContext::multi() const
{
    return project.lines().size() > 1 || state.forcedMultiLine;
}

void DefineContext::writeDynamicCan(qint64 value, bool profileFloor)
{
    if (profileFloor && state.profileSeen)
        value = qMax(value, profileCanIndications);
    if (value > 0 && !state.dynamicCanWritten) {
        out.count(QStringLiteral("CORE_EVENT_DYNAMIC_CAN"), value);
        state.dynamicCanWritten = true;
    }
}

bool DefineContext::rawCanEdition()
{
    return QCoreApplication::applicationName() == QLatin1String("CAN Kestrel");
}

bool DefineContext::energyBusEdition()
{
    return QCoreApplication::applicationName() == QLatin1String("EnergyBus Kestrel Wizard");
}
