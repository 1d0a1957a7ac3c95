/// \file
/// Reading of the ModelStructure of a description.
#pragma once

#include "fmi/element.h"
#include "fmi/variable_finder.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tvtool::fmi {

/// Checks the unknowns of a ModelStructure from an element that the caller sets before each call.
/// Nothing is kept. Without variables before it nothing is checked but the values of attributes.
class ModelStructureReader {
  public:
    explicit ModelStructureReader(Element& element) : element_(element) {}

    /// To be called after the last variable.
    void endVariables();

    /// Begins a list of FMI 2.
    void startList(std::string_view name) { list_ = name; }
    /// Reads an unknown. In FMI 3 its name says which list it belongs to.
    void readUnknown(std::string_view name);
    /// Checks that all outputs are listed.
    void endStructure();

  private:
    void checkKind(std::uint32_t index);
    void checkDependencies();

    Element& element_;
    std::string_view list_;
    std::optional<VariableFinder> variables_;
    std::vector<std::uint8_t> properties_; ///< of each variable, as bits
};

} // namespace tvtool::fmi
