/// \file
/// Memory maps of struct types, read through the library's views.
///
/// Texts are not safe to print. A name or type of more than 120 bytes is cut at its end, a longer
/// path at its beginning; "..." marks the cut.
#pragma once

#include "model/model.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tvtool::model {

enum class RowKind { Struct, StructArray, Leaf, Padding };
/// Returns "struct", "structArray", "leaf" or "padding".
const char* kindName(RowKind kind);

/// A node of the depth-first numbering, or padding.
struct LayoutRow {
    RowKind kind = RowKind::Leaf;
    int depth = 0;    ///< 0 for the struct itself
    int offset = 0;   ///< bytes from the start of the struct
    int size = 0;     ///< bytes
    std::string name; ///< in the description
    std::string path; ///< in the description, from the struct; empty for the struct and padding
    std::string type; ///< with its dimensions; empty for padding
    std::optional<int> dfs = std::nullopt;
    std::optional<int> flat = std::nullopt; ///< of a leaf
    std::optional<int> raw = std::nullopt;  ///< of a leaf's first scalar
};

struct StructMap {
    int id = 0;
    std::string name;
    std::string originalName; ///< in the description, if it differs; else empty
    std::string path;         ///< of the struct in the description that has the names of the rows
    int size = 0;             ///< bytes
    int alignment = 0;        ///< bytes
    int elements = 0;
    int leaves = 0;
    int scalars = 0;
    std::vector<LayoutRow> rows; ///< in depth-first order, which is the order of the offsets

    /// Returns the path, with the name of the type if that differs.
    std::string heading() const;
    /// Returns size, alignment and counts as a sentence.
    std::string summary() const;
};

struct MemoryMaps {
    std::string file;
    bool hasStructuredNames = false;
    std::vector<StructMap> structs;
    std::vector<findings::Finding> findings; ///< about structs

    /// Returns the number of errors and warnings.
    std::size_t problems() const;
};

/// The error of a name that no struct type has.
class UnknownStruct : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Maps the struct with this path in the description, or the first one of the struct type with this
/// name in the table; with an empty name all struct types that no other struct contains. Throws an
/// UnknownStruct.
MemoryMaps mapStructs(const Model& model, std::string file, const std::string& name);

/// Prints the maps as text.
void printText(const MemoryMaps& maps, bool colour, std::ostream& os);
/// Prints the maps as one JSON object in one line. Absent values are null.
void printJson(const MemoryMaps& maps, std::ostream& os);

/// Prints one SVG document with all maps below each other: the bytes of a struct from top to
/// bottom, to scale, and a column for each level of nesting. Notes in the picture give the number
/// of rows and structs that are omitted because they are too small, too deep or too many.
void drawLayout(const MemoryMaps& maps, std::ostream& os);

} // namespace tvtool::model
