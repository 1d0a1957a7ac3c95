/// \file
/// Reading of connectors, types, connections and transformations.
#pragma once

#include "ssp/element_text.h"

#include <string_view>
#include <vector>

namespace tvtool::ssp {

/// The parts of an open connector, entry or parameter.
struct Signal {
    Type* type = nullptr; ///< null if none is open
    std::vector<Dimension>* dimensions = nullptr;
    std::vector<std::string_view>* values = nullptr; ///< of a parameter

    bool isConnector() const { return values == nullptr; }
};

/// Read the attributes of the element. Invalid values are errors. \{
void readConnector(ElementText& element, Connector& connector);
void readType(ElementText& element, const ElementRule& rule, const Signal& signal);
void readDimension(ElementText& element, std::vector<Dimension>& dimensions, bool isConnector);
void readConnection(ElementText& element, Connection& connection);
void readTransformation(ElementText& element, const ElementRule& rule,
                        Transformation& transformation);
void readMapEntry(ElementText& element, Transformation& transformation);
/// \}

} // namespace tvtool::ssp
