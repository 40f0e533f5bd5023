#include "multiprogeneratorv4.h"

MultiProGeneratorV4::MultiProGeneratorV4(bool compactDescription, QObject *parent)
    : MultiProGeneratorFrame(MultiProDialect::current(), compactDescription, parent)
{}
