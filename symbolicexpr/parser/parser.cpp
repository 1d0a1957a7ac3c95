#include <symbolicexpr/parser.h>

#include "parser/grammar.h"
#include "table/contents.h"
#include "table/errors.h"

namespace TV {
namespace {

constexpr std::size_t maximumLength = 1 << 20;

[[noreturn]] void throwSyntaxError(const std::string& text, std::size_t offset) {
    using TorvaneTypes::Dimensions::InvalidSymbolicDimensionExpr;
    throwError(InvalidSymbolicDimensionExpr(text, static_cast<std::int64_t>(offset) + 1));
}

/// Parses tokens up to `position`, the end or the first token that is not allowed. Returns false if
/// the tokens before it are no expression.
bool parseTokens(const char*& position, const char* end, ExpressionBuilder& builder) {
    namespace qi = boost::spirit::qi;
    using boost::spirit::ascii::space;
    // Never destroyed, so that the destructors of clients can parse.
    static const ExpressionGrammar& grammar = *new ExpressionGrammar;
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
        throwSyntaxError(text, maximumLength);
    }
    ExpressionBuilder builder(text);
    const char* position = text.data();
    const char* const end = position + text.size();
    if (!parseTokens(position, end, builder) || position != end || !builder.end()) {
        throwSyntaxError(text, static_cast<std::size_t>(position - text.data()));
    }
    Transaction transaction(*table_->contents_);
    const unsigned long id = builder.intern(*table_);
    transaction.commit();
    return id;
}

} // namespace TV
