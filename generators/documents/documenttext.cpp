#include "documenttext.h"

QString DocumentText::hex(quint32 value, int digits)
{
    return QStringLiteral("0x") + QStringLiteral("%1").arg(value, digits, 16, QLatin1Char('0')).toUpper();
}
