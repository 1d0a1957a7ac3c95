#include "structs/struct_fixture.h"
#include "support/failing_allocations.h"

namespace TVTypeSys {
namespace {

// Outer has an array of 100 Middle, which have an array of two Inner and an int8.
class Model : public StructTest {
  public:
    Model() {
        StructDataType& inner = addStruct("Inner", 2);
        fill(inner, 0, "real", 0).setOffset(0);
        fill(inner, 1, "complex", 4, {3}, true).setOffset(8);
        count(inner);
        StructDataType& middle = addStruct("Middle", 2);
        fill(middle, 0, "array", inner.getId(), {2}).setOffset(0);
        fill(middle, 1, "an_element_with_a_long_name", 2).setOffset(40);
        count(middle);
        fill(outer, 0, "copies", middle.getId(), {100}).setOffset(0);
        count(outer);
    }
    void TestBody() override {}
    using StructTest::table;

    // What the views return, with -1 for an invalid index.
    std::vector<int> values() {
        std::vector<int> all{result,
                             static_cast<int>(path.size()),
                             unread.getNumElements(),
                             outer.isFlatElementCacheEmpty(),
                             outer.hasComplexData(),
                             structAt(16).hasComplexData()};
        const auto add = [&](const auto& read) {
            all.push_back(-1);
            thrownError([&] { all.back() = read(); });
        };
        for (int i = 0; i < 50; ++i) {
            add([&] { return nodes.getOffset(i); });
            add([&] { return nodes.getStructElement(i)->dataTypeId; });
            add([&] { return nodes.getRawElementIdx(i); });
            add([&] { return scalars.getOffset(i); });
            add([&] { return elements.getRawElementIdx(i); });
        }
        return all;
    }

    StructDataType& outer = addStruct("Outer", 1); // id 14
    StructDataType& unread = addStruct("Unread", 1);
    DFSElementAccess nodes{&table, 14};
    FlatElementAccess leaves{&table, 14};
    RawElementAccess scalars{&table, 14};
    ImmediateElementAccess elements{&table, 14};
    int result = 0;
    std::vector<std::pair<std::string, int>> path;
};

} // namespace

TEST(FailedAllocations, LeaveStructsUnchanged) {
    const std::pair<const char*, std::function<void(Model&)>> operations[] = {
        {"elements", [](auto& m) { m.unread.setNumElements(3); }},
        {"flat table",
         [](auto& m) {
             m.outer.setDFSIdxFromFlatIdx(std::vector{1, 2, 3});
         }},
        {"flags", [](auto& m) { m.outer.createCacheForFrequentlyAccessedProperties(&m.table); }},
        {"element", [](auto& m) { m.result = m.nodes.getStructElement(9)->dataTypeId; }},
        {"nested struct", [](auto& m) { m.result = m.nodes.getDataTypeId(7); }},
        {"offset", [](auto& m) { m.result = m.nodes.getOffset(9); }},
        {"index of scalar", [](auto& m) { m.result = m.nodes.getRawElementIdx(30); }},
        {"path", [](auto& m) { m.nodes.getFullPath(9, true, m.path); }},
        {"leaf", [](auto& m) { m.result = m.leaves.getDFSIdx(3); }},
        {"offset of scalar", [](auto& m) { m.result = m.scalars.getOffset(40); }},
        {"immediate element", [](auto& m) { m.result = m.elements.getRawElementIdx(1); }},
    };
    for (const auto& [name, operation] : operations) {
        expectUnchangedOnFailedAllocation(
            name, [] { return std::make_unique<Model>(); }, operation,
            [](Model& model) { return model.values(); });
    }
}

TEST(FailedAllocations, RawViewNeedsNoMemoryForCopies) {
    Model model;
    const int count = model.scalars.getNumElements();
    for (int i = 0; i < count / 100; ++i) {
        model.scalars.getOffset(i); // one of the copies
    }
    const FailingAllocations failing(0, Failures::FromThere);
    for (int i = 0; i < count; ++i) {
        model.scalars.getOffset(i);
    }
}

} // namespace TVTypeSys
