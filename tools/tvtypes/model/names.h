/// \file
/// Names for types whose own name cannot stand in the table.
#pragma once

#include <tvtypes/datatypetable.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace tvtool::model {

class Names {
  public:
    /// \param declared all names that the model gives to types; made names keep clear of them
    Names(const TVTypeSys::DataTypeTable& table, std::unordered_set<std::string_view> declared)
        : table_(table), declared_(std::move(declared)) {}

    /// The name itself if the table can take it for a new type, else a made one that it can take.
    std::string nameFor(std::string_view original);

  private:
    bool isFree(const std::string& name) const;

    const TVTypeSys::DataTypeTable& table_;
    std::unordered_set<std::string_view> declared_;
    // Many names may become the same one: the next suffix to try spares counting from 2 each time.
    std::unordered_map<std::string, int> nextSuffix_;
};

} // namespace tvtool::model
