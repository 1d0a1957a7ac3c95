#include <symbolicexpr/simplify.h>

#include "bounds.h"
#include "canonical.h"
#include "contents.h"
#include "evaluation.h"
#include "normal_forms.h"
#include "parts.h"

#include <vector>

namespace TV {
namespace {

class Simplifier {
  public:
    Simplifier(const SymbolicExprTable& table, SymbolicExprTable::Contents& contents)
        : table_(table), contents_(contents), forms_(*contents.normalForms) {}

    const NormalForms::Entry& simplify(std::uint32_t root) {
        // Lists can be in lists deeper than the stack of the process.
        std::vector<std::uint32_t> open{root};
        while (!open.empty()) {
            const std::uint32_t id = open.back();
            const SymbolicExpr& expr = contents_[id];
            if (forms_.find(id) != nullptr) {
                open.pop_back();
            } else if (isArithmetic(expr)) {
                simplifyArithmetic(id);
            } else if (!openParts(expr, open)) {
                simplifyParts(id, expr);
            }
        }
        return *forms_.find(root);
    }

  private:
    static bool isArithmetic(const SymbolicExpr& expr) {
        return expr.op() != SymbolicNDOp && expr.op() != SymbolicEqualOp &&
               expr.op() != SymbolicGreaterThanOp;
    }

    void simplifyArithmetic(std::uint32_t id) {
        auto fraction = evaluate(id, contents_, forms_);
        if (!fraction || !bounds::holds(fraction->numerator) ||
            !bounds::holds(fraction->denominator)) {
            forms_.add(id, id, false);
            return;
        }
        const std::uint32_t simplified = enterCanonicalForm(*fraction, table_);
        forms_.addCanonical(simplified, std::move(*fraction));
        forms_.add(id, simplified, true);
    }

    /// Whether there were parts to be simplified first.
    bool openParts(const SymbolicExpr& expr, std::vector<std::uint32_t>& open) const {
        const std::size_t size = open.size();
        for (unsigned long i = 0; i < numberOfParts(expr); ++i) {
            const auto id = static_cast<std::uint32_t>(part(expr, i));
            if (forms_.find(id) == nullptr) {
                open.push_back(id);
            }
        }
        return open.size() > size;
    }

    void simplifyParts(std::uint32_t id, const SymbolicExpr& expr) {
        std::vector<unsigned long> parts;
        bool isCanonical = true;
        for (unsigned long i = 0; i < numberOfParts(expr); ++i) {
            const auto& form = *forms_.find(static_cast<std::uint32_t>(part(expr, i)));
            parts.push_back(form.simplified);
            isCanonical = isCanonical && form.isCanonical;
        }
        const unsigned long found = expr.op() == SymbolicNDOp
                                        ? SymbolicNDExpr(table_, parts).getId(table_)
                                        : binaryId(table_, expr.op(), parts[0], parts[1]);
        const auto simplified = static_cast<std::uint32_t>(found);
        forms_.add(simplified, simplified, isCanonical);
        forms_.add(id, simplified, isCanonical);
    }

    const SymbolicExprTable& table_;
    SymbolicExprTable::Contents& contents_;
    NormalForms& forms_;
};

} // namespace

unsigned long SymbolicExprSimplify::simplify(unsigned long id, unsigned long& simplified) const {
    table_->get(id);
    SymbolicExprTable::Contents& contents = *table_->contents_;
    const NormalForms::Entry& entry =
        Simplifier(*table_, contents).simplify(static_cast<std::uint32_t>(id));
    simplified = entry.isCanonical ? 1 : 0;
    return entry.simplified;
}

} // namespace TV
