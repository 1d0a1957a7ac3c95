#include "systems/flow.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>

namespace tvtool::systems {

namespace {

using ssp::Kind;
using Kinds = std::initializer_list<Kind>;

/// The connections that the standard allows: each kind of a source to each of the targets.
struct Allowed {
    bool fromSystem;
    Kinds sources;
    bool toSystem;
    Kinds targets;
};

const Allowed allowed[] = {
    {true,
     {Kind::StructuralParameter, Kind::Parameter},
     true,
     {Kind::CalculatedParameter, Kind::Output, Kind::Local}},
    {true, {Kind::Input}, true, {Kind::Output, Kind::Local}},
    {true,
     {Kind::StructuralParameter},
     false,
     {Kind::StructuralParameter, Kind::Parameter, Kind::Input, Kind::Inout}},
    {true, {Kind::Parameter}, false, {Kind::Parameter, Kind::Input, Kind::Inout}},
    {true, {Kind::Input}, false, {Kind::Input, Kind::Inout}},
    {false,
     {Kind::Constant},
     false,
     {Kind::StructuralParameter, Kind::Parameter, Kind::Input, Kind::Inout}},
    {false, {Kind::CalculatedParameter}, false, {Kind::Parameter, Kind::Input, Kind::Inout}},
    {false, {Kind::Output, Kind::Local}, false, {Kind::Input, Kind::Inout}},
    {false, {Kind::Inout}, false, {Kind::Input}},
    {false,
     {Kind::Constant},
     true,
     {Kind::Constant, Kind::CalculatedParameter, Kind::Output, Kind::Local}},
    {false,
     {Kind::CalculatedParameter},
     true,
     {Kind::CalculatedParameter, Kind::Output, Kind::Local}},
    {false, {Kind::Output, Kind::Local, Kind::Inout}, true, {Kind::Output, Kind::Local}}};

bool isAny(Kind kind) {
    return kind == Kind::Unspecified || kind == Kind::None || kind == Kind::Invalid;
}

bool contains(Kinds kinds, Kind kind) {
    return isAny(kind) || std::ranges::find(kinds, kind) != kinds.end();
}

bool isAllowed(FlowEnd source, FlowEnd target) {
    return std::ranges::any_of(allowed, [&](const Allowed& rule) {
        return rule.fromSystem == source.isSystem && rule.toSystem == target.isSystem &&
               contains(rule.sources, source.kind) && contains(rule.targets, target.kind);
    });
}

} // namespace

Flow flowBetween(FlowEnd start, FlowEnd end) {
    if (isAllowed(start, end)) {
        return Flow::Forward;
    }
    return isAllowed(end, start) ? Flow::Backward : Flow::Forbidden;
}

bool takesOneInflow(FlowEnd target) {
    constexpr Kind ofElement[] = {Kind::Input, Kind::Inout, Kind::Parameter,
                                  Kind::StructuralParameter};
    constexpr Kind ofSystem[] = {Kind::Output, Kind::Local, Kind::Constant,
                                 Kind::CalculatedParameter};
    return std::ranges::count(target.isSystem ? ofSystem : ofElement, target.kind) > 0;
}

std::string flowEndText(FlowEnd end) {
    const std::string_view kind = isAny(end.kind) ? "connector" : ssp::kindName(end.kind);
    const bool hasVowel = std::string_view("aeiou").find(kind.front()) != std::string_view::npos;
    return fmt::format("{} {} of {}", hasVowel ? "an" : "a", kind,
                       end.isSystem ? "the system" : "an element");
}

} // namespace tvtool::systems
