/// \file
/// Bounds on the differences of two columns.
#pragma once

#include "solver/linear_form.h"
#include "solver/reasons.h"
#include "solver/value.h"
#include "solver/work.h"

#include <array>
#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace tvtool::solver {

/// A graph whose edges are bounds on differences, with an incremental detection of positive cycles.
/// Each node has a potential, and the potentials satisfy all edges. A new edge raises the
/// potentials of greater nodes, or lowers those of lesser ones, in the order of Dijkstra's
/// algorithm (Cotton and Maler, 2006). Both directions are tried with a limit on the steps that
/// doubles, so that the shorter one decides the time.
class Differences {
  public:
    using Node = std::uint32_t;
    /// The node whose value is 0.
    static constexpr Node zero = 0;
    static Node nodeOf(Column column) { return column + 1; }

    explicit Differences(Work& work) : work_(work) {}

    /// Adds the edge greater - lesser >= weight. Returns the reasons of the edges of a cycle whose
    /// weights have a positive sum, if there is one; the edge is not added then.
    std::optional<std::vector<Reason>> add(Node greater, Node lesser, const Value& weight,
                                           Reason reason);

    /// Returns a value that satisfies all edges, relative to that of the zero node.
    Value value(Node node) const;

    /// Returns a mark for undo().
    std::size_t mark() const { return trail_.size(); }
    /// Removes what was added after the mark.
    void undo(std::size_t mark);
    /// Keeps all that was added, so that there are no marks before it any more.
    void keep() { trail_.clear(); }

  private:
    /// The direction of a search: from lesser to greater nodes, or back.
    enum Direction { Up, Down };
    struct Edge {
        std::array<Node, 2> ends; ///< the lesser and the greater node
        Value weight;
        Reason reason;
    };
    /// The largest change found so far of a node's potential.
    struct Move {
        Value amount;
        std::size_t edge; ///< that requires it
        bool isFinal = false;
    };
    using Moves = std::unordered_map<Node, Move>;
    /// An edge that was added, or else the potential of a node before it was changed.
    struct Change {
        bool isEdge;
        Node node;
        Value potential;
    };
    enum class Search { Done, Cycle, Stopped };

    void reserve(Node node);
    Search search(Direction direction, std::size_t limit, Moves& moves);
    void apply(Direction direction, const Moves& moves);
    std::vector<Reason> cycle(Direction direction, const Moves& moves) const;
    void removeLastEdge();

    Work& work_;
    std::vector<Edge> edges_;
    std::array<std::vector<std::vector<std::size_t>>, 2> edgesOf_; ///< by direction, first end
    std::vector<Value> potentials_;
    std::vector<Change> trail_;
};

} // namespace tvtool::solver
