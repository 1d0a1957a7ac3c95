/// \file
/// Checks of the connections of a system.
#pragma once

#include "systems/connector_checks.h"
#include "systems/signal_checks.h"
#include "systems/sizes.h"

#include <boost/container_hash/hash.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <set>
#include <string_view>
#include <tuple>
#include <vector>

namespace tvtool::systems {

/// Checks connections one by one: the names, the direction, and then the two ends against each
/// other.
class ConnectionChecks {
  public:
    ConnectionChecks(Connectors& connectors, NameIndex& names, Sizes& sizes,
                     Comparisons& comparisons)
        : connectors_(connectors), names_(names), sizes_(sizes), comparisons_(comparisons) {}

    /// Returns the row of a connection of a system.
    ConnectionRow check(const ssp::Element& system, const ssp::Connection& connection);

  private:
    bool checkNames(const End& end, const ssp::EndReference& reference, const ssp::Element& system,
                    const ConnectionReport& report);
    bool checkDirection(ConnectionRow& row, const ConnectionReport& report);
    void checkInflow(const ConnectionReport& report);

    /// The connections into one connector.
    struct Inflows {
        std::uint32_t line = 0; ///< of the first one
        bool isWhole = false;   ///< whether one of them is not restricted to indices
        std::set<std::vector<std::uint64_t>> indices;
    };

    Connectors& connectors_;
    NameIndex& names_;
    Sizes& sizes_;
    Comparisons& comparisons_;
    using Target = std::tuple<const ssp::Element*, const ssp::Element*, std::string_view>;
    boost::unordered_flat_map<Target, Inflows, boost::hash<Target>>
        inflows_; ///< by system, owner and name
};

} // namespace tvtool::systems
