/// \file
/// Details of a numeric type.
#pragma once

#include "fixedpoint/quantization.h"

#include <tvtypes/datatypetable.h>

#include <string>
#include <vector>

namespace tvtool::fixedpoint {

/// A constructor string in one form.
struct Constructor {
    const char* base = "";    ///< the function: "fixdt" or "numerictype"
    const char* scaling = ""; ///< "fraction length", "slope and bias" or "no scaling"
    std::string text;
};

struct TypeDetails {
    std::string text; ///< name as given; empty for a type given by options
    fxpDataTypeProp record{};
    std::string identifier;
    std::string fixedPointName; ///< also of a built-in type; empty without scaling
    std::string kind;
    std::string slope; ///< 0.0625 = 2^-4; empty without scaling
    Range range;
    std::string storage; ///< built-in type that stores it; empty if there is none
    int storageSize = 0; ///< bytes
    bool isAtomic = false;
    std::vector<Constructor> constructors;
    std::vector<std::string> notes;
};

/// Sets the word lengths that the target accesses atomically, including those of the built-in
/// integers. Must be called before types are registered.
void setAtomic(const std::vector<int>& wordLengths, TVTypeSys::DataTypeTable& table);

/// Registers the type of a valid record in the table, sets its storage, and returns its details.
/// `text` is its name as given, or empty.
TypeDetails typeDetails(const std::string& text, const fxpDataTypeProp& record,
                        TVTypeSys::DataTypeTable& table);

} // namespace tvtool::fixedpoint
