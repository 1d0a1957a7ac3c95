// The four views over struct types of three shapes. Reads the type and offset of all indices in
// order, and for immediate elements also the index of the first scalar, with an empty cache (cold)
// and with a filled one (warm). The time is per index. The immediate view runs on the wide struct
// only, the one shape with many immediate elements.
#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>
#include <tvtypes/structdatatype.h>

#include <fndut/alloc.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace TVTypeSys;

/// A table with one struct type of a given number of nodes, and the types nested in it.
class Model {
  public:
    int addStruct(int elements) {
        std::string name = "S";
        name += std::to_string(table.getNumDataTypes());
        const int id = table.registerStructDataType(name.c_str(), DataTypeSourceUnchecked, nullptr);
        typeAt(id).setNumElements(elements);
        return id;
    }

    void fill(int id, int index, int elementId, int width) {
        StructElement& element = *typeAt(id).getElements()[static_cast<std::size_t>(index)];
        element.setName("element");
        element.setDataTypeId(elementId);
        element.setNumDimensions(1);
        element.setDimensions(static_cast<int*>(utCalloc(1, sizeof(int))));
        *element.dimensions = width;
        element.setOffset(8 * index);
    }

    void setCounts(int id, int nodes, int leaves) {
        typeAt(id).setNumDFSElements(nodes);
        typeAt(id).setNumFlatElements(leaves);
        typeAt(id).setNumRawElements(leaves);
    }

    StructDataType& typeAt(int id) {
        return static_cast<StructDataType&>(*table.getDataTypeAliasedThruTo(id));
    }

    DataTypeTable table;
    int outermost = 0;
};

/// One array of structs of nine doubles.
std::unique_ptr<Model> arrayOfStructs(int nodes) {
    auto model = std::make_unique<Model>();
    const int copies = nodes / 10;
    const int inner = model->addStruct(9);
    for (int i = 0; i < 9; ++i) {
        model->fill(inner, i, 0, 1);
    }
    model->setCounts(inner, 10, 9);
    model->typeAt(inner).setSize(72);
    model->outermost = model->addStruct(1);
    model->fill(model->outermost, 0, inner, copies);
    model->setCounts(model->outermost, (copies == 1 ? 1 : 2) + 10 * copies, 9 * copies);
    return model;
}

/// A struct of doubles.
std::unique_ptr<Model> wide(int nodes) {
    auto model = std::make_unique<Model>();
    model->outermost = model->addStruct(nodes - 1);
    for (int i = 0; i < nodes - 1; ++i) {
        model->fill(model->outermost, i, 0, 1);
    }
    model->setCounts(model->outermost, nodes, nodes - 1);
    return model;
}

/// Structs of a double and a nested struct; the depth is half the number of nodes.
std::unique_ptr<Model> deep(int nodes) {
    auto model = std::make_unique<Model>();
    int inner = 0;
    for (int level = 1; level <= nodes / 2; ++level) {
        const int id = model->addStruct(2);
        model->fill(id, 0, 0, 1);
        model->fill(id, 1, inner, 1);
        model->setCounts(id, 2 * level + 1, level + 1);
        inner = id;
    }
    model->outermost = inner;
    return model;
}

int readIndex(DFSElementAccess& view, int i) { return view.getDataTypeId(i) + view.getOffset(i); }
int readIndex(FlatElementAccess& view, int i) { return view.getDataTypeId(i) + view.getOffset(i); }
int readIndex(RawElementAccess& view, int i) { return view.getDataTypeId(i) + view.getOffset(i); }
int readIndex(ImmediateElementAccess& view, int i) {
    return view.getDataTypeId(i) + view.getOffset(i) + view.getRawElementIdx(i);
}

template <class View>
int readAll(const Model& model) {
    View view(&model.table, model.outermost);
    const int count = view.getNumElements();
    for (int i = 0; i < count; ++i) {
        benchmark::DoNotOptimize(readIndex(view, i));
    }
    return count;
}

template <class View>
void Read(benchmark::State& state, std::unique_ptr<Model> (*make)(int), bool isCold) {
    std::unique_ptr<Model> model = make(static_cast<int>(state.range(0)));
    int indices = isCold ? 0 : readAll<View>(*model);
    for (auto _ : state) {
        if (isCold) {
            state.PauseTiming();
            model = make(static_cast<int>(state.range(0)));
            state.ResumeTiming();
        }
        indices = readAll<View>(*model);
    }
    state.counters["indices"] = indices;
    state.counters["per index"] = benchmark::Counter(
        indices, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

struct Shape {
    const char* name;
    std::unique_ptr<Model> (*make)(int);
};

template <class View>
void addView(const std::string& name, const std::vector<Shape>& shapes) {
    for (const Shape& shape : shapes) {
        for (const bool isCold : {true, false}) {
            const std::string full = name + "/" + shape.name + (isCold ? "/cold" : "/warm");
            benchmark::RegisterBenchmark(full.c_str(), Read<View>, shape.make, isCold)
                ->Arg(10)
                ->Arg(1000)
                ->Arg(100000);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<Shape> shapes{{"array", arrayOfStructs}, {"wide", wide}, {"deep", deep}};
    addView<ImmediateElementAccess>("immediate", {shapes[1]});
    addView<DFSElementAccess>("depth-first", shapes);
    addView<FlatElementAccess>("flat", shapes);
    addView<RawElementAccess>("raw", shapes);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
