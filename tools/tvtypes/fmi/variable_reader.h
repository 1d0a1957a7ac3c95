/// \file
/// Reading of the variables of a description.
#pragma once

#include "fmi/element.h"
#include "fmi/unit_reader.h"

#include <cstdint>

namespace tvtool::fmi {

/// Reads variables from an element that the caller sets before each call.
class VariableReader {
  public:
    VariableReader(Element& element, UnitReader& units) : element_(element), units_(units) {}

    void startVariable(BaseType base);
    void readBase(BaseType base);
    void readDimension();
    /// Reads a start value: texts and bytes of FMI 3 have an element for each.
    void readStart();
    void readAlias();
    void endVariable();

  private:
    Variable& variable() { return element_.description.variables.back(); }

    void readReferences();
    void readSize();

    Element& element_;
    UnitReader& units_;
};

} // namespace tvtool::fmi
