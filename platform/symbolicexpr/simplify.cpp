#include <symbolicexpr/simplify.h>

#include "bounds.h"
#include "canonical.h"
#include "contents.h"
#include "evaluation.h"
#include "normal_forms.h"
#include "refuse.h"

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

    static std::vector<unsigned long> partsOf(const SymbolicExpr& expr) {
        std::vector<unsigned long> parts;
        for (unsigned long i = 0; i < expr.getNumInputs(); ++i) {
            parts.push_back(expr.getInput(i));
        }
        for (unsigned long i = 0; i < expr.getNumArgs(); ++i) {
            parts.push_back(expr.getArg(i));
        }
        return parts;
    }

    /// Whether there were parts to be simplified first.
    bool openParts(const SymbolicExpr& expr, std::vector<std::uint32_t>& open) const {
        const std::size_t size = open.size();
        for (const unsigned long part : partsOf(expr)) {
            if (forms_.find(static_cast<std::uint32_t>(part)) == nullptr) {
                open.push_back(static_cast<std::uint32_t>(part));
            }
        }
        return open.size() > size;
    }

    void simplifyParts(std::uint32_t id, const SymbolicExpr& expr) {
        std::vector<unsigned long> parts = partsOf(expr);
        bool isCanonical = true;
        for (unsigned long& part : parts) {
            const NormalForms::Entry& form = *forms_.find(static_cast<std::uint32_t>(part));
            part = form.simplified;
            isCanonical = isCanonical && form.isCanonical;
        }
        std::uint32_t simplified = 0;
        switch (expr.op()) {
        case SymbolicEqualOp:
            simplified = contents_.intern(SymbolicEqualExpr(table_, parts[0], parts[1]));
            break;
        case SymbolicGreaterThanOp:
            simplified = contents_.intern(SymbolicGreaterThanExpr(table_, parts[0], parts[1]));
            break;
        default:
            simplified = contents_.intern(SymbolicNDExpr(table_, parts));
        }
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
