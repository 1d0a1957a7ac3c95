#include "findings/rules.h"

#include "findings/call_rules.h"
#include "findings/model_rules.h"
#include "findings/system_rules.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <iterator>

namespace tvtool::findings {

namespace {

constexpr auto joined() {
    std::array<Rule, ruleCount> rules{};
    auto end = rules.begin();
    for (const std::span<const Rule> part :
         {std::span<const Rule>(modelRules), std::span<const Rule>(systemRules),
          std::span<const Rule>(callRules)}) {
        end = std::copy(part.begin(), part.end(), end);
    }
    return rules;
}
static_assert(std::size(modelRules) + std::size(systemRules) + std::size(callRules) == ruleCount);

constexpr std::array<Rule, ruleCount> table = joined();

/// Checks that a code is the index of its rule.
constexpr bool isOrdered() {
    for (std::size_t i = 0; i < std::size(table); ++i) {
        if (table[i].code != static_cast<Code>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(isOrdered());

} // namespace

std::span<const Rule> rules() { return table; }

const Rule& ruleOf(Code code) { return table[static_cast<std::size_t>(code)]; }

const char* severityName(Severity severity) {
    constexpr const char* names[] = {"error", "warning", "note"};
    return names[static_cast<std::size_t>(severity)];
}

} // namespace tvtool::findings
