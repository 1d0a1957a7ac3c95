#include "model/shapes.h"

#include "text/quote.h"

#include <tvtypes/datatype.h>

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>

namespace tvtool::model {

namespace {

using fmi::noIndex;
using TVTypeSys::INVALID_DATA_TYPE_ID;

std::size_t combined(std::size_t hash, std::size_t more) {
    return (hash ^ more) * 0x9E3779B97F4A7C15U;
}

std::size_t hashOf(const Shape& shape) {
    std::size_t hash = shape.elements.size();
    for (const ShapeElement& element : shape.elements) {
        hash = combined(hash, std::hash<std::string_view>()(element.name));
        hash = combined(hash, static_cast<std::size_t>(element.type));
        hash = combined(hash, element.isStruct ? 1 : 0);
        hash = combined(hash, static_cast<std::size_t>(element.unit));
        for (const int size : element.dimensions) {
            hash = combined(hash, static_cast<std::size_t>(size));
        }
    }
    return hash;
}

class Finder {
  public:
    Finder(const fmi::Description& description, const NameTree& tree,
           const VariableIds& variableIds, fmi::Remarks& remarks)
        : description_(description), tree_(tree), variableIds_(variableIds), remarks_(remarks) {
        shapes_.ofInstance.assign(tree.instances.size(), noIndex);
        shapes_.isArray.assign(tree.members.size(), false);
        variables_.assign(tree.instances.size(), 0);
    }

    /// Visits each instance after all that it holds.
    Shapes find() {
        std::uint32_t at = deepestIn(0);
        while (at != 0) {
            visit(at);
            const Instance& instance = tree_.instances[at];
            const Member& member = tree_.members[instance.member];
            if (instance.nextInstance != noIndex) {
                at = deepestIn(instance.nextInstance);
            } else if (member.nextMember != noIndex) {
                at = deepestIn(tree_.members[member.nextMember].firstInstance);
            } else {
                at = member.owner;
            }
        }
        visit(0);
        return std::move(shapes_);
    }

  private:
    using Values = std::vector<std::optional<ShapeElement>>;

    std::uint32_t deepestIn(std::uint32_t instance) const {
        while (tree_.instances[instance].firstMember != noIndex) {
            instance = tree_.members[tree_.instances[instance].firstMember].firstInstance;
        }
        return instance;
    }

    void visit(std::uint32_t index) {
        if (tree_.instances[index].firstMember == noIndex) {
            return;
        }
        Shape shape;
        shape.first = index;
        for (std::uint32_t m = tree_.instances[index].firstMember; m != noIndex;
             m = tree_.members[m].nextMember) {
            addElements(m, shape);
        }
        if (index != 0 && !shape.elements.empty()) {
            enter(std::move(shape));
        }
    }

    void addElements(std::uint32_t memberIndex, Shape& shape) {
        const Member& member = tree_.members[memberIndex];
        Values values;
        for (std::uint32_t i = member.firstInstance; i != noIndex;
             i = tree_.instances[i].nextInstance) {
            values.push_back(valueOf(i));
            if (values.back()) {
                shape.variables += variables_[i];
            }
        }
        // Without indices there is but one.
        const bool areAlike = values.front() && std::ranges::all_of(values, [&](const auto& value) {
                                  return value && value->type == values.front()->type &&
                                         value->isStruct == values.front()->isStruct &&
                                         value->unit == values.front()->unit &&
                                         value->dimensions == values.front()->dimensions;
                              });
        std::vector<int> box = areAlike ? boxOf(tree_, member) : std::vector<int>();
        if (!box.empty()) {
            shapes_.isArray[memberIndex] = true;
            ShapeElement& array = *values.front();
            array.name = member.name;
            array.dimensions.insert(array.dimensions.begin(), box.begin(), box.end());
            values.resize(1);
        }
        for (std::optional<ShapeElement>& value : values) {
            if (value) {
                shape.elements.push_back(std::move(*value));
            }
        }
    }

    std::optional<ShapeElement> valueOf(std::uint32_t index) {
        const Instance& instance = tree_.instances[index];
        if (shapes_.ofInstance[index] != noIndex) {
            return ShapeElement{instance.text,
                                static_cast<int>(shapes_.ofInstance[index]),
                                true,
                                inheritedUnit,
                                {}};
        }
        const bool isAtTop = tree_.members[instance.member].owner == 0;
        if (isAtTop || instance.variable == noIndex ||
            variableIds_.types[instance.variable] == INVALID_DATA_TYPE_ID) {
            return std::nullopt;
        }
        std::optional<std::vector<int>> dimensions =
            dimensionsOf(description_.variables[instance.variable]);
        if (!dimensions) {
            return std::nullopt;
        }
        variables_[index] = 1;
        return ShapeElement{instance.text, variableIds_.types[instance.variable], false,
                            variableIds_.units[instance.variable], std::move(*dimensions)};
    }

    /// Empty, with a remark, if the variable cannot be an element.
    std::optional<std::vector<int>> dimensionsOf(const fmi::Variable& variable) {
        std::vector<int> sizes;
        for (std::uint32_t d = 0; d < variable.dimensionCount; ++d) {
            const fmi::Dimension& dimension = description_.dimensions[variable.firstDimension + d];
            std::uint64_t size = dimension.number;
            if (dimension.isReference) {
                const auto known =
                    description_.sizes.find(static_cast<std::uint32_t>(dimension.number));
                if (known == description_.sizes.end()) {
                    remarks_.note(variable.place, "the size of a dimension is not known, so the "
                                                  "variable is no element of a struct");
                    return std::nullopt;
                }
                size = known->second;
            }
            if (size < 1 || size > std::numeric_limits<int>::max()) {
                remarks_.problem(variable.place,
                                 fmt::format("variable {} has a dimension of {}, and is no element "
                                             "of a struct",
                                             text::quoted(variable.name), size));
                return std::nullopt;
            }
            sizes.push_back(static_cast<int>(size));
        }
        return variable.hasBadDimension ? std::nullopt : std::optional(std::move(sizes));
    }

    void enter(Shape shape) {
        const std::uint32_t instance = shape.first;
        const std::size_t variables = shape.variables;
        shapes_.all.push_back(std::move(shape));
        const auto next = static_cast<std::uint32_t>(shapes_.all.size() - 1);
        const auto [known, isNew] = known_.insert(next);
        if (!isNew) {
            shapes_.all.pop_back();
            shapes_.all[*known].variables += variables;
        }
        shapes_.ofInstance[instance] = *known;
        variables_[instance] = variables;
    }

    const fmi::Description& description_;
    const NameTree& tree_;
    VariableIds variableIds_;
    fmi::Remarks& remarks_;
    Shapes shapes_;
    std::vector<std::size_t> variables_; ///< by instance: how many elements are variables

    struct Hash {
        const std::vector<Shape>& shapes;
        std::size_t operator()(std::uint32_t index) const { return hashOf(shapes[index]); }
    };
    struct Equal {
        const std::vector<Shape>& shapes;
        bool operator()(std::uint32_t a, std::uint32_t b) const {
            return shapes[a].elements == shapes[b].elements;
        }
    };
    std::unordered_set<std::uint32_t, Hash, Equal> known_{0, Hash{shapes_.all}, Equal{shapes_.all}};
};

} // namespace

Shapes findShapes(const fmi::Description& description, const NameTree& tree,
                  const VariableIds& variableIds, fmi::Remarks& remarks) {
    return Finder(description, tree, variableIds, remarks).find();
}

} // namespace tvtool::model
