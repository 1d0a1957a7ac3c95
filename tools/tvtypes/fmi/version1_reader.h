/// \file
/// Reading of model descriptions in FMI 1.
#pragma once

#include "exchange/xml.h"
#include "fmi/description.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::fmi {

/// Reads the names, types, causalities and units of the variables, without any check. Units have no
/// definitions. Parameters are those with that variability; an output that is a parameter or a
/// constant has the variability fixed or constant. A description with an element Implementation is
/// one for co-simulation.
class Version1Reader {
  public:
    explicit Version1Reader(Description& description) : description_(description) {}

    /// Called for the elements below the root, and for the end of the root.
    void startElement(std::string_view name, const char* const* attributes,
                      exchange::Position position);
    void endElement();

  private:
    void startVariable(const char* const* attributes, exchange::Position position);
    void readType(std::string_view name, const char* const* attributes);
    void readBase(std::string_view name, const char* const* attributes);
    void resolveTypes();
    std::uint32_t unitIndex(std::string_view name);

    Description& description_;
    std::vector<std::string_view> open_; ///< names of the elements that are read; empty for others
    std::unordered_map<std::string_view, std::uint32_t> units_; ///< indices by name
    std::vector<std::uint32_t> typeUnits_;                      ///< of the types
};

} // namespace tvtool::fmi
