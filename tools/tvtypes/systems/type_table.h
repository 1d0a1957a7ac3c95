/// \file
/// The types of all files of a package in one table.
#pragma once

#include "exchange/records.h"

#include <tvtypes/datatypetable.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tvtool::systems {

/// Registers the types of signals. Enumerations with the same items are one type, whatever their
/// names.
class TypeTable {
  public:
    /// Returns the id of a type; -1 if the table cannot represent it. \param items of an
    /// enumeration; null if they are not known
    int id(exchange::BaseType base, const std::vector<exchange::Item>* items);

    TVTypeSys::DataTypeTable& table() { return table_; }

  private:
    using Key = std::vector<std::pair<std::string, std::int64_t>>;

    int enumerationId(const std::vector<exchange::Item>& items);

    TVTypeSys::DataTypeTable table_;
    std::map<Key, int> enumerations_;
    std::map<const std::vector<exchange::Item>*, int> known_; ///< the lists that were looked up
};

} // namespace tvtool::systems
