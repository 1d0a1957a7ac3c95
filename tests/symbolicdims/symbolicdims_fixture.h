// Fixture with a table of symbolic dimensions.
#pragma once

#include "support/errors.h"

#include <tvtypes/symbolicdims.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TVTypeSys {

class SymbolicTest : public testing::Test {
  protected:
    int id(const char* expression) { return table.registerSymbolicDimsExpr(expression); }
    SymbolicDims dims(const char* expression) { return table.getSymbolicDims(id(expression)); }
    std::string text(int dimsId) { return table.getSymbolicDims(dimsId).toString(); }

    // Blocks are compared by address and never dereferenced. Block 0 is null.
    static const TVBlock* block(int i) {
        static constexpr char places[8] = {};
        return i == 0 ? nullptr : reinterpret_cast<const TVBlock*>(places + i);
    }

    SymbolicDimsTable table;
};

} // namespace TVTypeSys
