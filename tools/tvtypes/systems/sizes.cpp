#include "systems/sizes.h"

#include "dims/names.h"
#include "exchange/values.h"
#include "text/quote.h"

#include <optional>

namespace tvtool::systems {

namespace {

using findings::Code;

bool isScalar(const End& end) { return end.dimensions.empty() || end.indices != nullptr; }

} // namespace

Sizes::Sizes(const std::unordered_map<const ssp::Element*, std::string>& paths,
             const std::vector<ParameterRow>& parameters, NameIndex& names)
    : paths_(paths), names_(names) {
    for (const ParameterRow& row : parameters) {
        if (!row.overriddenBy) {
            values_.emplace(row.target, &row);
        }
    }
}

void Sizes::check(const ConnectionReport& report) {
    const End& source = report.row.source;
    const End& target = report.row.target;
    const bool hasIndices = checkIndices(source, report) && checkIndices(target, report);
    if (!hasIndices || source.base == exchange::BaseType::None ||
        target.base == exchange::BaseType::None) {
        return;
    }
    const std::size_t sourceRank = isScalar(source) ? 0 : source.dimensions.size();
    const std::size_t targetRank = isScalar(target) ? 0 : target.dimensions.size();
    if (sourceRank != targetRank) {
        const auto rankText = [](const End& end, std::size_t rank) {
            return rank == 0 ? std::string("a scalar")
                             : fmt::format("an array of {}", end.dimensionText);
        };
        return report.add(Code::DimensionRank, "{} is connected with {}",
                          rankText(source, sourceRank), rankText(target, targetRank));
    }
    for (std::size_t i = 0; i < sourceRank; ++i) {
        compare(source.dimensions[i], target.dimensions[i], i, report);
    }
    if (sourceRank == 0 && target.kind == ssp::Kind::StructuralParameter &&
        source.indices == nullptr && target.indices == nullptr && source.element != nullptr) {
        state(symbol(source, source.connectorName), symbol(target, target.connectorName), report);
    }
}

/// Returns whether the indices select an element.
bool Sizes::checkIndices(const End& end, const ConnectionReport& report) const {
    if (end.indices == nullptr) {
        return true;
    }
    if (end.indices->size() != end.dimensions.size()) {
        report.add(Code::DimensionIndex, "{} has {} and {}", text::quoted(endText(end)),
                   text::counted(end.dimensions.size(), "dimension", "dimensions"),
                   text::counted(end.indices->size(), "index", "indices"));
        return false;
    }
    for (std::size_t i = 0; i < end.indices->size(); ++i) {
        const std::uint64_t index = (*end.indices)[i];
        const std::optional<std::uint64_t>& size = end.dimensions[i].size;
        if (size && index > *size) {
            report.add(Code::DimensionIndex, "index {} of {} is beyond the size {}", index,
                       text::quoted(endText(end)), *size);
        } else if (index == 0) {
            report.add(Code::IndexZero, "an index of {} is 0", text::quoted(endText(end)));
        }
    }
    return true;
}

void Sizes::compare(const ssp::Dimension& source, const ssp::Dimension& target, std::size_t index,
                    const ConnectionReport& report) {
    if (source.size && target.size) {
        if (*source.size != *target.size) {
            report.add(Code::DimensionSize,
                       "dimension {} has the size {} at the source and {} at "
                       "the target",
                       index + 1, *source.size, *target.size);
        }
        return;
    }
    const auto isKnown = [](const ssp::Dimension& dimension) {
        return dimension.size || !dimension.sizeConnector.empty();
    };
    if (isKnown(source) && isKnown(target)) {
        state(extent(report.row.source, source), extent(report.row.target, target), report);
    }
}

int Sizes::extent(const End& end, const ssp::Dimension& dimension) {
    return dimension.size ? table_.registerSymbolicDimsExpr(std::to_string(*dimension.size).c_str())
                          : symbol(end, dimension.sizeConnector);
}

int Sizes::symbol(const End& end, std::string_view connector) {
    const std::string& path = paths_.at(end.element);
    const std::string name = fmt::format("{}{}{}", path, path.empty() ? "" : ".", connector);
    const auto [known, isNew] = symbols_.try_emplace(name, 0);
    if (!isNew) {
        return known->second;
    }
    const int id = table_.getSymbolicDims(dims::nameInExpression(name).c_str()).getId();
    known->second = id;
    std::optional<std::uint64_t> value;
    std::uint64_t line = 0;
    if (const auto row = values_.find(name); row != values_.end()) {
        value = exchange::parseNumber<std::uint64_t>(row->second->value);
        line = row->second->parameter->place.line;
    } else if (end.element->model != nullptr) {
        const fmi::Variable* const variable = names_.variable(*end.element->model, connector);
        if (variable != nullptr && fmi::variabilityOf(*variable) == fmi::Variability::Constant) {
            value = exchange::parseNumber<std::uint64_t>(variable->start);
        }
    }
    if (value) {
        const TVBlock& block =
            blocks_.emplace_back(TVBlock{fmt::format("parameter {}", name), line});
        facts_.state({id, dims::Relation::Equal,
                      table_.registerSymbolicDimsExpr(std::to_string(*value).c_str()), &block,
                      line});
    }
    return id;
}

void Sizes::state(int left, int right, const ConnectionReport& report) {
    if (left == right) {
        return;
    }
    const std::uint64_t line = report.row.record->place.line;
    const TVBlock& block = blocks_.emplace_back(TVBlock{report.name(), line});
    const std::size_t undecided = facts_.undecidedLines().size();
    const auto objection = facts_.state({left, dims::Relation::Equal, right, &block, line});
    if (facts_.undecidedLines().size() > undecided) {
        report.add(Code::SizeLimit,
                   "the sizes {} and {} are not compared, since that takes too "
                   "much work",
                   text::shortened(dims::decodeNames(table_.getDisplayString(left))),
                   text::shortened(dims::decodeNames(table_.getDisplayString(right))));
    }
    if (objection) {
        report.add(Code::DimensionContradiction, "the sizes {} and {} cannot be equal: {}",
                   text::shortened(dims::decodeNames(table_.getDisplayString(left))),
                   text::shortened(dims::decodeNames(table_.getDisplayString(right))),
                   objection->reason.text());
    }
}

} // namespace tvtool::systems
