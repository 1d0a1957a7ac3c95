/// \file
/// Reading of connectors, types, connections and transformations.
#pragma once

#include "ssp/element_text.h"

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::ssp {

/// The parts of an open connector, entry or parameter.
struct Signal {
    Type* type = nullptr; ///< null if none is open
    std::vector<Dimension>* dimensions = nullptr;
    std::vector<std::string_view>* values = nullptr; ///< of a parameter

    bool isConnector() const { return values == nullptr; }
};

struct PairHash {
    std::size_t operator()(const std::pair<const void*, std::string_view>& pair) const {
        return std::hash<const void*>()(pair.first) * 31 +
               std::hash<std::string_view>()(pair.second);
    }
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
