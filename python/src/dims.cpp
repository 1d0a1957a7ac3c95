// Symbolic sizes, and facts about them.
#include "errors.h"
#include "module.h"

#include "dims/fact_store.h"
#include "dims/names.h"
#include "dims/reading.h"

#include <tvtypes/symbolicdims.h>

#include <pybind11/stl.h>

#include <deque>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvpython {

namespace py = pybind11;

using tvtool::dims::Fact;
using tvtool::dims::Relation;

namespace {

/// The sizes of a model and the facts about them. Sizes are ids of simplified expressions.
class DimsTable {
  public:
    explicit DimsTable(bool areWhole)
        : facts_(table_, areWhole ? tvtool::dims::Sizes::Whole : tvtool::dims::Sizes::Any) {}

    int parse(const std::string& text) {
        return tvtool::dims::registerDims(text, table_).simplified;
    }

    int combine(char operation, int a, int b) {
        const TVTypeSys::SymbolicDims left = sizeAt(a);
        const TVTypeSys::SymbolicDims right = sizeAt(b);
        switch (operation) {
        case '+':
            return (left + right).getId();
        case '-':
            return (left - right).getId();
        case '*':
            return (left * right).getId();
        case '/':
            return (left / right).getId();
        default:
            throw ArgumentError("an operation of sizes is one of + - * /");
        }
    }

    std::string text(int id) {
        table_.checkSymbolicDimsId(id);
        return tvtool::dims::decodeNames(table_.getDisplayString(id));
    }

    std::vector<int> entries(int id) {
        const TVTypeSys::SymbolicDims dims = sizeAt(id);
        std::vector<int> ids;
        for (unsigned long i = 0; i < dims.getNumDimensions(); ++i) {
            ids.push_back(dims.getDimension(i).getId());
        }
        return ids;
    }

    /// Returns the id of the number of elements.
    int total(int id) {
        table_.checkSymbolicDimsId(id);
        return tvtool::dims::sizeOf(table_, tvtool::dims::flattened(table_, id));
    }

    std::optional<std::string> number(int id) {
        table_.checkSymbolicDimsId(id);
        const auto value = tvtool::dims::numberOf(table_, id);
        return value ? std::optional(value->str()) : std::nullopt;
    }

    /// A fact of a contradiction: its text and its block.
    using Step = std::pair<std::string, std::string>;
    /// The facts that a fact contradicts, and what follows from them.
    using Contradiction = std::pair<std::vector<Step>, std::string>;

    /// States that one size equals another, or is greater.
    std::optional<Contradiction> state(bool isEqual, int left, int right,
                                       const std::string& block) {
        const auto objection = facts_.state(fact(isEqual, left, right, &blockNamed(block)));
        // A fact that the library refuses by one which cannot hold itself is none of its own fault.
        if (!objection || objection->isDoubtful) {
            return std::nullopt;
        }
        Contradiction contradiction;
        for (const tvtool::dims::DimsStep& step : objection->reason.steps) {
            contradiction.first.emplace_back(step.text, step.block);
        }
        contradiction.second = objection->reason.steps.empty() ? objection->reason.sentence
                                                               : objection->reason.conclusion;
        return contradiction;
    }

    /// Returns whether a fact follows from those stated; empty if neither it nor its contrary does.
    std::optional<bool> ask(bool isEqual, int left, int right) {
        using Known = tvtool::dims::DimsAnswer::Known;
        const auto answer = facts_.ask(fact(isEqual, left, right, nullptr));
        return answer.all == Known::Nothing ? std::nullopt
                                            : std::optional(answer.all == Known::Yes);
    }

  private:
    TVTypeSys::SymbolicDims sizeAt(int id) {
        table_.checkSymbolicDimsId(id);
        return table_.getSymbolicDims(id);
    }

    Fact fact(bool isEqual, int left, int right, const TVBlock* block) {
        return {total(left), isEqual ? Relation::Equal : Relation::Greater, total(right), block,
                ++factCount_};
    }

    const TVBlock& blockNamed(const std::string& name) {
        if (name.empty()) {
            return blocks_.emplace_back(TVBlock{{}, factCount_ + 1});
        }
        const TVBlock*& block = namedBlocks_[name];
        if (block == nullptr) {
            block = &blocks_.emplace_back(TVBlock{name, factCount_ + 1});
        }
        return *block;
    }

    TVTypeSys::SymbolicDimsTable table_;
    tvtool::dims::FactStore facts_;
    std::deque<TVBlock> blocks_; ///< with stable addresses
    std::unordered_map<std::string, const TVBlock*> namedBlocks_;
    std::uint64_t factCount_ = 0;
};

} // namespace

void addDims(py::module_& module) {
    py::class_<DimsTable>(module, "DimsTable")
        .def(py::init<bool>())
        .def("parse", &DimsTable::parse)
        .def("combine", &DimsTable::combine)
        .def("text", &DimsTable::text)
        .def("entries", &DimsTable::entries)
        .def("total", &DimsTable::total)
        .def("number", &DimsTable::number)
        .def("state", &DimsTable::state)
        .def("ask", &DimsTable::ask);
}

} // namespace tvpython
