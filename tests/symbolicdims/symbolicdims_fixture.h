// Fixture with a table of symbolic dimensions.
#pragma once

#include "support/errors.h"

#include <boost/lexical_cast.hpp>
#include <tvtypes/symbolicdims.h>

#include <list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace TVTypeSys {

// Blocks are compared by address and never dereferenced. Block 0 is null.
inline const TVBlock* block(int i) {
    static constexpr char places[8] = {};
    return i == 0 ? nullptr : reinterpret_cast<const TVBlock*>(places + i);
}

class SymbolicTest : public testing::Test {
  protected:
    int id(const char* expression) { return table.registerSymbolicDimsExpr(expression); }
    SymbolicDims dims(const char* expression) { return table.getSymbolicDims(id(expression)); }
    std::string text(int dimsId) { return table.getSymbolicDims(dimsId).toString(); }

    SymbolicDimsTable table;
};

} // namespace TVTypeSys
