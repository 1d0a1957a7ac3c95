/// \file
/// What an inspection found: the one record from which every form of the report is printed.
///
/// Texts are as the description has them; whoever prints them makes them safe to show.
#pragma once

#include "dims/records.h"
#include "fmi/remarks.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace tvtool::model {

enum class Kind { BuiltIn, Alias, Enumerated, FixedPoint, Struct };
const char* nameOf(Kind kind);

/// One type that the model declares or uses.
struct TypeRow {
    int id = 0;
    std::string name;
    Kind kind = Kind::BuiltIn;
    int size = 0;              ///< bytes of a value
    std::string storage;       ///< the built-in type that holds its values; empty if there is none
    std::string aliasOf;       ///< empty for a type that is no alias
    std::size_t variables = 0; ///< how many are of this type; for a struct, how many lie in one
    std::string originalName;  ///< in the description, where it is another; else empty
    int elements = 0;          ///< of a struct
    int leaves = 0;            ///< of a struct: the elements at the bottom of all nesting
};

/// How much of one base type lies outside the table.
struct OutsideRow {
    std::string baseType;
    std::size_t variables = 0;
    std::size_t types = 0;
};

/// What the place of a unit in the table comes from.
enum class UnitSource { Name, Reading, BaseUnits, Nothing };
const char* nameOf(UnitSource source);

/// One unit that the model defines or uses.
struct UnitRow {
    std::string name;
    UnitSource source = UnitSource::Nothing;
    int id = 0;                         ///< of no meaning without a source
    std::string expression;             ///< in the table; empty without a source
    std::string baseUnits;              ///< with factor and offset; empty if the model does not say
    std::vector<std::string> variables; ///< the names of those that have it
};

/// The dimensions of arrays: a size, or a list of sizes.
struct DimensionRow {
    int id = 0;
    std::string text;
    std::vector<std::string> variables; ///< the names of those that have them
};

struct Findings {
    std::string file;
    std::string fmiVersion;
    std::string modelName;
    std::size_t variables = 0;
    std::vector<TypeRow> types; ///< in the order of their ids
    std::vector<OutsideRow> outside;
    std::vector<UnitRow> units;           ///< in the order of the description
    std::vector<DimensionRow> dimensions; ///< in the order of the description
    std::vector<dims::DimsFact> facts;    ///< what the description says of sizes
    fmi::Remarks remarks;
};

} // namespace tvtool::model
