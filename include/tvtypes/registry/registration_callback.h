/// \file
/// Client check of new types.
#pragma once

#include <tvtypes/export.h>

/// \addtogroup registry
/// @{

namespace TVTypeSys {

class DataType;

/// Client check of each type that a table registers. Installed by
/// DataTypeTable::setClientDataTypeCheckCallback.
class TVTYPES_API ClientDataTypeCheckCallback {
  public:
    virtual ~ClientDataTypeCheckCallback();

    /// Called with each new record, which is in the table already. It may change the table: turn
    /// the record into an alias, which destroys it, remove it, register other types, or install
    /// another callback.
    ///
    /// If it throws a fnd::except::IException, the table removes and destroys the record and all
    /// later ones, and rethrows. Earlier types that the callback has turned into aliases of one of
    /// these become what they were; all else that the callback has done to them stays. Any other
    /// exception passes through, and all records stay: the new record keeps its id, and does not
    /// replace a type of the same name.
    /// \param dataType  the new record, owned by the table
    /// \param blockPath the path that was passed to the registration; may be null
    virtual void checkRegisteredType(DataType* dataType, const char* blockPath) = 0;

    /// Called at the end of DataTypeTable::resetToBuiltin.
    virtual void onResetToBuiltin() = 0;
};

} // namespace TVTypeSys

/// @}
