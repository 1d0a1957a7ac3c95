/// \file
/// Where what lies in a struct: the one record from which every form of a memory map is printed.
///
/// Texts are as the description has them, shortened where they are long; whoever prints them makes
/// them safe to show.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tvtool::model {

enum class RowKind { Struct, StructArray, Leaf, Padding };
const char* nameOf(RowKind kind);

/// Stands for "none" in place of an index.
inline constexpr int noNumber = -1;

/// A node of the depth-first numbering, or padding.
struct LayoutRow {
    RowKind kind = RowKind::Leaf;
    int depth = 0;  ///< 0 is the struct itself
    int offset = 0; ///< bytes from its beginning
    int size = 0;   ///< bytes
    std::string name;
    std::string path; ///< names from the struct on, joined by points; empty for itself and padding
    std::string type; ///< with its dimensions; empty for padding
    int dfs = noNumber;
    int flat = noNumber; ///< of a leaf
    int raw = noNumber;  ///< of a leaf's first scalar
};

struct StructMap {
    int id = 0;
    std::string name;
    std::string originalName; ///< in the description, where it is another; else empty
    int size = 0;
    int alignment = 0;
    int elements = 0;
    int leaves = 0;
    int scalars = 0;
    std::vector<LayoutRow> rows; ///< in the order of the depth-first numbering and of the offsets
};

struct LayoutFindings {
    std::string file;
    bool hasStructuredNames = false;
    std::vector<StructMap> structs;
    std::size_t problems = 0; ///< how many the description has
};

/// Size, alignment and counts in words.
std::string summaryOf(const StructMap& map);

} // namespace tvtool::model
