/// \file
/// Memory maps of struct types, read through the library's views.
#pragma once

#include "model/layout.h"
#include "model/model.h"

#include <stdexcept>
#include <string>

namespace tvtool::model {

/// No struct type answers to a name.
class UnknownStruct : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The map of the struct type with this name, in the table or as a path in the description; with
/// no name those of all struct types that no other struct holds. Throws an UnknownStruct.
model::LayoutFindings mapStructs(const Model& model, const std::string& name);

} // namespace tvtool::model
