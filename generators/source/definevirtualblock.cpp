#include "definevirtualblock.h"

#include "definecontext.h"
#include "definefamily.h"
#include "store/objectdatabase.h"

#include <QHash>

namespace {

constexpr quint8 virtualImplementation = 3;
constexpr quint8 deviceLine = 0;

struct VirtualType
{
    quint16 dataType;
    const char *macro;
    // Counted in the test whether the block is written at all.
    bool decides = true;
};

const VirtualType virtualTypes[] = {
    {5, "CO_VIRTUAL_U8_CNT"},  {6, "CO_VIRTUAL_U16_CNT"},         {7, "CO_VIRTUAL_U32_CNT"},
    {2, "CO_VIRTUAL_I8_CNT"},  {3, "CO_VIRTUAL_I16_CNT"},         {4, "CO_VIRTUAL_I32_CNT"},
    {8, "CO_VIRTUAL_R32_CNT"}, {22, "CO_VIRTUAL_U24_CNT", false},
};

// Strings and domains, which only the older family counts.
const VirtualType olderVirtualTypes[] = {
    {10, "CO_VIRTUAL_OS_CNT", false},
    {9, "CO_VIRTUAL_VS_CNT", false},
    {15, "CO_VIRTUAL_DOMAIN_CNT", false},
};

} // namespace

DefineVirtualBlock::DefineVirtualBlock(DefineContext &context)
    : context(context)
{}

void DefineVirtualBlock::write()
{
    if (context.state.multiProtocol)
        return;
    writeTypeCounts();
    writeTableSizes();
}

void DefineVirtualBlock::writeTypeCounts()
{
    ObjectDataBase &store = context.project.store();
    DefineWriter &out = context.out;
    QHash<quint16, qint64> perType;
    qint64 virtualObjects = 0;
    const QList<quint16> indices = store.getIndices(deviceLine, 0x1000, 0xBFFF);
    for (const quint16 index : indices) {
        bool holdsVirtual = false;
        const QList<quint8> subIndices = store.getSubIndices(deviceLine, index, 0);
        for (const quint8 subIndex : subIndices) {
            SUBINDEX_DATA_T data;
            if (store.getSubIndex(deviceLine, index, subIndex, data) &&
                data.implementation == virtualImplementation) {
                ++perType[data.datatype];
                holdsVirtual = true;
            }
        }
        if (holdsVirtual)
            ++virtualObjects;
    }
    qint64 typed = 0;
    for (const auto &type : virtualTypes) {
        if (type.decides)
            typed += perType.value(type.dataType);
    }
    if (typed == 0)
        return;
    out.text(QStringLiteral("\n"));
    out.define(QStringLiteral("CO_VIRTUAL_INDEX_CNT"), QString::number(virtualObjects) + 'u',
               QStringLiteral(" "));
    out.text(QStringLiteral("/* number of virtual objects */\n"));
    for (const auto &type : virtualTypes)
        out.count(QLatin1String(type.macro), perType.value(type.dataType));
    if (context.family().extraVirtualCounts) {
        out.count(QStringLiteral("CO_VIRTUAL_OBJECT_CNT"), virtualObjects);
        for (const auto &type : olderVirtualTypes)
            out.count(QLatin1String(type.macro), perType.value(type.dataType));
    }
    out.text(QStringLiteral("\n"));
}

void DefineVirtualBlock::writeTableSizes()
{
    ObjectDataBase &store = context.project.store();
    qint64 objects = 0;
    qint64 descriptions = 0;
    for (const quint8 line : context.project.lines()) {
        const QList<quint16> indices = store.getIndices(line, 0x1000, 0xFFFF);
        if (indices.size() <= 1)
            continue;
        for (const quint16 index : indices) {
            bool holdsVirtual = false;
            const QList<quint8> subIndices = store.getSubIndices(line, index, 0);
            for (const quint8 subIndex : subIndices) {
                SUBINDEX_DATA_T data;
                if (!store.getSubIndex(line, index, subIndex, data) ||
                    data.implementation != virtualImplementation)
                    continue;
                holdsVirtual = true;
                // A sub-index shared between lines is described once, on line 0.
                if (line == 0 || !data.sharedlines)
                    ++descriptions;
            }
            if (holdsVirtual)
                ++objects;
        }
    }
    context.out.define(QStringLiteral("CO_VOD_ASSIGN_CNT"), QString::number(objects) + 'u',
                       QStringLiteral(" "));
    context.out.define(QStringLiteral("CO_VOBJ_DESC_CNT"), QString::number(descriptions) + 'u',
                       QStringLiteral(" "));
}
