#include <symbolicexpr/parser.h>

#include "parser/grammar.h"
#include "table/refuse.h"

namespace TV {
namespace {

constexpr std::size_t maximumLength = 1 << 20;

[[noreturn]] void refuseText(const std::string& text, std::size_t offset) {
    using TorvaneTypes::Dimensions::InvalidSymbolicDimensionExpr;
    refuse(InvalidSymbolicDimensionExpr(text, static_cast<std::int64_t>(offset) + 1));
}

/// Whether the tokens are those of an expression up to `position`, where none is left or the next
/// one cannot stand.
bool read(const char*& position, const char* end, ExpressionBuilder& builder) {
    namespace qi = boost::spirit::qi;
    using boost::spirit::ascii::space;
    static const ExpressionGrammar grammar;
    try {
        return qi::phrase_parse(position, end, grammar(boost::phoenix::ref(builder)), space);
    } catch (const qi::expectation_failure<const char*>& failure) {
        position = failure.first;
        qi::parse(position, end, *space);
        return false;
    }
}

} // namespace

unsigned long SymbolicExprParser::operator()(const std::string& text) const {
    if (text.size() > maximumLength) {
        refuseText(text, maximumLength);
    }
    ExpressionBuilder builder(text);
    const char* position = text.data();
    const char* const end = position + text.size();
    if (!read(position, end, builder) || position != end || !builder.end()) {
        refuseText(text, static_cast<std::size_t>(position - text.data()));
    }
    return builder.enter(*table_);
}

} // namespace TV
