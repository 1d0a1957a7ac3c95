#include <fndi18n/codecvt.h>
#include <fndi18n/ustring.h>

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

using fnd::ustring;

// Texts of more than 128 bytes are converted without the buffer on the stack.
TEST(UnicodeTexts, ConvertAndReplaceIllFormed) {
    const struct {
        std::string narrow;
        ustring wide;
    } cases[] = {
        {"", u""},
        {"m/s^2", u"m/s^2"},
        {"\xc2\xb5m \xe2\x84\xa6 \xf0\x9d\x9b\x80", u"\u00b5m \u2126 \U0001d6c0"},
        {std::string("a\0b", 3), ustring(u"a\0b", 3)},
        {std::string(129, 'x') + "\xe2\x84\xa6", ustring(129, u'x') + u'\u2126'},
        {std::string(129, 'x') + "\xf0\x9d\x9b\x80", ustring(129, u'x') + u"\U0001d6c0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.wide, fnd::i18n::to_ustring(c.narrow));
        EXPECT_EQ(c.wide, ConvertStdStringToUString(c.narrow, true));
        EXPECT_EQ(c.narrow, ConvertUStringToStdString(c.wide, true));
        EXPECT_EQ(c.narrow, fnd::i18n::codecvt_ustring_to_string("", true)(c.wide));
        std::ostringstream written;
        ::operator<<(written, c.wide);
        EXPECT_EQ(c.narrow, written.str());
    }
    EXPECT_EQ(u"", fnd::i18n::to_ustring(nullptr));
    for (const std::size_t length : {0U, 150U}) {
        const std::string filling(length, 'x');
        const ustring wide(length, u'x');
        EXPECT_EQ(wide + u"\ufffd\ufffd(", fnd::i18n::to_ustring(filling + "\xc0\xaf("));
        EXPECT_EQ(wide + u"\ufffd", fnd::i18n::to_ustring(filling + "\xe2\x84"));
        EXPECT_EQ(filling + "\xef\xbf\xbd.",
                  ConvertUStringToStdString(wide + ustring(1, char16_t{0xd835}) + u'.', true));
    }
}

TEST(UnicodeTexts, ConvertToOtherEncodings) {
    const fnd::i18n::codecvt_ustring_to_string latin1("ISO-8859-1", true);
    EXPECT_EQ("\xb5m \x1a", latin1(u"\u00b5m \u2126"));
    EXPECT_EQ("+JqgmqCaoJqg-",
              fnd::i18n::codecvt_ustring_to_string("UTF-7", true)(u"\u26a8\u26a8\u26a8\u26a8"))
        << "longer than the text";
    EXPECT_EQ("\xc2\xb5", fnd::i18n::codecvt_ustring_to_string("utf8", true)(u"\u00b5"));
    EXPECT_THROW(fnd::i18n::codecvt_ustring_to_string("no encoding", true), std::invalid_argument);
}

TEST(UnicodeTexts, ClassifyAlphanumerics) {
    for (const char16_t character : u"aZ09_"
                                    u"\u00e9\u03a9\u0663\u4e2d") {
        EXPECT_EQ(character != u'_' && character != u'\0', tvsvIsalphanum(character))
            << static_cast<int>(character);
    }
    for (const char16_t character : {u' ', u'-', u'\u00b0', u'\u00b2', char16_t{0xd835}}) {
        EXPECT_FALSE(tvsvIsalphanum(character)) << static_cast<int>(character);
    }
}

TEST(UnicodeTexts, SplitAtDelimiters) {
    const struct {
        ustring text;
        char16_t escape;
        std::vector<ustring> pieces;
    } cases[] = {
        {u"", u'\0', {}},
        {u"a", u'\0', {u"a"}},
        {u"a,,b", u'\0', {u"a", u"", u"b"}},
        {u",", u'\0', {u"", u""}},
        {ustring(u"a\0,b", 4), u'\0', {ustring(u"a\0", 2), u"b"}},
        {u"a\\,b,c\\\\,\\", u'\\', {u"a,b", u"c\\", u""}},
    };
    for (const auto& c : cases) {
        std::vector<ustring> pieces{u"before"};
        delimited_ustring_to_vector(pieces, c.text, u',', c.escape);
        EXPECT_EQ(c.pieces, pieces);
    }
}
