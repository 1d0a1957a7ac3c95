/// \file
/// Client check of new types.
#pragma once

#include <tvtypes/export.h>

namespace TVTypeSys {

class DataType;

/// Client check of each type that a table registers. Installed by
/// DataTypeTable::setClientDataTypeCheckCallback.
class TVTYPES_API ClientDataTypeCheckCallback {
  public:
    virtual ~ClientDataTypeCheckCallback();

    /// Called with each new record, which is in the table already. If it throws a
    /// fnd::except::IException, the table removes and destroys the record and rethrows. Any other
    /// exception passes through, and the record stays.
    /// \param dataType  the new record, owned by the table
    /// \param blockPath the path that was passed to the registration; may be null
    virtual void checkRegisteredType(DataType* dataType, const char* blockPath) = 0;

    /// Called at the end of DataTypeTable::resetToBuiltin.
    virtual void onResetToBuiltin() = 0;
};

} // namespace TVTypeSys
