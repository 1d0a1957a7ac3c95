/// \file
/// Fundamental units, which no file defines.
#pragma once

#include <tvtypes/units/unit.h>

#include <boost/ptr_container/ptr_vector.hpp>

namespace TVTypeSys {

/// Eight abstract units with one concrete unit each, and two abstract units without dimension. The
/// canonical form of each of the eight is itself, that of the two has all eight with power 0.
class FundamentalUnits {
  public:
    FundamentalUnits();

    /// Return the eight, or the two, in the order of their names.
    const UnitBase::ReferenceSet& concrete() const { return concreteUnitSet_; }
    const UnitBase::ReferenceSet& abstract() const { return abstractUnitSet_; }
    const UnitBase::ReferenceSet& dimensionless() const { return dimensionlessAbstractUnitSet_; }

  private:
    UnitBase::Reference createAndAddAbstractUnit(const char* expression, const char* symbol,
                                                 const char* name);
    void createAndAddConcreteUnit(const char* expression, const char* symbol, const char* name,
                                  const UnitBase::Reference& abstractUnit);
    void createAndAddDimensionlessAbstractUnit(const char* expression, const char* symbol,
                                               const char* name);

    boost::ptr_vector<UnitBase> concreteUnits_;
    boost::ptr_vector<UnitBase> abstractUnits_;
    boost::ptr_vector<UnitBase> dimensionlessAbstractUnits_;
    UnitBase::ReferenceSet abstractUnitSet_;
    UnitBase::ReferenceSet concreteUnitSet_;
    UnitBase::ReferenceSet dimensionlessAbstractUnitSet_;
};

} // namespace TVTypeSys
