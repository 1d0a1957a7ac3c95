/// \file
/// Names for types whose own name the table does not take.
#pragma once

#include <tvtypes/datatypetable.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace tvtool::model {

class Names {
  public:
    /// \param declared all names that the model gives to types; made names differ from them
    Names(const TVTypeSys::DataTypeTable& table, std::unordered_set<std::string_view> declared)
        : table_(table), declared_(std::move(declared)) {}

    /// Returns the name itself if a new type can have it, else a similar name.
    std::string freeName(std::string_view original);

  private:
    bool isFree(const std::string& name) const;

    const TVTypeSys::DataTypeTable& table_;
    std::unordered_set<std::string_view> declared_;
    // The next suffix of a name. Counting from 2 each time would take quadratic time.
    std::unordered_map<std::string, int> nextSuffix_;
};

} // namespace tvtool::model
