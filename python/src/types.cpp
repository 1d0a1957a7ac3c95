// The table of the types of a model.
#include "errors.h"
#include "module.h"

#include "model/struct_layout.h"
#include "text/utf16.h"
#include "units/found.h"

#include <tvtypes/datatype.h>
#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>
#include <tvtypes/structdatatype.h>
#include <tvtypes/units.h>

#include <fmt/format.h>
#include <fndut/alloc.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tvpython {

namespace py = pybind11;

using TVTypeSys::DataType;
using TVTypeSys::DataTypeTable;

namespace {

/// The description of an element of a struct type.
struct ElementTexts {
    std::string name;
    int type = 0;
    std::vector<int> dimensions;
    std::optional<std::string> unit;
    bool isComplex = false;
    double minimum = 0;
    double maximum = 0;
};

/// An element or a node of a view.
struct Node {
    std::string name;
    std::vector<std::pair<std::string, int>> path; ///< names with indices, or -1; empty if unknown
    int type = 0;
    std::string unit; ///< empty without one
    std::vector<int> dimensions;
    bool isComplex = false;
    int offset = 0;
};

constexpr int complexSignal = 1;

class TypeTable {
  public:
    int registerType(const std::string& name) {
        return table_.registerDataType(name.c_str(), DataTypeSourceUnchecked, nullptr);
    }

    int registerAlias(const std::string& name, int target) {
        requireNew(name);
        return table_.registerAliasDataType(name.c_str(), DataTypeSourceUnchecked, target, nullptr);
    }

    /// Registers a struct type with its layout. An error leaves no type.
    int registerStruct(const std::string& name, const std::vector<ElementTexts>& elements) {
        requireNew(name);
        for (const ElementTexts& element : elements) {
            check(element);
        }
        const int id =
            table_.registerStructDataType(name.c_str(), DataTypeSourceUnchecked, nullptr);
        try {
            auto& type = dynamic_cast<StructDataType&>(record(id));
            setElements(type, elements);
            layout_.layOut(type);
        } catch (...) {
            table_.removeDataType(&record(id));
            throw;
        }
        return id;
    }

    int find(const std::string& name) const { return table_.getDataTypeId(name.c_str()); }
    int size() const { return table_.getNumDataTypes(); }

    std::string name(int id) { return record(id).getName(); }
    int bytes(int id) { return resolved(id).getSize(); }
    int aliasTarget(int id) { return record(id).getIdAliasedTo(); }
    int end(int id) { return record(id).getIdAliasedThruTo(); }
    bool isFixedPoint(int id) {
        table_.checkDataTypeId(id);
        return table_.IsFixptDTNotScaledDouble(id);
    }
    bool isStruct(int id) { return resolved(id).getIsType(TVTypeSys::DataTypeQualifierStruct); }

    /// Returns the id, and throws unless it is that of a struct type.
    int requireStruct(int id) {
        if (!isStruct(id)) {
            throw ArgumentError(fmt::format("{} is no struct type", name(id)));
        }
        return id;
    }

    const DataTypeTable& table() const { return table_; }

    /// Returns the expression of a unit of the table; empty for no unit.
    std::string unitText(int id) const {
        const TVTypeSys::UnitBase* const unit =
            units_ == nullptr || id < 1 ? nullptr : units_->getUnit(id);
        return unit == nullptr ? "" : tvtool::text::toUtf8(unit->getDisplayString());
    }

  private:
    DataType& record(int id) {
        table_.checkDataTypeId(id);
        return *table_.getDataTypeAt(static_cast<std::size_t>(id) + 1);
    }
    const DataType& resolved(int id) { return *table_.getDataTypeAliasedThruTo(id); }

    void requireNew(const std::string& name) const {
        if (find(name) != INVALID_DATA_TYPE_ID) {
            throw ArgumentError(fmt::format("the table has a type {} already", name));
        }
    }

    /// Throws unless a type and a unit exist, and the dimensions are positive.
    void check(const ElementTexts& element) {
        table_.checkDataTypeId(element.type);
        if (std::ranges::any_of(element.dimensions, [](int size) { return size < 1; })) {
            throw ArgumentError(fmt::format("element {} has a dimension below 1", element.name));
        }
        unitId(element);
    }

    int unitId(const ElementTexts& element) {
        constexpr int inherit = -1;
        return element.unit ? tvtool::units::findUnit(*element.unit, units()).unit->getId()
                            : inherit;
    }

    /// Returns the table of units, which loads their database.
    TVTypeSys::UnitTable& units() {
        if (units_ == nullptr) {
            units_ = std::make_unique<TVTypeSys::UnitTable>();
        }
        return *units_;
    }

    void setElements(StructDataType& type, const std::vector<ElementTexts>& elements) {
        type.setNumElements(static_cast<int>(elements.size()));
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const ElementTexts& from = elements[i];
            StructElement& element = *type.getElements()[i];
            element.setName(from.name.c_str());
            element.setDataTypeId(from.type);
            element.setUnitId(unitId(from));
            element.setDimensions(copyOf(from.dimensions));
            element.setNumDimensions(static_cast<int>(from.dimensions.size()));
            element.setSignalType(from.isComplex ? complexSignal : 0);
            element.setSamplingMode(0);
            element.setDimensionsMode(0);
            element.setMin(from.minimum);
            element.setMax(from.maximum);
        }
    }

    /// Returns dimensions that an element will own.
    static int* copyOf(const std::vector<int>& dimensions) {
        auto* const copy =
            static_cast<int*>(utMalloc(std::max<std::size_t>(dimensions.size(), 1) * sizeof(int)));
        if (copy == nullptr) {
            throw std::bad_alloc();
        }
        std::ranges::copy(dimensions, copy);
        return copy;
    }

    DataTypeTable table_;
    tvtool::model::StructLayout layout_{table_};
    std::unique_ptr<TVTypeSys::UnitTable> units_;
};

/// A view of a struct type. It refers to the table, which must outlive it.
class StructView {
  public:
    virtual ~StructView() = default;
    virtual int count() = 0;
    /// Returns the node at an index. Throws an IndexError of Python.
    Node node(int index) {
        if (index < 0 || index >= count()) {
            throw py::index_error(fmt::format("index {} of {} nodes", index, count()));
        }
        return nodeAt(index);
    }

  protected:
    virtual Node nodeAt(int index) = 0;
};

/// A view by one of the classes of the library.
template <class Access>
class ViewBy : public StructView {
  public:
    ViewBy(TypeTable& types, int id) : types_(types), access_(&types.table(), id) {}

    int count() override { return access_.getNumElements(); }

  protected:
    Node nodeAt(int index) override {
        Node node;
        node.type = access_.getDataTypeId(index);
        node.unit = types_.unitText(access_.getUnitId(index));
        node.offset = access_.getOffset(index);
        if constexpr (!std::is_same_v<Access, TVTypeSys::RawElementAccess>) {
            node.name = access_.getName(index);
            const int* const dimensions = access_.getDimensions(index);
            node.dimensions.assign(dimensions, dimensions + access_.getNumDimensions(index));
            node.isComplex = access_.getSignalType(index) == complexSignal;
        }
        if constexpr (requires { access_.getFullPath(index, false, node.path); }) {
            access_.getFullPath(index, false, node.path);
        }
        return node;
    }

  private:
    TypeTable& types_;
    Access access_;
};

std::unique_ptr<StructView> makeView(TypeTable& types, const std::string& numbering, int id) {
    types.requireStruct(id);
    if (numbering == "elements") {
        return std::make_unique<ViewBy<TVTypeSys::ImmediateElementAccess>>(types, id);
    }
    if (numbering == "nodes") {
        return std::make_unique<ViewBy<TVTypeSys::DFSElementAccess>>(types, id);
    }
    if (numbering == "leaves") {
        return std::make_unique<ViewBy<TVTypeSys::FlatElementAccess>>(types, id);
    }
    if (numbering == "scalars") {
        return std::make_unique<ViewBy<TVTypeSys::RawElementAccess>>(types, id);
    }
    throw ArgumentError("a numbering is one of elements, nodes, leaves and scalars");
}

} // namespace

void addTypes(py::module_& module) {
    py::class_<ElementTexts>(module, "ElementTexts")
        .def(py::init([](std::string name, int type, std::vector<int> dimensions,
                         std::optional<std::string> unit, bool isComplex, double minimum,
                         double maximum) {
            return ElementTexts{std::move(name), type,      std::move(dimensions),
                                std::move(unit), isComplex, minimum,
                                maximum};
        }));
    py::class_<Node>(module, "NodeTexts")
        .def_readonly("name", &Node::name)
        .def_readonly("path", &Node::path)
        .def_readonly("type", &Node::type)
        .def_readonly("unit", &Node::unit)
        .def_readonly("dimensions", &Node::dimensions)
        .def_readonly("is_complex", &Node::isComplex)
        .def_readonly("offset", &Node::offset);
    py::class_<TypeTable>(module, "TypeTable")
        .def(py::init())
        .def("register", &TypeTable::registerType)
        .def("register_alias", &TypeTable::registerAlias)
        .def("register_struct", &TypeTable::registerStruct)
        .def("find", &TypeTable::find)
        .def("size", &TypeTable::size)
        .def("name", &TypeTable::name)
        .def("bytes", &TypeTable::bytes)
        .def("alias_target", &TypeTable::aliasTarget)
        .def("end", &TypeTable::end)
        .def("is_fixed_point", &TypeTable::isFixedPoint)
        .def("is_struct", &TypeTable::isStruct)
        .def("view", makeView, py::keep_alive<0, 1>());
    py::class_<StructView>(module, "StructView")
        .def("__len__", &StructView::count)
        .def("node", &StructView::node);
}

} // namespace tvpython
