#include "model/shapes.h"

#include "text/quote.h"

#include <tvtypes/datatype.h>

#include <boost/container_hash/hash.hpp>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>

namespace tvtool::model {

namespace {

using exchange::noIndex;
using findings::Code;
using findings::SubjectKind;
using text::quoted;
using TVTypeSys::INVALID_DATA_TYPE_ID;

class ShapeFinder {
  public:
    ShapeFinder(const fmi::Description& description, const NameTree& tree,
                const std::vector<int>& types, const Units& units, findings::Findings& findings)
        : description_(description),
          tree_(tree),
          types_(types),
          units_(units),
          findings_(findings) {
        shapes_.ofInstance.assign(tree.instances.size(), noIndex);
        shapes_.isArray.assign(tree.members.size(), false);
        variables_.assign(tree.instances.size(), 0);
    }

    /// Visits the instances in post-order.
    Shapes find() {
        std::uint32_t index = firstLeaf(0);
        while (index != 0) {
            visit(index);
            const Instance& instance = tree_.instances[index];
            const Member& member = tree_.members[instance.member];
            if (instance.nextInstance != noIndex) {
                index = firstLeaf(instance.nextInstance);
            } else if (member.nextMember != noIndex) {
                index = firstLeaf(tree_.members[member.nextMember].firstInstance);
            } else {
                index = member.owner;
            }
        }
        visit(0);
        return std::move(shapes_);
    }

  private:
    std::uint32_t firstLeaf(std::uint32_t instance) const {
        while (tree_.instances[instance].firstMember != noIndex) {
            instance = tree_.members[tree_.instances[instance].firstMember].firstInstance;
        }
        return instance;
    }

    void visit(std::uint32_t index) {
        Shape shape;
        shape.first = index;
        for (std::uint32_t m = tree_.instances[index].firstMember; m != noIndex;
             m = tree_.members[m].nextMember) {
            addElements(m, shape);
        }
        if (index != 0 && !shape.elements.empty()) {
            intern(std::move(shape));
        }
    }

    /// Adds the instances of a member, as one array or one by one.
    void addElements(std::uint32_t memberIndex, Shape& shape) {
        const Member& member = tree_.members[memberIndex];
        std::vector<ShapeElement> elements;
        for (std::uint32_t i = member.firstInstance; i != noIndex;
             i = tree_.instances[i].nextInstance) {
            if (std::optional<ShapeElement> element = makeElement(i)) {
                elements.push_back(std::move(*element));
                shape.variables += variables_[i];
            }
        }
        const auto differs = [](const ShapeElement& a, const ShapeElement& b) {
            return a.type != b.type || a.isStruct != b.isStruct || a.unit != b.unit ||
                   a.dimensions != b.dimensions;
        };
        const bool areAlike = elements.size() == member.instances &&
                              std::ranges::adjacent_find(elements, differs) == elements.end();
        const std::vector<int> sizes = areAlike ? arraySizes(tree_, member) : std::vector<int>();
        if (!sizes.empty()) {
            shapes_.isArray[memberIndex] = true;
            ShapeElement& array = elements.front();
            array.name = member.name;
            array.dimensions.insert(array.dimensions.begin(), sizes.begin(), sizes.end());
            elements.resize(1);
        }
        std::ranges::move(elements, std::back_inserter(shape.elements));
    }

    /// Returns nothing if the instance is neither a struct nor a variable that can be an element.
    std::optional<ShapeElement> makeElement(std::uint32_t index) {
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
            types_[instance.variable] == INVALID_DATA_TYPE_ID) {
            return std::nullopt;
        }
        const fmi::Variable& variable = description_.variables[instance.variable];
        auto dimensions = findSizes(variable);
        if (!dimensions) {
            return std::nullopt;
        }
        variables_[index] = 1;
        return ShapeElement{instance.text, types_[instance.variable], false,
                            units_.variableId(variable), std::move(*dimensions)};
    }

    /// Returns nothing, with a finding, if a dimension is unknown or invalid.
    std::optional<std::vector<int>> findSizes(const fmi::Variable& variable) {
        std::vector<int> sizes;
        for (std::uint32_t d = 0; d < variable.dimensionCount; ++d) {
            const fmi::Dimension& dimension = description_.dimensions[variable.firstDimension + d];
            std::uint64_t size = dimension.number;
            if (dimension.isReference) {
                const auto known =
                    description_.sizes.find(static_cast<std::uint32_t>(dimension.number));
                if (known == description_.sizes.end()) {
                    findings_.add(Code::StructElementSize, variable.place,
                                  {SubjectKind::Variable, variable.name},
                                  "the size of a dimension is not known, so the variable is no "
                                  "element of a struct");
                    return std::nullopt;
                }
                size = known->second;
            }
            if (size < 1 || size > std::numeric_limits<int>::max()) {
                findings_.add(Code::StructElementSize, variable.place,
                              {SubjectKind::Variable, variable.name},
                              "variable {} has a dimension of {}, and is no element of a struct",
                              quoted(variable.name), size);
                return std::nullopt;
            }
            sizes.push_back(static_cast<int>(size));
        }
        return variable.hasBadDimension ? std::nullopt : std::optional(std::move(sizes));
    }

    /// Adds the shape, or its variables to an equal one.
    void intern(Shape shape) {
        const std::uint32_t instance = shape.first;
        variables_[instance] = shape.variables;
        shapes_.all.push_back(std::move(shape));
        const auto next = static_cast<std::uint32_t>(shapes_.all.size() - 1);
        const std::uint32_t known = *known_.insert(next).first;
        if (known != next) {
            merge(shapes_.all[known], std::move(shapes_.all.back()));
            shapes_.all.pop_back();
        }
        shapes_.ofInstance[instance] = known;
    }

    /// Adds the variables of an equal shape. The order of the elements becomes that of the instance
    /// that is first in the description.
    void merge(Shape& shape, Shape equal) const {
        shape.variables += equal.variables;
        const auto firstVariable = [&](const Shape& of) {
            return tree_.instances[of.first].firstVariable;
        };
        if (firstVariable(equal) < firstVariable(shape)) {
            shape.first = equal.first;
            shape.elements = std::move(equal.elements);
        }
    }

    const fmi::Description& description_;
    const NameTree& tree_;
    const std::vector<int>& types_; ///< ids by variable
    const Units& units_;
    findings::Findings& findings_;
    Shapes shapes_;
    std::vector<std::size_t> variables_; ///< number of variables in each instance

    /// Does not depend on the order of the elements.
    struct Hash {
        const std::vector<Shape>& shapes;
        std::size_t operator()(std::uint32_t index) const {
            std::size_t sum = 0;
            for (const ShapeElement& element : shapes[index].elements) {
                std::size_t hash = std::hash<std::string_view>()(element.name);
                boost::hash_combine(hash, element.type);
                boost::hash_combine(hash, element.isStruct);
                boost::hash_combine(hash, element.unit);
                boost::hash_combine(hash, element.dimensions);
                sum += hash;
            }
            return sum;
        }
    };
    struct Equal {
        const std::vector<Shape>& shapes;
        bool operator()(std::uint32_t a, std::uint32_t b) const {
            return shapes[a].elements == shapes[b].elements || sorted(a) == sorted(b);
        }
        /// The names of the elements of a struct are distinct.
        std::vector<ShapeElement> sorted(std::uint32_t index) const {
            std::vector<ShapeElement> elements = shapes[index].elements;
            std::ranges::sort(elements, {}, &ShapeElement::name);
            return elements;
        }
    };
    std::unordered_set<std::uint32_t, Hash, Equal> known_{0, Hash{shapes_.all}, Equal{shapes_.all}};
};

} // namespace

Shapes findShapes(const fmi::Description& description, const NameTree& tree,
                  const std::vector<int>& types, const Units& units, findings::Findings& findings) {
    return ShapeFinder(description, tree, types, units, findings).find();
}

} // namespace tvtool::model
