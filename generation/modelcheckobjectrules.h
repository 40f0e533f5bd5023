#pragma once

#include <QList>

struct ModelCheckCANopenContext;
struct SUBINDEX_DATA_T;

// The rules that every object and every sub-index of a CANopen line must follow, with the two corrections
// of sub-index 0, and the rule on variable names used twice.
class ModelCheckObjectRules
{
public:
    explicit ModelCheckObjectRules(ModelCheckCANopenContext &context);

    // Every object from 0x1000 upward, then each of its sub-indices.
    void checkObjects();
    void checkVariableNames();

private:
    void checkObject(quint16 index);
    void checkSubIndexZero(quint16 index, const QList<quint8> &subIndices);
    void checkSubIndex(quint16 index, quint8 subIndex, quint32 objectType);
    void checkRange(quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &data);
    // Whether sub-index 0 counts the sub-indices and must follow the rules of a counter.
    bool sub0Applies(quint16 index) const;

    ModelCheckCANopenContext &context;
};
