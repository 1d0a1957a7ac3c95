/// \file
/// Reading of one file: a system, a parameter set, a mapping or a dictionary.
#pragma once

#include "exchange/source.h"
#include "ssp/references.h"

namespace tvtool::ssp {

/// Read a file whose root element is of the given kind into the package. Faults of elements are
/// findings of the file. Throw a files::ReadError if the text is not XML, has another root element
/// or exceeds a limit.
void readSystem(const exchange::Source& source, SystemFile& file, Package& package,
                References& references);
const ParameterSet& readParameterSet(const exchange::Source& source, File& file, Package& package);
const ParameterMapping& readMapping(const exchange::Source& source, File& file, Package& package);
const SignalDictionary& readDictionary(const exchange::Source& source, File& file,
                                       Package& package);

} // namespace tvtool::ssp
