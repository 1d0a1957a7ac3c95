/// \file
/// Struct types that the names of connectors express.
#pragma once

#include "systems/connectors.h"
#include "systems/type_table.h"

#include <boost/container_hash/hash.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::systems {

/// The name of a connector in a struct: bus.axle and left of bus.axle.left.
struct StructName {
    std::string_view path; ///< empty if the name is no structured name or has one part
    std::string_view element;
};

StructName structName(std::string_view connector);

/// The connectors of an element that have the same kind and the same path.
struct ConnectorStruct {
    std::vector<const ssp::Connector*> connectors; ///< in the order of the file
    std::size_t shape = 0;                         ///< equal for equal types
};

/// Registers a struct type for each different shape: its elements by name with their types and
/// dimensions, in any order. Structs in a struct are elements as well.
class StructTypes {
  public:
    StructTypes(Connectors& connectors, TypeTable& types)
        : connectors_(connectors), types_(types) {}

    /// Returns null if there is none.
    const ConnectorStruct* find(const ssp::Element& owner, ssp::Kind kind, std::string_view path);

  private:
    using Owner = std::pair<const ssp::Element*, ssp::Kind>;
    using ByPath = std::unordered_map<std::string_view, ConnectorStruct>;

    struct Member {
        std::string_view name;
        std::string key; ///< equal for equal types and dimensions
        int type = INVALID_DATA_TYPE_ID;
        std::vector<int> sizes;
    };

    void collect(const Owner& owner, ByPath& structs);
    Member memberOf(const ssp::Element& owner, const ssp::Connector& connector);
    std::size_t shapeOf(std::vector<Member> members);
    int registerType(const std::vector<Member>& members);

    Connectors& connectors_;
    TypeTable& types_;
    std::unordered_map<Owner, ByPath, boost::hash<Owner>> structs_;
    std::unordered_map<std::string, std::size_t> shapes_;
    std::vector<int> typeIds_; ///< of the shapes
};

} // namespace tvtool::systems
