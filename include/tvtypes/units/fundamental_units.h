/// \file
/// Fundamental units, which no file defines.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/units/unit.h>

#include <boost/ptr_container/ptr_vector.hpp>

/// \addtogroup units
/// @{

namespace TVTypeSys {

/// Eight abstract units with one concrete unit each, and two abstract units without dimension. The
/// canonical form of each of the eight is itself, that of the two has all eight with power 0. The
/// object owns its units.
///
/// The texts of the functions are UTF-8; null counts as "". No expression is parsed. A function
/// that throws std::bad_alloc has added nothing.
class TVTYPES_API FundamentalUnits {
  public:
    /// Creates the units: kg, m, s, A, K, mol, cd and b with their quantities, "unitless" and
    /// "Unspecified".
    FundamentalUnits();
    FundamentalUnits(const FundamentalUnits&) = delete;
    FundamentalUnits& operator=(const FundamentalUnits&) = delete;
    ~FundamentalUnits();

    /// Adds an abstract unit whose canonical form is itself, and returns it, for the concrete unit
    /// of this quantity. A unit that compares as equal to a previous one is owned but not listed.
    UnitBase::Reference createAndAddAbstractUnit(const char* expression, const char* symbol,
                                                 const char* name);

    /// Adds the concrete unit of a quantity, whose canonical form is itself. The quantity must
    /// outlive this object.
    void createAndAddConcreteUnit(const char* expression, const char* symbol, const char* name,
                                  const UnitBase::Reference& abstractUnit);

    /// Adds an abstract unit whose canonical form has all quantities added so far with power 0.
    void createAndAddDimensionlessAbstractUnit(const char* expression, const char* symbol,
                                               const char* name);

    /// Returns a new abstract unit without a canonical form, with the scale 1 and the offset 0. The
    /// caller owns it.
    AbstractUnit* createAbstractUnit(const char* expression, const char* symbol,
                                     const char* name) const;

    /// \name Units
    /// @{

    /// Return the concrete units, their quantities, and the quantities without dimension, each in
    /// the order of names.
    const UnitBase::ReferenceSet& concrete() const { return concreteUnitSet_; }
    const UnitBase::ReferenceSet& abstract() const { return abstractUnitSet_; }
    const UnitBase::ReferenceSet& dimensionless() const { return dimensionlessAbstractUnitSet_; }
    /// @}

  private:
    boost::ptr_vector<UnitBase> concreteUnits_;
    boost::ptr_vector<UnitBase> abstractUnits_;
    boost::ptr_vector<UnitBase> dimensionlessAbstractUnits_;
    UnitBase::ReferenceSet abstractUnitSet_;
    UnitBase::ReferenceSet concreteUnitSet_;
    UnitBase::ReferenceSet dimensionlessAbstractUnitSet_;
};

} // namespace TVTypeSys

/// @}
