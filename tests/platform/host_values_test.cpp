#include <ox/array.h>

#include <gtest/gtest.h>

#include <cmath>

TEST(HostRecords, OwnFieldValues) {
    oxArray_tag* outer = oxCreateRecords(1, {"Inner"});
    oxArray_tag* inner = oxCreateRecords(2, {"Name", "Factor"});
    oxArray_tag* text = oxCreateString("foot");
    EXPECT_TRUE(oxSetField(outer, 0, "Inner", inner));
    EXPECT_TRUE(oxSetField(inner, 1, "Name", const_cast<oxArray_tag*>(oxShareArray(text))));
    EXPECT_TRUE(oxSetFieldAt(inner, 0, 1, oxCreateDoubleScalar(1)));
    EXPECT_TRUE(oxSetField(inner, 0, "Factor", oxCreateDoubleScalar(0.3048)));

    EXPECT_EQ(text, oxGetFieldAt(inner, 1, 0));
    EXPECT_EQ(0.3048, oxGetScalar(oxGetField(inner, 0, "Factor")));
    EXPECT_EQ(nullptr, oxGetField(inner, 0, "Name"));
    EXPECT_EQ(nullptr, oxGetField(inner, SIZE_MAX, "Name"));
    EXPECT_FALSE(oxSetField(inner, 2, "Name", text));
    EXPECT_FALSE(oxSetFieldAt(inner, 0, 2, text));
    EXPECT_FALSE(oxSetField(inner, 0, nullptr, text));

    EXPECT_EQ(2, oxGetReferenceCount(text));
    oxDestroyArray(outer);
    EXPECT_EQ(1, oxGetReferenceCount(text));
    oxDestroyArray(text);
    EXPECT_EQ(nullptr, oxCreateRecords(SIZE_MAX / 2 + 1, {"A", "B"})) << "the product wraps to 0";
    EXPECT_EQ(nullptr, oxCallocEx(SIZE_MAX / 2 + 2, 2)) << "the product wraps to 2";
}

TEST(HostRecords, FindFieldsByName) {
    const std::vector<std::string> names{"b", "", "a", "ab", "b", "Z", "aa"};
    oxArray_tag* records = oxCreateRecords(1, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const char* const name = names[i].c_str();
        EXPECT_TRUE(oxSetField(records, 0, name, oxCreateString(name)));
        EXPECT_EQ(oxGetFieldAt(records, 0, i == 4 ? 0 : i), oxGetField(records, 0, name));
    }
    for (const char* missing : {"A", "abc", "c", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(nullptr, oxGetField(records, 0, missing));
    }
    oxDestroyArray(records);
}

TEST(HostValues, ConvertTexts) {
    const fnd::i18n::codecvt_ustring_to_string latin1("ISO-8859-1", true);
    oxArray_tag* text = oxCreateString("\xc2\xb5m");
    EXPECT_EQ(u"\u00b5m", oxcore::get_ustring(text));
    EXPECT_EQ("\xb5m", oxcore::get_string(text, latin1));
    oxDestroyArray(text);
    text = oxCreateString(std::string("a\0b", 3));
    EXPECT_EQ(3U, oxcore::get_ustring(text).size());
    oxDestroyArray(text);
    EXPECT_EQ(u"", oxcore::get_ustring(nullptr));
    EXPECT_TRUE(oxcore::get_string(nullptr).empty() && oxcore::get_string(nullptr, latin1).empty());
}

TEST(HostValues, AcceptNull) {
    EXPECT_FALSE(oxIsDouble(nullptr) || oxIsString(nullptr) || oxIsRecords(nullptr) ||
                 oxIsTemporary(nullptr));
    EXPECT_TRUE(std::isnan(oxGetScalar(nullptr)));
    EXPECT_TRUE(oxGetNumberOfElements(nullptr) == 0 && oxGetReferenceCount(nullptr) == 0);
    EXPECT_TRUE(oxGetField(nullptr, 0, "Name") == nullptr && oxShareArray(nullptr) == nullptr);
}

TEST(HostRecords, NestToAnyDepth) {
    oxArray_tag* innermost = oxCreateString("foot");
    const oxArray_tag* shared = oxShareArray(innermost);
    oxArray_tag* chain = innermost;
    for (int i = 0; i < 1000000; ++i) {
        oxArray_tag* outer = oxCreateRecords(2, {"Inner"});
        oxSetField(outer, 1, "Inner", chain);
        chain = outer;
    }
    oxDestroyArray(chain);
    EXPECT_EQ(1, oxGetReferenceCount(shared));
    oxDestroyArray(innermost);
}
