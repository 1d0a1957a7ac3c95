/// \file
/// What blocks compute of the symbolic dimensions of their ports.
#pragma once

#include <tvtypes/export.h>

#include <string>
#include <vector>

class TVBlock;

namespace TVTypeSys {

class SymbolicDimsTable;

namespace SymbolicDimsServices {

/// A source of a constant.
class TVTYPES_API Const {
  public:
    /// The dimension of the output from the texts of the constant's dimensions, as the table
    /// registers a list of sizes. With `vectorForm` there have to be two, one of them "1", and the
    /// other one is the output, as the table registers a text. No dimensions leave `outputId` as it
    /// is. Refused: TorvaneTypes::Dimensions::InvalidSymbolicDimensionSpec for what is no vector.
    static void ComputeOutput(SymbolicDimsTable* table, const std::vector<std::string>& dims,
                              int& outputId, bool vectorForm);
};

/// A concatenation. Dimensions count from 0.
class TVTYPES_API Concat {
  public:
    /// Does nothing.
    static void ComputeOutput(SymbolicDimsTable* table, const std::vector<int>& inputIds,
                              int& outputId, int concatDim, bool vectorForm, const TVBlock* block);

    /// The dimension of the one input that is not known (-1) from the output and the other inputs:
    /// along `concatDim` what they leave of the output, else the output's. States that the known
    /// inputs equal the output along the other dimensions; if all are known, also that the output
    /// is their sum along `concatDim`. With `vectorForm` the result is its first dimension alone.
    ///
    /// `unknownIndex` becomes the place of the unknown input, -10 if there is none. `resultId` is
    /// set if there is one. If more are unknown nothing is stated, and `unknownIndex` is the last.
    ///
    /// Refused: TorvaneTypes::Dimensions::InvalidDimensionIndex (concatDim, dimensions of the
    /// output) if the output does not have this one; or as SymbolicDimsConstraints::addEqual is,
    /// and then what was stated before stays.
    static void ComputeInput(SymbolicDimsTable* table, const std::vector<int>& inputIds,
                             const int& outputId, int& resultId, int& unknownIndex, int concatDim,
                             bool vectorForm, const TVBlock* block);
};

} // namespace SymbolicDimsServices
} // namespace TVTypeSys
