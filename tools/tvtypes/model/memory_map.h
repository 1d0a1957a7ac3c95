/// \file
/// Memory maps of struct types, read through the library's views.
///
/// Texts are those of the description, with long ones shortened; they are not safe to print.
#pragma once

#include "model/model.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tvtool::model {

enum class RowKind { Struct, StructArray, Leaf, Padding };
const char* kindName(RowKind kind);

/// A node of the depth-first numbering, or padding.
struct LayoutRow {
    RowKind kind = RowKind::Leaf;
    int depth = 0;  ///< 0 for the struct itself
    int offset = 0; ///< bytes from the start of the struct
    int size = 0;   ///< bytes
    std::string name;
    std::string path; ///< names from the struct on, joined by points; empty for itself and padding
    std::string type; ///< with its dimensions; empty for padding
    std::optional<int> dfs = std::nullopt;
    std::optional<int> flat = std::nullopt; ///< of a leaf
    std::optional<int> raw = std::nullopt;  ///< of a leaf's first scalar
};

struct StructMap {
    int id = 0;
    std::string name;
    std::string originalName; ///< in the description, if it differs; else empty
    int size = 0;             ///< bytes
    int alignment = 0;        ///< bytes
    int elements = 0;
    int leaves = 0;
    int scalars = 0;
    std::vector<LayoutRow> rows; ///< in depth-first order, which is the order of the offsets

    /// Returns size, alignment and counts as a sentence.
    std::string summary() const;
};

struct MemoryMaps {
    std::string file;
    bool hasStructuredNames = false;
    std::vector<StructMap> structs;
    std::size_t problems = 0; ///< number of problems of the description
};

/// No struct type has the given name.
class UnknownStruct : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Maps the struct type with this name in the table or path in the description; with an empty name
/// all struct types that no other struct contains. The result's `file` is empty. Throws an
/// UnknownStruct.
MemoryMaps mapStructs(const Model& model, const std::string& name);

} // namespace tvtool::model
