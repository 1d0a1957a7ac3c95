/// \file
/// What a table of expressions holds.
#pragma once

#include <symbolicexpr/expr.h>

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <vector>

namespace TV {

class NormalForms;

struct SymbolicExprTable::Contents {
    Contents();
    ~Contents();
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;

    /// The id of the expression that equals the key, of which a copy is entered if there is none.
    std::uint32_t intern(const SymbolicExpr& key);

    const SymbolicExpr& operator[](unsigned long id) const { return *expressions[id]; }

    std::vector<const SymbolicExpr*> expressions;
    std::unique_ptr<NormalForms> normalForms;

  private:
    /// Finds expressions by what they are written like. A key is an expression, or the id of one.
    class Look {
      public:
        using is_transparent = void;
        using is_avalanching = void;

        explicit Look(const Contents& contents) : contents_(&contents) {}

        std::size_t operator()(std::uint32_t id) const { return spread((*contents_)[id].hash_); }
        std::size_t operator()(const SymbolicExpr& key) const { return spread(key.hash_); }

        bool operator()(std::uint32_t a, std::uint32_t b) const { return a == b; }
        bool operator()(const SymbolicExpr& key, std::uint32_t id) const {
            const SymbolicExpr& other = (*contents_)[id];
            return key.hash_ == other.hash_ && key.op_ == other.op_ && key.hasSamePartsAs(other);
        }
        bool operator()(std::uint32_t id, const SymbolicExpr& key) const {
            return (*this)(key, id);
        }

      private:
        static std::size_t spread(std::uint32_t hash) { return hash * 0x9e3779b97f4a7c15ULL; }

        const Contents* contents_;
    };

    std::pmr::monotonic_buffer_resource memory_; ///< of the expressions
    boost::unordered_flat_set<std::uint32_t, Look, Look> ids_{0, Look(*this), Look(*this)};
};

} // namespace TV
