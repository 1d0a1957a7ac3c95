#include "usage/definition.h"

#include <algorithm>
#include <array>

namespace tvtool::usage {

namespace {

/// By offer.
constexpr std::array<const char*, 6> names{"nothing", "choices",    "files",
                                           "units",   "quantities", "systems"};

} // namespace

const char* nameOf(Offer offer) { return names[static_cast<std::size_t>(offer)]; }

Offer offerNamed(std::string_view name) {
    const auto* const found = std::ranges::find(names, name);
    return found == names.end() ? Offer::Nothing : static_cast<Offer>(found - names.begin());
}

} // namespace tvtool::usage
