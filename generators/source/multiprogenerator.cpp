#include "multiprogenerator.h"

MultiProGenerator::MultiProGenerator(bool compactDescription, QObject *parent)
    : MultiProGeneratorFrame(MultiProDialect::older(), compactDescription, parent)
{}
