/// \file
/// Propagation of symbolic dimensions through blocks.
#pragma once

#include <tvtypes/export.h>

#include <string>
#include <vector>

/// \addtogroup symbolicdims
/// @{

class TVBlock;

namespace TVTypeSys {

class SymbolicDimsTable;

/// Dimensions of the ports of particular blocks.
namespace SymbolicDimsServices {

/// A source of a constant.
class TVTYPES_API Const {
  public:
    /// Computes the output's dimensions from the texts of the constant's dimensions.
    /// \param table      not null
    /// \param dims       texts; if empty, `outputId` is unchanged
    /// \param outputId   set to the id that the table registers for the list; with `vectorForm`,
    /// for the
    ///                   text of the dimension that is not "1"
    /// \param vectorForm whether there must be two dimensions, one of them "1"
    ///
    /// Throws TorvaneTypes::Dimensions::InvalidSymbolicDimensionSpec if `vectorForm` is set and
    /// this is not so; else as SymbolicDimsTable::registerSymbolicDims.
    static void ComputeOutput(SymbolicDimsTable* table, const std::vector<std::string>& dims,
                              int& outputId, bool vectorForm);
};

/// A concatenation.
class TVTYPES_API Concat {
  public:
    /// Does nothing.
    static void ComputeOutput(SymbolicDimsTable* table, const std::vector<int>& inputIds,
                              int& outputId, int concatDim, bool vectorForm, const TVBlock* block);

    /// Computes the dimensions of the one unknown input from the output and the other inputs: along
    /// `concatDim` the output's dimension minus the sum of the known inputs, along all others the
    /// output's. States that the known inputs equal the output along the other dimensions; if all
    /// inputs are known, also that the output equals their sum along `concatDim`. An input that
    /// lacks a dimension is ignored along it. \param table        not null \param inputIds     ids
    /// of the inputs, -1 if unknown \param outputId     id of the output \param resultId     set to
    /// the unknown input's dimensions; unchanged unless there is exactly one \param unknownIndex
    /// set to the index of the unknown input, -10 if there is none; of several
    ///                     unknown inputs to that of the last, and nothing is stated then
    /// \param concatDim    the dimension of the concatenation, from 0
    /// \param vectorForm   whether the result is its first dimension alone
    /// \param block        states the relations; may be null
    ///
    /// Throws TorvaneTypes::Dimensions::InvalidDimensionIndex (concatDim, dimensions of the output)
    /// if the output does not have this dimension, and what SymbolicDimsConstraints::addEqual
    /// throws; relations stated before that stay.
    static void ComputeInput(SymbolicDimsTable* table, const std::vector<int>& inputIds,
                             const int& outputId, int& resultId, int& unknownIndex, int concatDim,
                             bool vectorForm, const TVBlock* block);
};

} // namespace SymbolicDimsServices
} // namespace TVTypeSys

/// @}
